#pragma once
// The welcome panel of the main window's empty area: while the custom list is empty and no
// working form is open it says in two lines what the program does and offers its three
// first steps, each with a line of explanation. Its buttons press the same tool buttons as
// the tool strip and are enabled with them.
//
// Also the one-time notice of a demonstration installation: the sibling programs' files of
// such an installation are empty stand-ins, which is how it is recognised; the notice names
// its folder once, and never again for that folder.
#include <functional>
#include <string>
#include <vector>

#include "core/platform/controls.h"
#include "core/platform/dialogs.h"
#include "core/platform/settings_store.h"
#include "core/shell/manage_forms.h"

namespace ostrel {

class Welcome {
  public:
    static constexpr const char* kSection = "Welcome";
    static constexpr const char* kKeyDemoNotice = "DemoNoticeShown";

    // `materialCount` tells how many materials the custom list holds.
    Welcome(ManageForms& forms, Dialogs& dialogs, SettingsStore& settings,
            std::function<int()> materialCount);

    // Shows the panel exactly while the list is empty and no working form is open.
    void Refresh();

    void comWelcomeNewClick() { Press(kFormNew); }
    void comWelcomeImportClick() { Press(kFormImport); }
    void comWelcomeSetupClick() { Press(kFormSetup); }

    // The folder of the demonstration installation that the Lumbrak folder belongs to, or
    // "" when it is a real installation (or none).
    static std::string DemoFolder(const std::string& pathLumbrak);
    // Says once where the demonstration installation is; true when the notice was shown.
    bool ShowDemoNotice(const std::string& pathLumbrak);
    static std::string DemoNoticeText(const std::string& folder);

    Panel pnlWelcome;
    Label lblWelcomeTitle{"Welcome to Ostrel"};
    Label lblWelcomeText{
        "Ostrel keeps your own optical materials: measured indices and dispersion fits, "
        "transmission, thermal data and melt glasses.\n"
        "It writes them into the glass files of Lumbrak3D and SextaneTD and into the "
        "KelmoraTD database."};
    Button comWelcomeNew{"&New material", "Create new optical material"};
    Label lblWelcomeNew{
        "Type or paste measured indices, fit a dispersion formula, and add the "
        "material to your list."};
    Button comWelcomeImport{"&Import a catalogue",
                            "Import data from text files [selected formats]"};
    Label lblWelcomeImport{
        "Read glasses from a GLZ, AGF, GLC, GLA or GLS file and add the ones "
        "you need."};
    Button comWelcomeSetup{"&Setup", "Confirm paths to LumbrakPlus & Kelmora"};
    Label lblWelcomeSetup{"Tell Ostrel where Lumbrak3D, SextaneTD and KelmoraTD are installed."};

  private:
    void Press(int n);

    ManageForms& forms_;
    Dialogs& dialogs_;
    SettingsStore& settings_;
    std::function<int()> materialCount_;
    std::vector<Subscription> subs_;
};

}  // namespace ostrel
