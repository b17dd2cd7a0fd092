// Every form as the keyboard meets it: Tab visits its controls in reading order (left to
// right, top to bottom, a column at a time, a grid as one stop) and each Alt letter leads to
// one control only, on every tab of the form. A form of the main area, maximised, fills it.
// Every box that takes a number keeps text that is no number, marked in red once the entry
// ends, with its tool tip and the help line saying what the entry counts as instead. The glass
// map and comparison windows are bound to their units, and the pictures saved hold what is drawn.
#include "core/external/external_fixture.h"
#include "gui/external/frm1_setup_window.h"
#include "gui/external/frm2_manage_update_panel.h"
#include "gui/external/frm6_archive_window.h"
#include "gui/external/frm_glasses_del_ext_dialog.h"
#include "gui/glassmap/frm_compare_window.h"
#include "gui/glassmap/frm_glass_map_window.h"
#include "gui/glassmap/glass_map_canvas.h"
#include "gui/import/frm4_import_window.h"
#include "gui/import/frm5_export_window.h"
#include "gui/materialform/frm2_manage_window.h"
#include "gui/materialform/frm3_new_window.h"
#include "gui/melt/frm7_melt_window.h"
#include "gui/melt/pop_melt_parent_dialog.h"
#include "gui/melt/pop_melt_schott_dialog.h"
#include "gui/wave/pop_edit_param_wave_window.h"
#include "gui_fixture.h"

namespace ostrel::gui {
namespace {

// The steps of the Tab order that go against reading order: a stop that lies wholly above
// the one before it, unless it starts a column to the right of it; or one on the same line
// that lies to the left of it.
QStringList OutOfOrder(QWidget* form) {
    // The controls Tab stops at in `form`, in the order Tab visits them.
    std::vector<QWidget*> stops;
    for (QWidget* w = form->nextInFocusChain(); w && w != form; w = w->nextInFocusChain()) {
        if (!form->isAncestorOf(w) || !w->isVisibleTo(form) || !w->isEnabled()) continue;
        if (!(w->focusPolicy() & Qt::TabFocus) || w->focusProxy()) continue;
        stops.push_back(w);
    }
    const auto inForm = [form](QWidget* w) {
        return QRect(w->mapTo(form, QPoint(0, 0)), w->size());
    };
    const auto name = [](QWidget* w) {
        auto* b = qobject_cast<QAbstractButton*>(w);
        return !w->objectName().isEmpty() ? w->objectName()
               : b                        ? b->text()
                                          : w->metaObject()->className();
    };
    QStringList wrong;
    for (size_t i = 1; i < stops.size(); ++i) {
        const QRect a = inForm(stops[i - 1]), b = inForm(stops[i]);
        const bool above = b.bottom() < a.top();
        const bool sameLine = !above && b.top() <= a.bottom() && a.top() <= b.bottom();
        const bool newColumn = b.left() > a.right();
        if ((above && !newColumn) || (sameLine && b.right() < a.left()))
            wrong << name(stops[i - 1]) + " -> " + name(stops[i]);
    }
    return wrong;
}

// Every form and box of the program over one folder, none of them shown yet.
class Forms : public ::testing::Test, protected UnitEnv {
  protected:
    void TearDown() override { SetEntryNoteSink({}); }

    QLineEdit* Box(const QString& name) {
        for (QWidget* form : std::initializer_list<QWidget*>{&materialWindow, &mapWindow})
            if (auto* box = form->findChild<QLineEdit*>(name)) return box;
        return nullptr;
    }

    QMdiArea area;
    Bas1Setup setup{settings, dialogs};
    frm1Setup setupForm{setup, dialogs, {}};
    frm1SetupWindow setupWindow{setupForm, nullptr, &area};
    frm2Manage manage{list, dialogs, {}};
    frm2ManageWindow manageWindow{manage, nullptr, &area};
    frm2ManageUpdate update{frm2ManageUpdate::SourceOf(manage), setup, dialogs};
    popEditParamWave picker{dialogs, newMsg, Folder(), {}};
    frm3New material{list, dialogs, {}};
    frm3NewWindow materialWindow{material, nullptr, &area};
    popEditParamWaveWindow pickerWindow{picker, nullptr, nullptr};
    frm4Import import{list, dialogs, settings, newMsg, Folder(), {}};
    frm4ImportWindow importWindow{import, nullptr, &area};
    frm5Export backup{list, dialogs, clock, {}};
    frm5ExportWindow backupWindow{backup, nullptr, &area};
    frm6Archive archive{setup, dialogs, {}};
    frm6ArchiveWindow archiveWindow{archive, nullptr, &area};
    frmGlassesDelExt removal{setup, dialogs};
    frmGlassesDelExtDialog removalBox{removal, nullptr};
    frm7Melt melt{list, dialogs, newMsg, Folder(), {}};
    frm7MeltWindow meltWindow{melt, nullptr, &area};
    popMeltParent parent{dialogs, settings, Folder(), {}, {}};
    popMeltParentDialog parentBox{parent, nullptr, nullptr};
    popMeltSchott sheet{dialogs, newMsg, {}};
    popMeltSchottDialog sheetBox{sheet, nullptr, nullptr};
    frmGlassMap map{settings};
    frmGlassMapWindow mapWindow{map, {}};
    frmCompare compare{std::vector<CompareItem>{}};
    frmCompareWindow compareWindow{compare};
    const std::pair<const char*, QWidget*> forms[13] = {
        {"setup", &setupWindow},        {"manage", &manageWindow}, {"material", &materialWindow},
        {"wavelengths", &pickerWindow}, {"import", &importWindow}, {"backup", &backupWindow},
        {"archive", &archiveWindow},    {"removal", &removalBox},  {"melt", &meltWindow},
        {"melt parent", &parentBox},    {"melt sheet", &sheetBox}, {"glass map", &mapWindow},
        {"compare", &compareWindow}};
};

TEST_F(Forms, TabFollowsTheLayoutAndAltLettersAreUniqueInEveryForm) {
    area.resize(1300, 900);
    area.show();
    manageWindow.AddPanel(new frm2ManageUpdatePanel(update));
    material.DisplayNew();
    melt.DisplayNew(false);
    for (const auto& [what, form] : forms) {
        SCOPED_TRACE(what);
        form->show();
        // A form of the main area, maximised, fills it.
        if (auto* sub = qobject_cast<QMdiSubWindow*>(form->parentWidget())) {
            sub->showMaximized();
            QApplication::processEvents();
            EXPECT_EQ(sub->geometry(), sub->mdiArea()->viewport()->rect());
        }
        QApplication::processEvents();
        auto* tabs = form->findChild<QTabWidget*>();
        for (int page = 0; page < (tabs ? tabs->count() : 1); ++page) {
            if (tabs) tabs->setCurrentIndex(page);
            QApplication::processEvents();
            EXPECT_EQ(OutOfOrder(form).join(", ").toStdString(), "") << "tab " << page;
            EXPECT_EQ(DuplicateMnemonics(form).join(" ").toStdString(), "") << "tab " << page;
        }
    }
}

TEST_F(Forms, TextThatIsNoNumberIsKeptMarkedAndExplained) {
    std::vector<std::string> notes;
    SetEntryNoteSink([&](const std::string& text) { notes.push_back(text); });
    material.DisplayNew();
    material.lstThermal.SetListIndex(2);
    material.lstThermalClick();
    // The box and the figure it counts as: a box of each kind of figure.
    const std::pair<const char*, const char*> cases[] = {
        {"txtTransGlassWidth", "10.0"}, {"txtTherm0", "0.000e+00"}, {"txtCount", "5"}};
    for (const auto& [name, countsAs] : cases) {
        SCOPED_TRACE(name);
        QLineEdit* box = Box(name);
        ASSERT_NE(box, nullptr);
        const QString plainTip = box->toolTip();
        const auto red = [box] {
            return box->palette().color(QPalette::Base) == Rgb(kIgnoredEntryBack);
        };
        notes.clear();
        box->setText("1x");
        emit box->textEdited("1x");
        EXPECT_FALSE(red()) << "not while typing";
        emit box->editingFinished();
        const std::string why =
            "\"1x\" is not a number: it is ignored and counts as " + std::string(countsAs) + ".";
        EXPECT_EQ(std::tuple(FromQt(box->text()), red(), FromQt(box->toolTip()), notes),
                  std::tuple("1x", true, why, std::vector<std::string>{why}));
        box->setText("1,5");
        emit box->textEdited("1,5");
        emit box->editingFinished();
        EXPECT_TRUE(box->text().startsWith("1.5")) << box->text().toStdString();
        EXPECT_EQ(std::tuple(red(), box->toolTip(), notes.size()), std::tuple(false, plainTip, 1u));
    }
}

// 300 catalogue glasses over three sources, and one custom glass last.
TEST(GlassMapWindow, SourcesSearchAndSavedPictures) {
    GlassMapData data;
    data.sources = {"North", "South", "West"};
    for (int i = 0; i <= 300; ++i) {
        GlassPoint p;
        p.name = QString("G%1").arg(i).toStdString();
        p.sourceIndex = i % 3;
        p.source = data.sources[p.sourceIndex];
        p.vd = 20 + (i * 37) % 70;
        p.nd = 1.45 + 0.0016 * i;
        p.pgf = 0.64 - 0.0016 * p.vd;
        data.points.push_back(p);
    }
    GlassPoint& custom = data.points.back();
    custom.name = "MINE";
    custom.kind = GlassKind::Custom;
    custom.listPosition = 1;
    MemorySettingsStore settings;
    frmGlassMap map(settings);
    map.SetData(data);
    gui::frmGlassMapWindow mapWindow(map, {});
    mapWindow.show();
    QApplication::processEvents();
    auto boxes = mapWindow.findChildren<QCheckBox*>();
    ASSERT_EQ(boxes.size(), 3);
    boxes[1]->click();
    EXPECT_EQ(std::pair(map.chkSource[1]->value.get(), map.ShownCount()), std::pair(false, 201));
    auto* search = mapWindow.findChild<QLineEdit*>("txtSearch");
    search->setText("mine");
    emit search->textEdited("mine");
    EXPECT_EQ(map.highlighted(), 300);
    testing::TempDir dir;
    const QString png = QString::fromStdString((dir / "map.png").string());
    ASSERT_TRUE(mapWindow.SaveImage(png));
    EXPECT_EQ(QImage(png).width(), mapWindow.canvas()->width());
    ASSERT_TRUE(mapWindow.SaveImage(QString::fromStdString((dir / "map.svg").string())));
    const std::string svg = testing::ReadFileBytes(dir / "map.svg");
    size_t circles = 0;
    for (size_t at = svg.find("<circle class=\"catalogue\""); at != std::string::npos;
         at = svg.find("<circle class=\"catalogue\"", at + 1))
        ++circles;
    EXPECT_EQ(circles, 200u);
}

TEST(CompareWindow, ThreePlotsOneCurvePerMaterial) {
    std::vector<CompareItem> items;
    for (const char* name : {"A", "B", "C"})
        items.push_back({name, testing::ReadyMaterial(name, "Lab", 1.0 + name[0] * 0.01)});
    frmCompare unit(items);
    gui::frmCompareWindow window(unit);
    window.show();
    unit.SelectMaterials({0, 2});
    QApplication::processEvents();
    EXPECT_EQ(window.CurveCount(), 6);
    testing::TempDir dir;
    ASSERT_TRUE(window.SaveTo(QString::fromStdString((dir / "c.csv").string())));
    EXPECT_EQ(testing::ReadFileBytes(dir / "c.csv").substr(0, 27), "Wavelength (nm),n A,n C,dn ");
    ASSERT_TRUE(window.SaveTo(QString::fromStdString((dir / "c.png").string())));
    EXPECT_FALSE(QImage(QString::fromStdString((dir / "c.png").string())).isNull());
}

}  // namespace
}  // namespace ostrel::gui
