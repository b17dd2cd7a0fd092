#include "core/external/frm1setup.h"

#include <filesystem>

#include "core/platform/text.h"

namespace ostrel {

frm1Setup::frm1Setup(Bas1Setup& setup, Dialogs& dialogs, Hooks hooks)
    : setup_(setup), dialogs_(dialogs), hooks_(std::move(hooks)) {
    form.visible = false;
}

std::string frm1Setup::FirstRunText() {
    return "OstrelTD is designed to create materials for Lumbrak3D/SextaneTD & KelmoraTD.  \n"
           "Ostrel will work without these being installed. \n\n"
           "However assuming that they are installed, please confirm the paths to these "
           "programs, in the 'Setup' form which will now be loaded automatically. \n"
           "If you wish to install them later, then, after installation, please load the "
           "'Setup' form manually.";
}

SearchRoots frm1Setup::Roots() const {
    return hooks_.searchRoots ? hooks_.searchRoots() : SearchRoots{};
}

void frm1Setup::Display(bool modal) {
    {
        BusyPointer busy(dialogs_);
        if (setup_.GetFirstLoad()) {
            dialogs_.HelpNote(kSearchNote, true);
            setup_.SearchAll(Roots());
            dialogs_.HelpNote("", false);
        }
        pathKelmora_ = setup_.GetPathKelmora();
        pathLumbrak_ = setup_.GetPathLumbrak();
        pathSextane_ = setup_.GetPathSextane();
        result_ = false;
        modal_ = modal;
        open_ = true;
        RefreshLabels();
        if (hooks_.showInstalledProgs) hooks_.showInstalledProgs();
    }
    form.visible = true;
    if (setup_.GetFirstLoad()) {
        if (hooks_.closeSplash) hooks_.closeSplash();
        dialogs_.MsgBox(FirstRunText(), MsgButtons::OK, MsgIcon::Information, "");
    }
}

void frm1Setup::RefreshLabels() {
    auto show = [](const std::string& path, const char* file) {
        return path.empty() ? std::string(kNotFound) : Bas1Setup::WithSeparator(path) + file;
    };
    lblPathKelmora.caption = show(pathKelmora_, Bas1Setup::kFileKelmora);
    lblPathLumbrakPlus.caption = show(pathLumbrak_, Bas1Setup::kFileLumbrak);
    lblPathLumbrakSextane.caption = show(pathSextane_, Bas1Setup::kFileSextane);
}

void frm1Setup::ForceUnload() {
    if (!open_) return;
    open_ = false;
    form.visible = false;
    if (setup_.GetFirstLoad()) {
        setup_.SetFirstLoad(false);
        setup_.StoreFirstLoad();
    }
    if (hooks_.ribbonClick) hooks_.ribbonClick(kFormSetup, false);
}

void frm1Setup::comOKClick() {
    result_ = true;
    setup_.SetPathKelmora(pathKelmora_);
    setup_.SetPathLumbrak(pathLumbrak_);
    setup_.SetPathSextane(pathSextane_);
    setup_.SavePaths();
    if (hooks_.showInstalledProgs) hooks_.showInstalledProgs();
    ForceUnload();
}

void frm1Setup::comCancelClick() {
    result_ = false;
    ForceUnload();
}

void frm1Setup::comScanClick() {
    BusyPointer busy(dialogs_);
    dialogs_.HelpNote(kSearchNote, true);
    setup_.SearchMissing(Roots(), pathKelmora_, pathLumbrak_, pathSextane_);
    dialogs_.HelpNote("", false);
    RefreshLabels();
}

void frm1Setup::ChooseProgram(const std::string& filterName, const std::string& file,
                              const std::string& title, std::string& workingPath) {
    FileDialogSpec spec;
    spec.filter = filterName + " (" + file + ")|" + file;
    spec.defaultExt = "EXE";
    spec.title = title;
    spec.initialPath = workingPath;
    std::optional<std::string> answer = dialogs_.FileOpen(spec);
    if (!answer) return;
    const std::filesystem::path chosen(*answer);
    if (UpperAscii(chosen.filename().string()) != UpperAscii(file)) return;
    workingPath = Bas1Setup::WithSeparator(chosen.parent_path().string());
    RefreshLabels();
}

void frm1Setup::comSetupPathKelmoraClick() {
    ChooseProgram("Kelmora", Bas1Setup::kFileKelmora, "Finding path to Kelmora program",
                  pathKelmora_);
}

void frm1Setup::comSetupPathLumbrakPlusClick() {
    ChooseProgram("Lumbrak3D", Bas1Setup::kFileLumbrak, "Finding path to Lumbrak3D program",
                  pathLumbrak_);
}

void frm1Setup::comSetupPathLumbrakSextaneClick() {
    ChooseProgram("Lumbrak Sextane", Bas1Setup::kFileSextane,
                  "Finding path to Lumbrak Sextane program", pathSextane_);
}

}  // namespace ostrel
