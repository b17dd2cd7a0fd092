#pragma once
// Which working form is open, and the tool strip that opens and closes them.
//
// Form numbers are those of the tool buttons: 1 setup, 2 manage, 3 new, 4 import,
// 5 export, 6 archive, 7 melt. Each working form registers itself under its number as a
// WorkingForm; a number with no form registered is simply passed over.
//
// The tool buttons are control models (`ribTools[1]` to `ribTools[7]`, `ribEnd`): the window
// binds its toggle buttons to them and calls RibbonClick(n, pressed) when the user clicks
// one. When the logic itself releases a button (value set false) the window must follow
// the model without calling RibbonClick again.
#include <array>
#include <functional>
#include <string>

#include "core/platform/controls.h"
#include "core/platform/dialogs.h"

namespace ostrel {

class WorkingForm {
  public:
    virtual ~WorkingForm() = default;
    virtual void Display() = 0;
    virtual void ForceUnload() = 0;
    // Asked before the form closes at the user's wish (its Close button, its tool released,
    // the end of the program). A form holding unsaved changes asks whether to save them;
    // false keeps the form open.
    virtual bool QueryClose() { return true; }
};

enum FormNumber : int {
    kNoForm = 0,
    kFormSetup = 1,
    kFormManage = 2,
    kFormNew = 3,
    kFormImport = 4,
    kFormExport = 5,
    kFormArchive = 6,
    kFormMelt = 7,
};

class ManageForms {
  public:
    static constexpr int kFormCount = 7;

    // What the tool strip needs to know from elsewhere, and what it asks of the main window.
    struct Hooks {
        std::function<bool()> kelmoraFound;     // the archive form needs Kelmora
        std::function<bool()> firstLoad;        // setup never confirmed: other tools off
        std::function<void()> updateWallPaper;  // after a working form (2 to 7) is shown
    };

    ManageForms(Dialogs& dialogs, Hooks hooks);

    void RegisterForm(int formNumber, WorkingForm* form);

    // The only way the tool strip opens or closes a working form. Every open form that the
    // click would close is asked first (QueryClose); when one refuses, nothing closes or
    // opens and the clicked button goes back to where it was.
    void RibbonClick(int formNumber, bool pressed);
    // Opens a form by calling its Display; for number 3 with keep true, Display is skipped.
    // False for a number outside 1 to 7.
    bool ShowForm(int formNumber, bool keep = false);
    // Closes a form by calling its ForceUnload, and releases its tool button.
    void HideForm(int formNumber);
    // Before the program ends: asks every open working form (QueryClose), the forms open
    // beside the manage or import form first. False as soon as one refuses: the end is off.
    bool QueryCloseAll();
    // At the end of the program: unloads every open working form, as closing it would.
    void UnloadAll();
    // The material or melt form (3 or 7) opened for editing by another form's command: beside
    // the manage or import form it is marked open beside it and its button goes down;
    // otherwise it becomes the current form the way its tool would open it. The caller then
    // fills it with the record (its DisplayEdit), which replaces what Display showed. A form
    // already open is asked first (QueryClose), since the record replaces what it holds.
    // False when a form refused to close: the caller then shows nothing.
    bool OpenForEdit(int formNumber);
    // A working form closed by its own command, which has asked the user already: the
    // current one is closed as a release of its tool; one open beside the manage or import
    // form goes alone, leaving that form.
    void FormClosed(int formNumber);
    // Enables the tools 2 to 7 exactly when the setup has been confirmed once; the setup
    // and end buttons stay enabled.
    void EnableTools();

    int GetCurrentForm() const { return currentForm_; }
    void SetCurrentForm(int n) { currentForm_ = n; }
    bool GetNewFormOpen() const { return newFormOpen_; }
    void SetNewFormOpen(bool v) { newFormOpen_ = v; }
    bool GetMeltFormOpen() const { return meltFormOpen_; }
    void SetMeltFormOpen(bool v) { meltFormOpen_ = v; }

    // The tool tip of each button (index 1 to 7).
    static std::string ToolTip(int formNumber);

    std::array<Button, kFormCount + 1> ribTools;  // [0] is not used
    Button ribEnd{"", "End Ostrel"};

  private:
    WorkingForm* Form(int n) const;
    // RibbonClick, asking the forms that close only when `ask` is set.
    void Click(int formNumber, bool pressed, bool ask);
    // Asks form n whether it may close; a number without a form may.
    bool Query(int n) const;
    // Asks form n and, for the manage or import form, the forms open beside it.
    bool QueryClosing(int n) const;
    // Asks the forms open beside the manage or import form.
    bool QueryBeside() const;
    void Unload(int n);
    void Release(int n);

    Dialogs& dialogs_;
    Hooks hooks_;
    std::array<WorkingForm*, kFormCount + 1> forms_{};
    int currentForm_ = kNoForm;
    bool newFormOpen_ = false;
    bool meltFormOpen_ = false;
};

}  // namespace ostrel
