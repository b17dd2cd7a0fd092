#include "gui/shell/frm_main_mdi_window.h"

#include <QCloseEvent>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QLinearGradient>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPixmap>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <QToolButton>
#include <QToolTip>
#include <QVBoxLayout>

#include "gui/platform/binders.h"
#include "gui/platform/elided_label.h"
#include "gui/shell/form_position.h"
#include "gui/shell/main_menu_bar.h"
#include "gui/shell/welcome_panel.h"

namespace ostrel::gui {

namespace {

constexpr const char* kFormName = "frmMainMDI";

QStyle::StandardPixmap ToolIcon(int n) {
    switch (n) {
        case 1:
            return QStyle::SP_DriveCDIcon;
        case 2:
            return QStyle::SP_FileDialogDetailedView;
        case 3:
            return QStyle::SP_FileIcon;
        case 4:
            return QStyle::SP_DialogOpenButton;
        case 5:
            return QStyle::SP_DialogSaveButton;
        case 6:
            return QStyle::SP_DirIcon;
        case 7:
            return QStyle::SP_FileDialogContentsView;
        default:
            return QStyle::SP_DialogCloseButton;
    }
}

// The style's icon at each of its sizes, with a disabled look of its own: grey and faint, so
// that a tool out of reach reads as such whatever its colours (the look Qt makes leaves
// dark icons almost as they are). The sizes kept stay sharp on screens scaled 200%.
QIcon WithDisabledLook(const QIcon& base) {
    QList<QSize> sizes = base.availableSizes();
    if (sizes.isEmpty()) sizes = {QSize(32, 32), QSize(64, 64)};
    QIcon icon;
    for (const QSize& size : sizes) {
        const QPixmap normal = base.pixmap(size, 1.0);
        icon.addPixmap(normal, QIcon::Normal);
        QImage faint = normal.toImage().convertToFormat(QImage::Format_ARGB32);
        for (int y = 0; y < faint.height(); ++y) {
            auto* line = reinterpret_cast<QRgb*>(faint.scanLine(y));
            for (int x = 0; x < faint.width(); ++x) {
                const int grey = 96 + qGray(line[x]) * 5 / 8;
                line[x] = qRgba(grey, grey, grey, qAlpha(line[x]) * 2 / 5);
            }
        }
        icon.addPixmap(QPixmap::fromImage(faint), QIcon::Disabled);
    }
    return icon;
}

QToolButton* MakeTool(QWidget* parent, QStyle::StandardPixmap icon) {
    auto* b = new QToolButton(parent);
    b->setIcon(WithDisabledLook(parent->style()->standardIcon(icon)));
    b->setIconSize(QSize(32, 32));
    b->setAutoRaise(true);
    b->setFocusPolicy(Qt::TabFocus);
    return b;
}

QLabel* MakePanel(QWidget* parent) {
    auto* l = new QLabel(parent);
    l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    l->setMinimumWidth(150);
    l->setContentsMargins(4, 2, 4, 2);
    return l;
}

}  // namespace

frmMainMDIWindow::frmMainMDIWindow(frmMainMDI& unit, CSApplication* app, QWidget* parent)
    : QMainWindow(parent), unit_(unit), app_(app) {
    setObjectName(kFormName);
    auto* central = new QWidget(this);
    auto* outer = new QVBoxLayout(central);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->setSpacing(0);

    // pnlHeader: the logo button and the tool strip.
    auto* header = new QFrame(central);
    BindPanel(header, unit_.pnlHeader);
    auto* headerRow = new QHBoxLayout(header);
    headerRow->setContentsMargins(4, 2, 4, 2);
    auto* comLogo = MakeTool(header, QStyle::SP_FileDialogInfoView);
    Bind(comLogo, unit_.comLogo);
    connect(comLogo, &QToolButton::clicked, this, [this] { unit_.comLogoClick(); });
    headerRow->addWidget(comLogo);

    auto* tools = new QFrame(header);
    BindPanel(tools, unit_.pnlTools);
    auto* toolRow = new QHBoxLayout(tools);
    toolRow->setContentsMargins(2, 0, 2, 0);
    ManageForms& forms = unit_.forms();
    for (int n = 1; n <= 7; ++n) {
        auto* b = MakeTool(tools, ToolIcon(n));
        b->setObjectName(QString("ribTools%1").arg(n));
        b->setCheckable(true);
        Bind(b, forms.ribTools[n]);
        connect(b, &QToolButton::clicked, this, [this, n](bool on) { unit_.ribToolsClick(n, on); });
        b->installEventFilter(this);
        toolRow->addWidget(b);
        ribTools_[n] = b;
    }
    ribEnd_ = MakeTool(tools, ToolIcon(0));
    ribEnd_->setObjectName("ribEnd");
    Bind(ribEnd_, forms.ribEnd);
    connect(ribEnd_, &QToolButton::clicked, this, [this] { unit_.ribEndClick(); });
    ribEnd_->installEventFilter(this);
    // The user guide, opened at the page of the form in use.
    comHelp_ = MakeTool(tools, QStyle::SP_DialogHelpButton);
    comHelp_->setObjectName("comHelp");
    comHelp_->setToolTip("User guide");
    connect(comHelp_, &QToolButton::clicked, this, [this] {
        if (openGuide_) openGuide_(ActiveFormNumber());
    });
    toolRow->addSpacing(16);
    toolRow->addWidget(comHelp_);
    toolRow->addWidget(ribEnd_);
    headerRow->addWidget(tools);
    headerRow->addStretch(1);
    outer->addWidget(header);

    mdi_ = new QMdiArea(central);
    mdi_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdi_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdi_->viewport()->installEventFilter(this);
    outer->addWidget(mdi_, 1);

    // pnlStatusBar: the three installed-program panels and the help line.
    auto* status = new QFrame(central);
    BindPanel(status, unit_.pnlStatusBar);
    auto* statusRow = new QHBoxLayout(status);
    statusRow->setContentsMargins(2, 2, 2, 2);
    statusRow->setSpacing(2);
    for (int i = 0; i < 3; ++i) {
        pnlInstalled_[i] = MakePanel(status);
        pnlInstalled_[i]->setObjectName(QString("pnlInstalled%1").arg(i));
        Bind(pnlInstalled_[i], unit_.pnlInstalled[i]);
        statusRow->addWidget(pnlInstalled_[i]);
    }
    // One line: a longer note ends in "…" and shows whole in the tool tip.
    lblHelp_ = new ElidedLabel(status);
    lblHelp_->setObjectName("lblHelp");
    lblHelp_->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    Bind(lblHelp_, unit_.lblHelp);
    lblHelp_->installEventFilter(this);
    statusRow->addWidget(lblHelp_, 1);
    outer->addWidget(status);
    header->installEventFilter(this);
    status->installEventFilter(this);
    setCentralWidget(central);

    // The list's popup menus.
    mnuPopup_ = new QMenu(this);
    mnuPopupMelt_ = new QMenu(this);
    for (int i = 0; i < 3; ++i) {
        QAction* a = mnuPopup_->addAction(QString());
        Bind(a, unit_.mnuPopup[i]);
        connect(a, &QAction::triggered, this, [this, i] { unit_.mnuPopupClick(i); });
        QAction* m = mnuPopupMelt_->addAction(QString());
        Bind(m, unit_.mnuPopupMelt[i]);
        connect(m, &QAction::triggered, this, [this, i] { unit_.mnuPopupMeltClick(i); });
    }

    auto* tmrNewMsg = new QTimer(this);
    tmrNewMsg->setSingleShot(false);
    Bind(tmrNewMsg, unit_.tmrNewMsg);
    // The notice's owner reads the timer; the window only reports the tick.
    connect(tmrNewMsg, &QTimer::timeout, this, [this] { unit_.tmrNewMsgTimer(); });

    BindWindow(this, unit_.form);
    wallpaperSub_ = unit_.picWallpaper.Observe([this] { PaintWallpaper(); });
    PaintWallpaper();
    setMinimumSize(640, 420);
    // The first size leaves room for the window's frame and the desktop's panels.
    QSize first(1100, 760);
    if (const QScreen* s = screen() ? screen() : QGuiApplication::primaryScreen()) {
        first = first.boundedTo(s->availableGeometry().size() * 0.9);
    }
    resize(first);
    RestoreFormPosition(this, app_, kFormName, true);
}

void frmMainMDIWindow::PaintWallpaper() {
    static const QColor pairs[][2] = {{QColor(70, 90, 120), QColor(150, 170, 200)},
                                      {QColor(60, 100, 90), QColor(160, 200, 180)},
                                      {QColor(100, 80, 110), QColor(190, 170, 200)},
                                      {QColor(90, 90, 90), QColor(180, 180, 170)}};
    const int pick = unit_.picWallpaper.picture;
    const auto& p = pairs[(pick > 0 ? pick - 1 : 0) % 4];
    QLinearGradient g(0, 0, 0, 800);
    g.setColorAt(0, p[0]);
    g.setColorAt(1, p[1]);
    mdi_->setBackground(QBrush(g));
}

void frmMainMDIWindow::ShowPopup(const QPoint& globalPos, bool melt) {
    (melt ? mnuPopupMelt_ : mnuPopup_)->popup(globalPos);
}

void frmMainMDIWindow::SetMenu(MainMenu& menu) {
    BuildMenuBar(this, menu);
    toolKeys_.fill(QKeySequence());
    for (Menu* m : menu.menus) {
        for (MenuItem* item : m->items) {
            const QList<QKeySequence> keys = ItemSequences(*item);
            if (keys.isEmpty()) continue;
            if (item->toolNumber > 0 && toolKeys_[item->toolNumber].isEmpty())
                toolKeys_[item->toolNumber] = keys.front();
            if (item->name == "mnuQuit") toolKeys_[0] = keys.front();
            if (item->key == MenuKey::HelpContents)
                comHelp_->setToolTip("User guide (" +
                                     keys.front().toString(QKeySequence::NativeText) + ")");
        }
    }
}

void frmMainMDIWindow::SetWelcome(Welcome& welcome) {
    welcome_ = new WelcomePanel(welcome, mdi_->viewport());
    welcome_->Place();
}

int frmMainMDIWindow::ActiveFormNumber() const {
    const QMdiSubWindow* sub = mdi_->activeSubWindow();
    if (!sub || !sub->widget()) return unit_.forms().GetCurrentForm();
    // Each form's widget is named after its form: frm1Setup ... frm7Melt.
    const QString name = sub->widget()->objectName();
    if (name.size() > 3 && name.startsWith("frm") && name[3].isDigit()) return name[3].digitValue();
    return unit_.forms().GetCurrentForm();
}

bool frmMainMDIWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        // A tool's tip ends with the key that does the same from the menu.
        for (int n = 0; n <= 7; ++n) {
            QToolButton* b = n == 0 ? ribEnd_ : ribTools_[n];
            if (watched != b || toolKeys_[n].isEmpty() || b->toolTip().isEmpty()) continue;
            QToolTip::showText(
                static_cast<QHelpEvent*>(event)->globalPos(),
                b->toolTip() + "  (" + toolKeys_[n].toString(QKeySequence::NativeText) + ")", b);
            return true;
        }
    }
    if (watched == mdi_->viewport() && event->type() == QEvent::Resize && welcome_)
        welcome_->Place();
    if (event->type() == QEvent::Enter) {
        if (watched == ribEnd_) {
            unit_.ribEndMouseMove();
        } else {
            bool tool = false;
            for (int n = 1; n <= 7; ++n) {
                if (watched == ribTools_[n]) {
                    unit_.ribToolsMouseMove(n);
                    tool = true;
                }
            }
            if (!tool) unit_.FrameMouseMove();
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmMainMDIWindow::closeEvent(QCloseEvent* e) {
    // A working form with unsaved changes may keep the program running.
    if (!unit_.QueryUnload()) {
        e->ignore();
        return;
    }
    SaveFormPosition(this, app_, kFormName);
    e->accept();
}

void frmMainMDIWindow::resizeEvent(QResizeEvent* e) {
    QMainWindow::resizeEvent(e);
    emit resized();
}

}  // namespace ostrel::gui
