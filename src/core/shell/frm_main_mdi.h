#pragma once
// The main window's logic: the caption, the tool strip's state (kept by ManageForms), the
// panels that tell which sibling programs were found, the help line, and the two popup
// menus of the material list.
#include <array>
#include <functional>
#include <random>
#include <string>

#include "core/material/glasses_list.h"
#include "core/platform/controls.h"
#include "core/platform/dialogs.h"
#include "core/shell/help_notes.h"
#include "core/shell/manage_forms.h"
#include "core/shell/new_msg.h"

namespace ostrel {

// Which sibling programs the installation search found.
struct InstalledProgs {
    bool kelmora = false;
    bool lumbrak = false;
    bool sextane = false;
};

class frmMainMDI {
  public:
    static constexpr int kWallpaperCount = 4;

    struct Hooks {
        // Open material `index` of the custom list for editing in the material form, or in
        // the melt form.
        std::function<void(int index, const MaterialRecord&)> editInNewForm;
        std::function<void(int index, const MaterialRecord&)> editInMeltForm;
        // Sets the help file (after the setup has been looked at).
        std::function<void()> setHelpFile;
        // Closes the main window and so ends the program.
        std::function<void()> unload;
    };

    frmMainMDI(ManageForms& forms, GlassesList& list, Dialogs& dialogs, HelpNotes& notes,
               CNewMsg& newMsg, std::string version, Hooks hooks);

    // The load steps: tools enabled by `firstLoad`, the setup (LoadSetup), the panels'
    // colours, the caption.
    void Load(bool firstLoad, const InstalledProgs& found);
    // With the setup confirmed shows the installed programs, else presses the setup tool.
    // Then hands tmrNewMsg to the one-shot notices and sets the help file.
    void LoadSetup(bool firstLoad, const InstalledProgs& found);
    void ShowInstalledProgs(const InstalledProgs& found);
    // The data folder named in the caption after the program's name and version, so that
    // the user sees which list is in use.
    void SetDataFolder(std::string folder) { dataFolder_ = std::move(folder); }
    // Puts the text on the help line.
    void HelpNote(const std::string& text, bool bold);
    // Remember material `index` for the coming popup command, and caption the menu.
    void PrepForPopup(int index, const std::string& name);
    void PrepForPopupMelt(int index, const std::string& name);
    // Picks another background picture at random (never the same twice running).
    void UpdateWallPaper();

    // --- events ---
    void ribToolsClick(int index, bool pressed);
    // Ends the program once every open working form has agreed to close (QueryClose).
    void ribEndClick();
    // The main window is about to close (its close box, or the end button): true when every
    // open working form agrees; false keeps the program running.
    bool QueryUnload();
    void mnuPopupClick(int item);
    void mnuPopupMeltClick(int item);
    void comLogoClick();
    // The one-shot notice's timer fired.
    void tmrNewMsgTimer() { newMsg_.TimerTick(); }
    // The mouse over a tool (its help note), over the end button (a blank note), or over
    // the frame, the help line or a panel (note 0).
    void ribToolsMouseMove(int index);
    void ribEndMouseMove();
    void FrameMouseMove();

    int PopupIndex() const { return popupIndex_; }
    ManageForms& forms() { return forms_; }

    static std::string CaptionText(const std::string& version);

    Control form;
    Panel pnlHeader, pnlTools, pnlStatusBar;
    std::array<Panel, 3> pnlInstalled;
    Label lblHelp;
    Button comLogo{"", "Contact details"};
    std::array<Button, 3> mnuPopup{Button("Duplicate glass"), Button("Edit glass"),
                                   Button("Delete glass")};
    std::array<Button, 3> mnuPopupMelt{Button("Duplicate glass"), Button("Edit melt data"),
                                       Button("Delete glass")};
    Timer tmrNewMsg{CNewMsg::kDefaultInterval};
    Picture picWallpaper;

  private:
    void PopupCommand(int item, bool meltMenu);

    ManageForms& forms_;
    GlassesList& list_;
    Dialogs& dialogs_;
    HelpNotes& notes_;
    CNewMsg& newMsg_;
    std::string version_;
    Hooks hooks_;
    int popupIndex_ = 0;
    std::string dataFolder_;
    bool ending_ = false;  // the end button has had its answers; the closing window asks no more
    std::mt19937 random_{std::random_device{}()};
};

}  // namespace ostrel
