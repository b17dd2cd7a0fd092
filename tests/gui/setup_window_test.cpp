// The setup form's window over a made-up disk: the labels follow the unit through scan,
// browse and OK, the first run keeps the tools off until the setup has closed, and a search
// on the worker thread leaves the window answering.

#include <QtCore/qtestsupport_core.h>
#include <filesystem>

#include "core/shell/cs_application.h"
#include "core/shell/ini_file.h"
#include "gui/external/frm1_setup_window.h"
#include "gui/shell/form_position.h"
#include "gui_fixture.h"

namespace ostrel::gui {
namespace {

namespace fs = std::filesystem;
using ostrel::testing::WriteFileBytes;

std::string Dir(const fs::path& p) {
    return p.string() + "/";
}

// A disk with Kelmora beside the program and Lumbrak elsewhere on the drive; no Sextane.
class SetupWindowTest : public ::testing::Test, protected MainEnv {
  protected:
    SetupWindowTest() {
        fs::create_directories(dir / "apps" / "Ostrel");
        fs::create_directories(dir / "apps" / "Kelmora");
        WriteFileBytes(dir / "apps" / "Kelmora" / "KelmoraTD.EXE", "k");
        fs::create_directories(dir / "drive" / "Lumbrak");
        WriteFileBytes(dir / "drive" / "Lumbrak" / "Lumbrak3D.EXE", "l");
        kelmoraFound = [this] { return setup.GetKelmoraFound(); };
        firstLoad = [this] { return setup.GetFirstLoad(); };
    }

    InstalledProgs Installed() const {
        return {setup.GetKelmoraFound(), setup.GetLumbrakFound(), setup.GetSextaneFound()};
    }

    // The setup form wired as the program wires it, over paths loaded from the settings;
    // unless `firstRun`, the first run is over.
    void Build(bool firstRun = false, CSApplication* app = nullptr, bool background = false) {
        if (!firstRun) settings.SaveSetting(Bas1Setup::kSection, Bas1Setup::kKeyFirstLoad, "0");
        setup.LoadPaths();
        frm1Setup::Hooks h;
        h.showInstalledProgs = [this] { mainUnit.ShowInstalledProgs(Installed()); };
        h.ribbonClick = [this](int n, bool pressed) { forms.RibbonClick(n, pressed); };
        h.searchRoots = [this] { return SearchRoots{Dir(dir / "apps"), Dir(dir / "drive")}; };
        h.searchInBackground = background;
        unit = std::make_unique<frm1Setup>(setup, dialogs, h);
        window = std::make_unique<frm1SetupWindow>(*unit, app, mainWindow.mdiArea());
        forms.RegisterForm(kFormSetup, unit.get());
    }

    std::string Text(const char* label) const { return window->label(label)->text().toStdString(); }

    Bas1Setup setup{settings, dialogs};
    std::unique_ptr<frm1Setup> unit;
    std::unique_ptr<frm1SetupWindow> window;
};

TEST_F(SetupWindowTest, ScanBrowseAndOKThroughTheButtons) {
    Build();
    mainUnit.Load(false, Installed());

    mainWindow.ribTools(1)->click();
    ASSERT_FALSE(window->subWindow()->isHidden());

    window->button("comScan")->click();
    EXPECT_EQ(Text("lblPathKelmora"), Dir(dir / "apps" / "Kelmora") + "KelmoraTD.EXE");
    EXPECT_EQ(mainWindow.pnlInstalled(1)->text(), " Lumbrak3D not found");
    window->button("comOK")->click();
    EXPECT_EQ(mainWindow.pnlInstalled(1)->text(), " Lumbrak3D found");
}

// The search of the first run on the worker thread: the form is up at once with its stop
// button and the window goes on handling events; the paths arrive at a tick of its timer.
// Only setup and end work until the form has closed.
TEST_F(SetupWindowTest, TheWindowAnswersDuringABackgroundSearchOfTheFirstRun) {
    for (int i = 0; i < 40; ++i)
        fs::create_directories(dir / "drive" / (std::to_string(i) + "d") / "x" / "y");
    Build(true, nullptr, true);
    mainWindow.show();
    mainUnit.Load(setup.GetFirstLoad(), Installed());
    ASSERT_TRUE(unit->Searching());
    EXPECT_FALSE(window->subWindow()->isHidden()) << "the setup opens by itself";
    for (int n = 2; n <= 7; ++n) EXPECT_FALSE(mainWindow.ribTools(n)->isEnabled()) << n;
    auto* stop = window->button("comStopSearch");
    ASSERT_NE(stop, nullptr);
    EXPECT_EQ(std::pair(stop->isVisible(), window->button("comOK")->isEnabled()),
              std::pair(true, false));
    bool answered = false;
    QTimer::singleShot(0, [&] { answered = true; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return !unit->Searching(); }, 10000));
    EXPECT_TRUE(answered) << "events ran while the search was going on";
    EXPECT_FALSE(stop->isVisible());
    EXPECT_EQ(Text("lblPathLumbrakPlus"), Dir(dir / "drive" / "Lumbrak") + "Lumbrak3D.EXE");

    window->button("comOK")->click();
    EXPECT_TRUE(window->subWindow()->isHidden());
    for (int n = 1; n <= 7; ++n) EXPECT_TRUE(mainWindow.ribTools(n)->isEnabled()) << n;
}

TEST_F(SetupWindowTest, ModalFormShowsAsABoxAndItsCloseBoxCancels) {
    Build();
    forms.SetCurrentForm(kFormSetup);
    unit->Display(true);
    auto* box = qobject_cast<QDialog*>(window->host());
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->isVisible() && box->isModal());
    box->reject();
    EXPECT_FALSE(unit->IsOpen() || unit->Result());

    // Opened again as a child, it goes back into the frame.
    forms.RibbonClick(kFormSetup, true);
    EXPECT_EQ(window->host(), window->subWindow());
    EXPECT_FALSE(window->subWindow()->isHidden() || box->isVisible());
    window->subWindow()->close();
    EXPECT_TRUE(window->subWindow()->isHidden() && !unit->IsOpen());
}

// Positions of a form inside the frame are taken in the frame's client area: centred there
// the first time, and back where the user left it afterwards.
TEST_F(SetupWindowTest, PlaceInsideTheFrameIsCentredThenKeptAndAlwaysWhole) {
    IniFile ini(Folder());
    CSApplication app(Folder(), ini, errors);
    Build(false, &app);
    mainWindow.resize(1000, 700);
    mainWindow.show();
    forms.RibbonClick(kFormSetup, true);
    QMdiSubWindow* sub = window->subWindow();
    const QSize room = mainWindow.mdiArea()->viewport()->size();
    EXPECT_NEAR(sub->geometry().center().x(), room.width() / 2, 1);
    EXPECT_NEAR(sub->geometry().center().y(), room.height() / 2, 1);

    sub->move(12, 34);
    window->button("comCancel")->click();
    EXPECT_EQ(std::pair(ini.IniGetInt("FormPosNonChild_frm1Setup", "fLeft"),
                        ini.IniGetInt("FormPosNonChild_frm1Setup", "fTop")),
              std::pair(12, 34));
    forms.RibbonClick(kFormSetup, true);
    EXPECT_EQ(sub->pos(), QPoint(12, 34));

    // A form bigger than the frame's client area starts at the size of the area, seen whole.
    QMdiArea area;
    area.resize(600, 400);
    area.show();
    QMdiSubWindow* wide = area.addSubWindow(new QWidget);
    wide->resize(900, 700);
    RestoreFormPosition(wide, &app, "frmWide", false);
    EXPECT_TRUE(QRect(QPoint(0, 0), area.viewport()->size()).contains(wide->geometry()))
        << wide->geometry().width();
}

}  // namespace
}  // namespace ostrel::gui
