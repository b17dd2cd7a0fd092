#include "gui/shell/screenshot_tour.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QMainWindow>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPixmap>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <memory>

#include "core/external/bas1_setup.h"
#include "core/external/frm_glasses_del_ext.h"
#include "core/glassmap/frm_glass_map.h"
#include "core/import/frm4_import.h"
#include "core/materialform/frm3new.h"
#include "core/shell/cs_application.h"
#include "core/shell/frm_main_mdi.h"
#include "core/shell/manage_forms.h"
#include "core/shell/welcome.h"
#include "gui/external/frm6_archive_window.h"
#include "gui/external/frm_glasses_del_ext_dialog.h"
#include "gui/glassmap/frm_glass_map_window.h"
#include "gui/glassmap/glass_map_samples.h"
#include "gui/import/frm4_import_window.h"
#include "gui/material/frm_glasses_list_window.h"
#include "gui/materialform/frm2_manage_window.h"
#include "gui/materialform/frm3_new_samples.h"
#include "gui/materialform/frm3_new_window.h"
#include "gui/melt/frm7_melt_samples.h"
#include "gui/melt/frm7_melt_window.h"
#include "gui/platform/binders.h"
#include "gui/platform/qt_dialogs.h"
#include "gui/shell/frm_main_mdi_window.h"

namespace ostrel::gui {

namespace {

// Saves a picture of the program's visible windows as they lie on the screen: the main
// window first, then the floating list and other windows, dialogs and menus on top. Each
// window is drawn from its own contents, so nothing left on the screen by an earlier picture
// shows through.
void SaveScreen(const QString& path) {
    auto layer = [](const QWidget* w) {
        if (qobject_cast<const QMainWindow*>(w)) return 0;
        return qobject_cast<const QDialog*>(w) || qobject_cast<const QMenu*>(w) ? 2 : 1;
    };
    QList<QWidget*> windows;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && !w->isMinimized() && !w->size().isEmpty()) windows.push_back(w);
    std::stable_sort(windows.begin(), windows.end(),
                     [&](QWidget* a, QWidget* b) { return layer(a) < layer(b); });
    QRect area;
    for (const QWidget* w : windows) area |= w->geometry();
    if (area.isEmpty()) return;
    // At the screen's own pixel density, so that a scaled screen gives a sharp picture.
    const qreal ratio = windows.front()->devicePixelRatioF();
    QPixmap picture(area.size() * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    for (QWidget* w : windows)
        painter.drawPixmap(w->geometry().topLeft() - area.topLeft(), w->grab());
    painter.end();
    picture.save(path);
}

// Lets the windows settle for a while before a picture is taken.
void Settle(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

// Saves a picture of a page of the user guide (the one the program found, else the
// pages of the source tree) as a browser would show it.
void SaveGuidePage(const std::string& helpFile, const QString& name, const QString& path) {
    QString page = QFileInfo(ToQt(helpFile)).dir().filePath(name);
    if (!QFileInfo::exists(page)) page = QDir::current().filePath("docs/help/" + name);
    if (!QFileInfo::exists(page)) return;
    QTextBrowser browser;
    browser.setWindowTitle("Ostrel user guide");
    browser.setSource(QUrl::fromLocalFile(page));
    browser.resize(820, 700);
    browser.show();
    Settle(600);
    browser.grab().save(path);
}

// Opens one menu of the bar, lets `take` picture it, and closes it.
void ShowMenuOpen(QMainWindow& window, const char* name, const std::function<void()>& take) {
    auto* menu = window.menuBar()->findChild<QMenu*>(name);
    if (!menu) return;
    window.menuBar()->setActiveAction(menu->menuAction());
    Settle(500);
    take();
    menu->hide();
    window.menuBar()->setActiveAction(nullptr);
}

// The pictures of the map and of a comparison, with a few custom and melt glasses made in
// memory: the first custom glass with its nearest catalogue glasses.
void SaveGlassMapPictures(ScreenshotTour& t, const QString& dir) {
    std::vector<MaterialRecord> materials = t.customList();
    for (MaterialRecord& rec : GlassMapSampleMaterials(t.setup.GetPathKelmora()))
        materials.push_back(std::move(rec));
    t.glassMap.Load(materials, t.setup.GetPathKelmora(), t.setup.GetKelmoraFound());
    t.glassMapWindow.RebuildSources();
    t.glassMapWindow.show();
    t.glassMapWindow.resize(1200, 780);
    if (t.glassMap.cmbCustom.ListCount() > 0) t.glassMap.comNearestClick();
    Settle(600);
    t.glassMapWindow.grab().save(dir + "/glass_map_abbe.png");
    t.glassMap.optViewClick(true);
    Settle(400);
    t.glassMapWindow.grab().save(dir + "/glass_map_pgf.png");
    t.glassMap.optViewClick(false);
    std::vector<std::string> labels;
    for (int i = 0; i < t.glassMap.cmbCustom.ListCount() && labels.empty(); ++i)
        labels.push_back(t.glassMap.cmbCustom.List(i));
    for (const NearGlass& n : t.glassMap.nearest()) {
        if (labels.size() >= 3) break;
        const GlassPoint& p = t.glassMap.Data().points[n.point];
        labels.push_back(p.name + " (" + p.source + ")");
    }
    if (QWidget* compare = t.compare(materials, labels)) {
        Settle(600);
        compare->grab().save(dir + "/compare.png");
    }
    t.closeCompare();
    t.glassMapWindow.hide();
}

}  // namespace

void StartScreenshotTour(ScreenshotTour& tour, const QString& dir) {
    QDir().mkpath(dir);
    ScreenshotTour& t = tour;
    QTimer::singleShot(1000, &t.mainWindow, [&t, dir] {
        // An empty list shows the welcome panel; then the guide's contents page.
        if (t.welcome.pnlWelcome.visible) SaveScreen(dir + "/welcome.png");
        SaveGuidePage(t.app.HelpFile(), "setup.html", dir + "/guide.png");
        ShowMaterialFormSamples(t.forms, t.newForm, t.newWindow, t.picker, &t.app, &t.mainWindow,
                                &t.listWindow,
                                [dir](const QString& file) { SaveScreen(dir + "/" + file); });
        ShowMeltFormSamples(t.forms, t.meltForm, t.meltWindow, t.dialogs, t.newMsg, &t.app,
                            &t.mainWindow, &t.listWindow, [dir](const QString& file) {
                                Settle(700);
                                SaveScreen(dir + "/" + file);
                            });
        t.mainForm.ribToolsMouseMove(2);
        QApplication::processEvents();
        SaveScreen(dir + "/main_window.png");
        ShowMenuOpen(t.mainWindow, "mnuMaterials", [dir] { SaveScreen(dir + "/menu.png"); });
        t.mainForm.ribToolsMouseMove(1);
        t.forms.RibbonClick(kFormSetup, true);
        QTimer::singleShot(800, &t.mainWindow, [&t, dir] {
            SaveScreen(dir + "/frm1_setup.png");
            t.forms.RibbonClick(kFormManage, true);
            // Clear of the floating list, so that the whole form shows.
            t.manageWindow.subWindow()->setGeometry(8, 8, 760, 480);
            QTimer::singleShot(800, &t.mainWindow, [&t, dir] {
                SaveScreen(dir + "/frm2_manage.png");
                t.forms.RibbonClick(kFormImport, true);
                if (!t.importFile.empty()) {
                    t.importForm.ImportFile(t.importFile,
                                            frm4Import::FileTypeOf(t.importFile, frm4Import::kAGF));
                }
                // The whole grid, its status and Check columns included, in view.
                QWidget* importFrame = t.importWindow.subWindow();
                importFrame->setGeometry(8, 8, importFrame->parentWidget()->width() - 16,
                                         importFrame->height());
                t.listWindow.hide();
                Settle(800);
                SaveScreen(dir + "/frm4_import.png");
                t.listWindow.show();
                if (t.importForm.ImportCount() > 0) {
                    // The first staged glass previewed, its transmission tab in view.
                    t.importForm.ssGlassesDblClick(1, 1);
                    t.newWindow.tabs()->setCurrentIndex(frm3New::kTabTrans);
                    Settle(800);
                    SaveScreen(dir + "/frm4_import_preview.png");
                }
                t.forms.RibbonClick(kFormExport, true);
                Settle(800);
                SaveScreen(dir + "/frm5_export.png");
                t.forms.RibbonClick(kFormArchive, true);
                t.archiveWindow.subWindow()->move(8, 8);
                QTimer::singleShot(800, &t.mainWindow, [&t, dir] {
                    SaveScreen(dir + "/frm6_archive.png");
                    t.forms.RibbonClick(kFormArchive, false);
                    auto del = std::make_shared<frmGlassesDelExt>(t.setup, t.dialogs);
                    del->Load();
                    auto* dlg = new frmGlassesDelExtDialog(*del, &t.mainWindow);
                    dlg->show();
                    QTimer::singleShot(800, &t.mainWindow, [&t, dir, del, dlg] {
                        SaveScreen(dir + "/frm_glasses_del_ext.png");
                        delete dlg;
                        SaveGlassMapPictures(t, dir);
                        QApplication::quit();
                    });
                });
            });
        });
    });
}

}  // namespace ostrel::gui
