#pragma once
// The setup form without pixels: the three folders of the sibling programs, found by the
// disk walk or chosen by hand, confirmed with OK.
//
// The window binds its widgets to the controls below by name, shows itself while
// `form.visible` is true (modal when Modal() says so), and forwards clicks to the
// ...Click() methods. The main window's part is reached through Hooks.
#include <functional>
#include <memory>
#include <string>

#include "core/external/bas1_setup.h"
#include "core/external/bas1_setup_search.h"
#include "core/platform/controls.h"
#include "core/platform/dialogs.h"
#include "core/shell/manage_forms.h"

namespace ostrel {

class frm1Setup : public WorkingForm {
  public:
    static constexpr const char* kNotFound = "Not found";
    static constexpr const char* kSearchNote =
        "Searching for installations of KelmoraTD, Lumbrak3D & LumbrakSextane";

    struct Hooks {
        std::function<void()> showInstalledProgs;  // main window: refresh the three panels
        std::function<void()> closeSplash;         // closes the splash if it is up
        // Releases the setup button: RibbonClick(1, false).
        std::function<void(int, bool)> ribbonClick;
        std::function<SearchRoots()> searchRoots;  // where the walks start
        // The walks run on a worker thread and end at a tick of tmrSearch, while the
        // windows keep answering; without it they run inside the call that starts them.
        bool searchInBackground = false;
    };

    frm1Setup(Bas1Setup& setup, Dialogs& dialogs, Hooks hooks);
    ~frm1Setup();

    // Searches on a first run, takes the stored folders, and opens the form.
    void Display() override { Display(false); }
    void Display(bool modal);
    // Closes the form; does nothing when it is not open.
    void ForceUnload() override;

    void comOKClick();
    void comCancelClick();
    void comScanClick();
    void comSetupPathKelmoraClick();
    void comSetupPathLumbrakPlusClick();
    void comSetupPathLumbrakSextaneClick();
    // Stops a search running on the worker: the folders found so far are kept.
    void comStopSearchClick();
    // Shows the search's progress and, once it has ended, takes what it found.
    void tmrSearchTimer();

    // A search is running on the worker thread.
    bool Searching() const { return search_.Running(); }
    // Waits for a running search to end and takes what it found (as the next tick would).
    void FinishSearch();

    // True when the form was closed by OK.
    bool Result() const { return result_; }
    bool IsOpen() const { return open_; }
    bool Modal() const { return modal_; }
    // The folders shown on the form (not yet confirmed).
    const std::string& WorkingPathKelmora() const { return pathKelmora_; }
    const std::string& WorkingPathLumbrak() const { return pathLumbrak_; }
    const std::string& WorkingPathSextane() const { return pathSextane_; }

    // The information box of the first run.
    static std::string FirstRunText();

    Control form{"Setup"};
    Label lblPathKelmora{"undefined"};
    Label lblPathLumbrakPlus{"undefined"};
    Label lblPathLumbrakSextane{"undefined"};
    Label lblTitleKelmora{"Path to KelmoraTD:"};
    Label lblTitleLumbrakPlus{"Path to Lumbrak3D:"};
    Label lblTitleLumbrakSextane{"Path to LumbrakSextane3D:"};
    Button comSetupPathKelmora{"", "Manually search for Kelmora program"};
    Button comSetupPathLumbrakPlus{"", "Manually search for LumbrakPlus program"};
    Button comSetupPathLumbrakSextane{"", "Manually search for Lumbrak Sextane program"};
    Button comOK{"&OK", "Confirm that these paths are correct"};
    Button comCancel{"&Cancel"};
    Button comScan{"&Scan", "Automatic search for programs with no defined path"};
    // The progress of a search on the worker thread, and the button that stops it; both
    // shown only while it runs.
    Label lblSearch{""};
    Button comStopSearch{"S&top search",
                         "Stop searching; the folders found so far are kept and the search "
                         "does not start again by itself"};
    Timer tmrSearch{100};

  private:
    void RefreshLabels();
    void ChooseProgram(const std::string& filterName, const std::string& file,
                       const std::string& title, std::string& workingPath);
    SearchRoots Roots() const;
    enum class SearchKind { FirstRun, Missing };
    void StartSearch(SearchKind kind);
    void EndSearch();
    void ShowSearching(bool on);
    // Takes the stored paths into the form and marks it open.
    void Open(bool modal);
    void FirstRunBox();

    Bas1Setup& setup_;
    Dialogs& dialogs_;
    Hooks hooks_;
    std::string pathKelmora_, pathLumbrak_, pathSextane_;
    bool result_ = false;
    bool open_ = false;
    bool modal_ = false;
    Bas1SetupSearch search_;
    SearchKind searchKind_ = SearchKind::FirstRun;
    bool ticking_ = false;
    bool stopRequested_ = false;
    std::string lastNote_;
};

}  // namespace ostrel
