#include "core/shell/main_menu.h"

#include "core/platform/maker.h"
#include "core/shell/manage_forms.h"

namespace ostrel {

MainMenu::MainMenu(frmMainMDI& main, Dialogs& dialogs, std::string version, Hooks hooks)
    : main_(main), dialogs_(dialogs), version_(std::move(version)), hooks_(std::move(hooks)) {
    BuildFileMenu();
    BuildEditMenu();
    BuildMaterialsMenu();
    BuildToolsMenu();
    BuildHelpMenu();
}

MenuItem& MainMenu::AddItem(Menu& menu, std::string name, std::string caption, std::string toolTip,
                            MenuKey key, std::function<void()> command, int toolNumber) {
    MenuItem& item = items_.emplace_back();
    item.name = std::move(name);
    item.button.caption = std::move(caption);
    item.button.toolTip = std::move(toolTip);
    item.key = key;
    item.toolNumber = toolNumber;
    item.command = std::move(command);
    menu.items.push_back(&item);
    return item;
}

MenuItem& MainMenu::AddToolItem(Menu& menu, std::string name, std::string caption, MenuKey key,
                                int n) {
    ManageForms& forms = main_.forms();
    MenuItem& item = AddItem(
        menu, std::move(name), std::move(caption), ManageForms::ToolTip(n), key,
        [this, n] { main_.ribToolsClick(n, true); }, n);
    // Enabled with the tool button it stands for.
    Button& tool = forms.ribTools[n];
    item.button.enabled = tool.enabled.get();
    subs_.push_back(tool.Observe([&item, &tool] { item.button.enabled = tool.enabled.get(); }));
    return item;
}

MenuItem* MainMenu::Find(const std::string& name) {
    for (MenuItem& item : items_)
        if (item.name == name) return &item;
    return nullptr;
}

bool MainMenu::Trigger(const std::string& name) {
    MenuItem* item = Find(name);
    if (!item || !item->button.enabled || !item->command) return false;
    item->command();
    return true;
}

void MainMenu::BuildFileMenu() {
    AddToolItem(mnuFile, "mnuNew", "&New material", MenuKey::New, kFormNew);
    AddToolItem(mnuFile, "mnuImport", "&Import...", MenuKey::Open, kFormImport);
    AddToolItem(mnuFile, "mnuBackup", "&Backup...", MenuKey::Save, kFormExport);
    MenuItem& quit = AddItem(mnuFile, "mnuQuit", "&Quit", "End Ostrel", MenuKey::Quit,
                             [this] { main_.ribEndClick(); });
    quit.separatorBefore = true;
}

void MainMenu::BuildEditMenu() {
    struct Entry {
        const char* name;
        const char* caption;
        MenuKey key;
        EditCommand command;
    };
    const Entry entries[] = {
        {"mnuCut", "Cu&t", MenuKey::Cut, EditCommand::Cut},
        {"mnuCopy", "&Copy", MenuKey::Copy, EditCommand::Copy},
        {"mnuPaste", "&Paste", MenuKey::Paste, EditCommand::Paste},
        {"mnuSelectAll", "Select &all", MenuKey::SelectAll, EditCommand::SelectAll},
    };
    for (const Entry& e : entries) {
        MenuItem& item = AddItem(mnuEdit, e.name, e.caption, "", e.key, [this, c = e.command] {
            if (hooks_.edit) hooks_.edit(c);
        });
        item.separatorBefore = e.command == EditCommand::SelectAll;
    }
}

void MainMenu::BuildMaterialsMenu() {
    AddToolItem(mnuMaterials, "mnuManage", "&Manage", MenuKey::None, kFormManage);
    AddToolItem(mnuMaterials, "mnuMelt", "Melt ma&ker", MenuKey::None, kFormMelt);
    // The update frame is part of the manage form: the item opens it there.
    MenuItem& update =
        AddToolItem(mnuMaterials, "mnuUpdate", "&Update siblings...", MenuKey::None, kFormManage);
    update.toolNumber = 0;
    update.separatorBefore = true;
    update.button.toolTip = std::string(
        "Open the manage form, whose lower frame updates Lumbrak3D, SextaneTD and KelmoraTD");
    update.command = [this] {
        main_.ribToolsClick(kFormManage, true);
        main_.HelpNote(
            "Select materials in the manage form, then press an update button in its lower "
            "frame.",
            false);
    };
    AddToolItem(mnuMaterials, "mnuArchive", "&Archive...", MenuKey::None, kFormArchive);
    MenuItem& remove = AddToolItem(mnuMaterials, "mnuRemove", "&Remove from siblings...",
                                   MenuKey::None, kFormManage);
    remove.toolNumber = 0;
    remove.button.toolTip =
        std::string("Remove user defined materials from Lumbrak3D, SextaneTD and KelmoraTD");
    remove.command = [this] {
        if (hooks_.removeFromSiblings) hooks_.removeFromSiblings();
    };
}

void MainMenu::BuildToolsMenu() {
    AddToolItem(mnuTools, "mnuSetup", "&Setup", MenuKey::None, kFormSetup);
    AddItem(mnuTools, "mnuWavelengths", "&Wavelengths", "Tables of spectral and laser lines",
            MenuKey::None, [this] {
                if (hooks_.wavelengths) hooks_.wavelengths();
            });
}

void MainMenu::BuildHelpMenu() {
    AddItem(mnuHelp, "mnuGuide", "&User guide", "Open the user guide in the browser",
            MenuKey::HelpContents, [this] {
                if (hooks_.openGuide) hooks_.openGuide("");
            });
    AddItem(mnuHelp, "mnuContacts", "&Contacts", "Contact details", MenuKey::None,
            [this] { main_.comLogoClick(); });
    AddItem(mnuHelp, "mnuAbout", "&About Ostrel", "", MenuKey::None, [this] {
        dialogs_.MsgBox(AboutText(), MsgButtons::OK, MsgIcon::Information, "About Ostrel");
    });
}

std::string MainMenu::AboutText() const {
    return std::string("Ostrel for Lumbrak3D/SextaneTD & KelmoraTD\n") + version_ +
           "\n\nCustom optical materials: indices, dispersion fits, transmission and melt "
           "glasses, kept in a local list and pushed into Lumbrak3D, SextaneTD and KelmoraTD."
           "\n\n" +
           maker::kName;
}

}  // namespace ostrel
