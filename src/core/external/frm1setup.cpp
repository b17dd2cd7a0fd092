#include "core/external/frm1setup.h"

#include <filesystem>

#include "core/platform/text.h"

namespace ostrel {

frm1Setup::frm1Setup(Bas1Setup& setup, Dialogs& dialogs, Hooks hooks)
    : setup_(setup), dialogs_(dialogs), hooks_(std::move(hooks)) {
    form.visible = false;
    lblSearch.visible = false;
    comStopSearch.visible = false;
}

frm1Setup::~frm1Setup() {
    search_.Stop();
    search_.Wait();
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
    // The search of the first run comes once: a user who stopped it at an earlier start is
    // not made to wait for it again (the Scan button still searches).
    const bool search = setup_.GetFirstLoad() && !setup_.GetSearchStopped();
    if (search && hooks_.searchInBackground) {
        Open(modal);
        form.visible = true;
        // The paths, the panels and the first run's box follow when the search has ended.
        StartSearch(SearchKind::FirstRun);
        return;
    }
    {
        BusyPointer busy(dialogs_);
        if (search) {
            dialogs_.HelpNote(kSearchNote, true);
            setup_.SearchAll(Roots());
            dialogs_.HelpNote("", false);
        }
        Open(modal);
        if (hooks_.showInstalledProgs) hooks_.showInstalledProgs();
    }
    form.visible = true;
    FirstRunBox();
}

void frm1Setup::Open(bool modal) {
    pathKelmora_ = setup_.GetPathKelmora();
    pathLumbrak_ = setup_.GetPathLumbrak();
    pathSextane_ = setup_.GetPathSextane();
    result_ = false;
    modal_ = modal;
    open_ = true;
    RefreshLabels();
}

void frm1Setup::FirstRunBox() {
    if (!setup_.GetFirstLoad()) return;
    if (hooks_.closeSplash) hooks_.closeSplash();
    dialogs_.MsgBox(FirstRunText(), MsgButtons::OK, MsgIcon::Information, "");
}

void frm1Setup::StartSearch(SearchKind kind) {
    searchKind_ = kind;
    std::array<bool, 3> wanted{true, true, true};
    std::array<std::string, 3> notes{"Searching for Kelmora installation",
                                     "Searching for Lumbrak3D installation",
                                     "Searching for LumbrakSextane installation"};
    if (kind == SearchKind::Missing) {
        for (int i = 0; i < 3; ++i) wanted[i] = !setup_.GetFoundOf(i);
        notes[0] = "Searching for KelmoraTD installation";
    }
    lastNote_.clear();
    stopRequested_ = false;
    dialogs_.HelpNote(kSearchNote, true);
    search_.Start(Roots(), wanted, notes);
    ShowSearching(true);
    tmrSearch.enabled = true;
}

void frm1Setup::ShowSearching(bool on) {
    lblSearch.caption = on ? std::string(kSearchNote) : std::string();
    lblSearch.visible = on;
    comStopSearch.visible = on;
    comStopSearch.enabled = on;
    // The paths cannot be confirmed or chosen while the walk may still change them.
    comOK.enabled = !on;
    comScan.enabled = !on;
    comSetupPathKelmora.enabled = !on;
    comSetupPathLumbrakPlus.enabled = !on;
    comSetupPathLumbrakSextane.enabled = !on;
}

void frm1Setup::tmrSearchTimer() {
    if (ticking_ || !search_.Running()) return;
    ticking_ = true;
    if (search_.Finished()) {
        EndSearch();
    } else {
        const std::string note = search_.Note();
        if (!note.empty()) {
            // The form shows the count and the folder; the help line the whole note.
            const std::string walk = Bas1Setup::kWalkNote;
            const std::string where = note.compare(0, walk.size(), walk) == 0
                                          ? "looking in " + note.substr(walk.size())
                                          : note;
            lblSearch.caption = std::to_string(search_.Folders()) + " folders, " + where;
            lblSearch.toolTip = note;
            if (note != lastNote_) dialogs_.HelpNote(note, false);
            lastNote_ = note;
        }
    }
    ticking_ = false;
}

void frm1Setup::FinishSearch() {
    if (!search_.Running()) return;
    search_.Wait();
    EndSearch();
}

void frm1Setup::comStopSearchClick() {
    if (!search_.Running()) return;
    comStopSearch.enabled = false;
    stopRequested_ = true;
    search_.Stop();
}

void frm1Setup::EndSearch() {
    tmrSearch.enabled = false;
    const Bas1SetupSearch::Outcome out = search_.Take();
    ShowSearching(false);
    dialogs_.HelpNote("", false);
    if (!open_) return;
    std::string* working[] = {&pathKelmora_, &pathLumbrak_, &pathSextane_};
    if (searchKind_ == SearchKind::FirstRun) {
        if (stopRequested_ && setup_.GetFirstLoad()) setup_.StoreSearchStopped();
        for (int i = 0; i < 3; ++i) {
            if (!out.folders[i].empty()) setup_.SetPathOf(i, out.folders[i]);
            *working[i] = setup_.GetPathOf(i);
        }
        RefreshLabels();
        if (hooks_.showInstalledProgs) hooks_.showInstalledProgs();
        FirstRunBox();
    } else {
        for (int i = 0; i < 3; ++i)
            if (out.searched[i]) *working[i] = out.folders[i];
        RefreshLabels();
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
    if (search_.Running()) {
        // Closing the form ends its search; nothing the walk found is taken.
        search_.Stop();
        tmrSearch.enabled = false;
        search_.Take();
        ShowSearching(false);
        dialogs_.HelpNote("", false);
    }
    form.visible = false;
    if (setup_.GetFirstLoad()) {
        setup_.SetFirstLoad(false);
        setup_.StoreFirstLoad();
    }
    if (hooks_.ribbonClick) hooks_.ribbonClick(kFormSetup, false);
}

void frm1Setup::comOKClick() {
    if (search_.Running()) return;
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
    if (search_.Running()) return;
    if (hooks_.searchInBackground) {
        StartSearch(SearchKind::Missing);
        return;
    }
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
