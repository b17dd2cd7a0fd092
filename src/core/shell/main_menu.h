#pragma once
// The main window's menu bar without pixels: File, Edit, Materials, Tools and Help. Each
// item is a Button model (caption with its "&" letter, tool tip, enabled) with the key
// that triggers it and the command it runs. Items that open a working form run the same
// command as that form's tool button and are enabled exactly when the button is; so on a
// first run only Setup, Quit and the Help menu work until the setup has closed.
//
// Each menu is built by one function, so that a menu can be extended by one more call of
// AddItem (the window builds the bar from `menus` once everything is added).
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "core/platform/controls.h"
#include "core/platform/dialogs.h"
#include "core/shell/frm_main_mdi.h"

namespace ostrel {

// The desktop's standard keys that the window maps to its platform's sequences.
enum class MenuKey {
    None,
    New,
    Open,
    Save,
    Quit,
    Cut,
    Copy,
    Paste,
    SelectAll,
    HelpContents,
};

enum class EditCommand { Cut, Copy, Paste, SelectAll };

struct MenuItem {
    std::string name;  // mnuNew, mnuImport...
    Button button;
    MenuKey key = MenuKey::None;
    int toolNumber = 0;  // Ctrl+number as a second key, and the tool button it stands for
    bool separatorBefore = false;
    std::function<void()> command;
};

struct Menu {
    std::string name;     // mnuFile...
    std::string caption;  // "&File"
    std::vector<MenuItem*> items;
};

class MainMenu {
  public:
    struct Hooks {
        std::function<void(EditCommand)> edit;                   // acts on the focused grid or box
        std::function<void()> wavelengths;                       // the wavelength tables
        std::function<void()> removeFromSiblings;                // the removal form
        std::function<void(const std::string& page)> openGuide;  // a page of the guide
    };

    MainMenu(frmMainMDI& main, Dialogs& dialogs, std::string version, Hooks hooks);

    // One function per menu; the constructor calls them in the bar's order.
    void BuildFileMenu();
    void BuildEditMenu();
    void BuildMaterialsMenu();
    void BuildToolsMenu();
    void BuildHelpMenu();

    // Appends an item to `menu`; the reference stays valid for the menu's life.
    MenuItem& AddItem(Menu& menu, std::string name, std::string caption, std::string toolTip,
                      MenuKey key, std::function<void()> command, int toolNumber = 0);
    // The item of that name, or null.
    MenuItem* Find(const std::string& name);
    // Runs the item's command when it is enabled; false otherwise.
    bool Trigger(const std::string& name);

    // The About box's text.
    std::string AboutText() const;

    Menu mnuFile{"mnuFile", "&File", {}};
    Menu mnuEdit{"mnuEdit", "&Edit", {}};
    Menu mnuMaterials{"mnuMaterials", "&Materials", {}};
    Menu mnuTools{"mnuTools", "&Tools", {}};
    Menu mnuHelp{"mnuHelp", "&Help", {}};
    // The menus in the bar's order.
    std::vector<Menu*> menus{&mnuFile, &mnuEdit, &mnuMaterials, &mnuTools, &mnuHelp};

  private:
    // An item that presses tool button `n`, enabled with it.
    MenuItem& AddToolItem(Menu& menu, std::string name, std::string caption, MenuKey key, int n);

    frmMainMDI& main_;
    Dialogs& dialogs_;
    std::string version_;
    Hooks hooks_;
    std::deque<MenuItem> items_;
    std::vector<Subscription> subs_;
};

}  // namespace ostrel
