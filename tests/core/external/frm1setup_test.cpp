#include "core/external/frm1setup.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "core/shell/manage_forms.h"
#include "external_fixture.h"

namespace ostrel::testing {
namespace {

namespace fs = std::filesystem;

class Frm1SetupTest : public ::testing::Test {
  protected:
    Frm1SetupTest() {
        fs::create_directories(tmp / "apps" / "Ostrel");
        Program(tmp / "apps" / "Kelmora", "KelmoraTD.EXE");
        Program(tmp / "drive" / "Lumbrak", "Lumbrak3D.EXE");
        ManageForms::Hooks mh;
        mh.kelmoraFound = [this] { return setup.GetKelmoraFound(); };
        mh.firstLoad = [this] { return setup.GetFirstLoad(); };
        forms = std::make_unique<ManageForms>(dialogs, mh);
        form = Made(hooks);
    }
    // A setup form over these hooks, registered as the setup button's form.
    std::unique_ptr<frm1Setup> Made(const frm1Setup::Hooks& with) {
        auto made = std::make_unique<frm1Setup>(setup, dialogs, with);
        forms->RegisterForm(1, made.get());
        return made;
    }

    // The program starts, reading the stored paths (after its first run when told so), and
    // the user presses the setup button.
    void OpenSetup(bool afterFirstRun = false) {
        if (afterFirstRun) settings.SaveSetting("B1SetupPathsTD", "FirstLoad1TD", "False");
        setup.LoadPaths();
        forms->RibbonClick(1, true);
    }

    // The paths the form shows: Kelmora, Lumbrak and Sextane.
    static auto Shown(const frm1Setup& f) {
        return std::tuple(f.lblPathKelmora.caption.get(), f.lblPathLumbrakPlus.caption.get(),
                          f.lblPathLumbrakSextane.caption.get());
    }

    TempDir tmp;
    // The captions of the two programs the search finds.
    const std::string kelmora = Dir(tmp / "apps" / "Kelmora") + "KelmoraTD.EXE";
    const std::string lumbrak = Dir(tmp / "drive" / "Lumbrak") + "Lumbrak3D.EXE";
    ScriptedDialogs dialogs;
    MemorySettingsStore settings;
    Bas1Setup setup{settings, dialogs};
    std::unique_ptr<ManageForms> forms;
    frm1Setup::Hooks hooks{[this] { ++panelRefreshes; }, [this] { ++splashClosed; },
                           [this](int n, bool p) { forms->RibbonClick(n, p); },
                           [this] {
                               return SearchRoots{Dir(tmp / "apps"), Dir(tmp / "drive")};
                           }};
    std::unique_ptr<frm1Setup> form;
    int panelRefreshes = 0;
    int splashClosed = 0;
};

TEST_F(Frm1SetupTest, FirstRunSearchesShowsThePathsAndTheBoxAndOkStoresThem) {
    EXPECT_FALSE(form->form.visible);
    // Unloading a form that is not open does nothing, in particular it ends no first run.
    form->ForceUnload();
    setup.LoadPaths();
    forms->EnableTools();
    // Beside the program comes first: a copy in the drive is never reached.
    Program(tmp / "drive" / "AAA" / "Kelmora", "KelmoraTD.EXE");
    OpenSetup();
    EXPECT_TRUE(settings.values().empty());  // nothing stored before OK
    EXPECT_TRUE(form->IsOpen() && form->form.visible);
    EXPECT_EQ(Shown(*form), std::tuple(kelmora, lumbrak, "Not found"));
    std::erase_if(dialogs.helpNotes, [](auto& n) { return n.rfind("First time search", 0) == 0; });
    EXPECT_EQ(dialogs.helpNotes,
              (std::vector<std::string>{
                  "Searching for installations of KelmoraTD, Lumbrak3D & LumbrakSextane",
                  "Searching for Kelmora installation", "Searching for Lumbrak3D installation",
                  "Searching for LumbrakSextane installation", ""}));
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text,
              "OstrelTD is designed to create materials for Lumbrak3D/SextaneTD & KelmoraTD.  \n"
              "Ostrel will work without these being installed. \n\n"
              "However assuming that they are installed, please confirm the paths to these "
              "programs, in the 'Setup' form which will now be loaded automatically. \n"
              "If you wish to install them later, then, after installation, please load the "
              "'Setup' form manually.");
    EXPECT_EQ(std::tuple(splashClosed, panelRefreshes, dialogs.busyDepth), std::tuple(1, 1, 0));

    // OK stores the paths found and ends the first run.
    form->comOKClick();
    EXPECT_EQ(std::tuple(form->Result(), form->IsOpen()), std::tuple(true, false));
    // Nothing for the program not found.
    EXPECT_EQ(settings.values(),
              (std::map<std::pair<std::string, std::string>, std::string>{
                  {{"B1SetupPathsTD", "KelmoraTD"}, Dir(tmp / "apps" / "Kelmora")},
                  {{"B1SetupPathsTD", "LumbrakPlusTD"}, Dir(tmp / "drive" / "Lumbrak")},
                  {{"B1SetupPathsTD", "FirstLoad1TD"}, "False"}}));
    EXPECT_EQ(forms->GetCurrentForm(), 0);
}

TEST_F(Frm1SetupTest, CancelOnTheFirstRunStoresNoPath) {
    OpenSetup();
    form->comCancelClick();
    EXPECT_TRUE(setup.GetKelmoraFound());  // as the search found it, while the program runs
    EXPECT_EQ(settings.values().size(), 1u);
    EXPECT_EQ(settings.GetSetting("B1SetupPathsTD", "FirstLoad1TD", ""), "False");

    // The next start reads no stored path and searches no more.
    Bas1Setup next(settings, dialogs);
    next.LoadPaths();
    EXPECT_FALSE(next.GetFirstLoad() || next.GetKelmoraFound() || next.GetLumbrakFound());
}

TEST_F(Frm1SetupTest, ChosenFileMustCarryTheProgramsNameAndDialogTexts) {
    OpenSetup(true);
    EXPECT_TRUE(dialogs.boxes.empty());  // no first-run box
    EXPECT_EQ(form->lblPathKelmora.caption.get(), "Not found");
    dialogs.files = {(tmp / "apps" / "Kelmora" / "Other.EXE").string(),
                     (tmp / "apps" / "Kelmora" / "kelmoratd.exe").string()};
    form->comSetupPathKelmoraClick();
    EXPECT_EQ(form->WorkingPathKelmora(), "");
    form->comSetupPathKelmoraClick();
    EXPECT_EQ(form->WorkingPathKelmora(), Dir(tmp / "apps" / "Kelmora"));
    EXPECT_EQ(form->lblPathKelmora.caption.get(), kelmora);
    form->comOKClick();

    OpenSetup();
    form->comSetupPathLumbrakPlusClick();
    form->comSetupPathLumbrakSextaneClick();
    const std::pair<const char*, const char*> shown[] = {
        {"Kelmora (KelmoraTD.EXE)|KelmoraTD.EXE", "Finding path to Kelmora program"},
        {"Kelmora (KelmoraTD.EXE)|KelmoraTD.EXE", "Finding path to Kelmora program"},
        {"Lumbrak3D (Lumbrak3D.EXE)|Lumbrak3D.EXE", "Finding path to Lumbrak3D program"},
        {"Lumbrak Sextane (LumbrakSextaneTD.EXE)|LumbrakSextaneTD.EXE",
         "Finding path to Lumbrak Sextane program"}};
    ASSERT_EQ(dialogs.fileDialogs.size(), std::size(shown));
    for (size_t i = 0; i < std::size(shown); ++i) {
        const FileDialogSpec& d = dialogs.fileDialogs[i];
        EXPECT_EQ(std::tuple(d.filter, d.title, d.defaultExt),
                  std::tuple(shown[i].first, shown[i].second, "EXE"));
    }
}

TEST_F(Frm1SetupTest, ScanFillsOnlyTheMissingPaths) {
    Program(tmp / "k", "KelmoraTD.EXE");  // stored: the one beside the program is not sought
    settings.SaveSetting("B1SetupPathsTD", "KelmoraTD", Dir(tmp / "k"));
    OpenSetup(true);
    EXPECT_EQ(form->lblPathLumbrakPlus.caption.get(), "Not found");
    dialogs.helpNotes.clear();
    form->comScanClick();
    EXPECT_EQ(Shown(*form), std::tuple(Dir(tmp / "k") + "KelmoraTD.EXE", lumbrak, "Not found"));
    ASSERT_GE(dialogs.helpNotes.size(), 2u);
    EXPECT_EQ(dialogs.helpNotes[1], "Searching for Lumbrak3D installation");
    EXPECT_EQ(dialogs.busyDepth, 0);
}

// The search on the worker thread, beyond what its window shows: the timer and Scan follow
// it, OK and the first run's box wait for it. A stop is remembered so that the next start
// does not search by itself, while Scan still does.
TEST_F(Frm1SetupTest, BackgroundSearchEndsAtATickAndAStopIsRemembered) {
    frm1Setup::Hooks h = hooks;
    h.searchRoots = [this] {
        return SearchRoots{Dir(tmp / "apps"), Dir(tmp / "none"), {Dir(tmp / "drive")}};
    };
    h.searchInBackground = true;
    auto controls = [this] {
        return std::tuple<bool, bool, bool>(form->Searching(), form->tmrSearch.enabled,
                                            form->comScan.enabled);
    };
    // The program starts on a first run that has not ended, and the setup button is pressed.
    auto start = [&] {
        forms->UnloadAll();
        settings.SaveSetting("B1SetupPathsTD", "FirstLoad1TD", "True");
        form = Made(h);
        OpenSetup();
        return form->Searching();
    };
    ASSERT_TRUE(start());
    EXPECT_EQ(controls(), std::tuple(true, true, false));
    EXPECT_TRUE(dialogs.boxes.empty()) << "the first run's box waits for the search";
    form->comOKClick();
    EXPECT_TRUE(form->IsOpen()) << "OK waits for the search";
    form->FinishSearch();
    EXPECT_EQ(controls(), std::tuple(false, false, true));
    // The shared folders are searched after the drive.
    EXPECT_EQ(Shown(*form), std::tuple(kelmora, lumbrak, "Not found"));
    EXPECT_EQ(settings.GetSetting("B1SetupPathsTD", "FirstSearchStopped1TD", "none"), "none");
    // The program was killed before the first run ended: the search comes again, and the
    // user stops it. The start after that searches no more.
    dialogs.boxes.clear();
    ASSERT_TRUE(start());
    form->comStopSearchClick();
    EXPECT_FALSE(form->comStopSearch.enabled);
    form->FinishSearch();
    EXPECT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(settings.GetSetting("B1SetupPathsTD", "FirstSearchStopped1TD", ""), "True");
    EXPECT_FALSE(start());
    EXPECT_TRUE(form->comOK.enabled);
    form->comScanClick();
    ASSERT_TRUE(form->Searching()) << "Scan still searches";
    // Closing the form during a search ends it and takes nothing.
    form->comCancelClick();
    EXPECT_EQ(std::tuple(form->Searching(), form->IsOpen()), std::tuple(false, false));
}

}  // namespace
}  // namespace ostrel::testing
