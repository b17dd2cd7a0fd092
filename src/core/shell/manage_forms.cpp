#include "core/shell/manage_forms.h"

namespace ostrel {

namespace {
bool ValidForm(int n) {
    return n >= 1 && n <= ManageForms::kFormCount;
}
}  // namespace

ManageForms::ManageForms(Dialogs& dialogs, Hooks hooks)
    : dialogs_(dialogs), hooks_(std::move(hooks)) {
    for (int n = 1; n <= kFormCount; ++n) ribTools[n].toolTip = ToolTip(n);
    ribTools[0].visible = false;
}

std::string ManageForms::ToolTip(int formNumber) {
    switch (formNumber) {
        case 1:
            return "Confirm paths to LumbrakPlus & Kelmora";
        case 2:
            return "List, edit & delete materials in local database, plus update "
                   "LumbrakPlus/Sextane & Kelmora.";
        case 3:
            return "Create new optical material";
        case 4:
            return "Import data from text files [selected formats]";
        case 5:
            return "Backup materials in local list to text file [Ostrel format]";
        case 6:
            return "Archive/restore any glasses in Kelmora database";
        case 7:
            return "Make melt derivative of existing glass";
        default:
            return {};
    }
}

void ManageForms::RegisterForm(int formNumber, WorkingForm* form) {
    if (ValidForm(formNumber)) forms_[formNumber] = form;
}

WorkingForm* ManageForms::Form(int n) const {
    return ValidForm(n) ? forms_[n] : nullptr;
}

bool ManageForms::Query(int n) const {
    WorkingForm* f = Form(n);
    return f == nullptr || f->QueryClose();
}

bool ManageForms::QueryBeside() const {
    if (newFormOpen_ && currentForm_ != kFormNew && !Query(kFormNew)) return false;
    if (meltFormOpen_ && currentForm_ != kFormMelt && !Query(kFormMelt)) return false;
    return true;
}

bool ManageForms::QueryClosing(int n) const {
    if ((n == kFormManage || n == kFormImport) && !QueryBeside()) return false;
    return Query(n);
}

bool ManageForms::QueryCloseAll() {
    if (!QueryBeside()) return false;
    return currentForm_ == kNoForm || Query(currentForm_);
}

void ManageForms::Unload(int n) {
    if (WorkingForm* f = Form(n)) f->ForceUnload();
}

void ManageForms::Release(int n) {
    if (ValidForm(n) && ribTools[n].value) ribTools[n].value = false;
}

void ManageForms::EnableTools() {
    const bool on = !(hooks_.firstLoad && hooks_.firstLoad());
    for (int n = 2; n <= kFormCount; ++n) ribTools[n].enabled = on;
    ribTools[1].enabled = true;
    ribEnd.enabled = true;
}

void ManageForms::RibbonClick(int formNumber, bool pressed) {
    Click(formNumber, pressed, true);
}

void ManageForms::Click(int formNumber, bool pressed, bool ask) {
    if (!ValidForm(formNumber)) return;
    ribTools[formNumber].value = pressed;
    // Asks the form `closing` (kNoForm: the forms open beside) before the click closes it.
    // One that refuses keeps everything as it was, the clicked button included.
    auto refused = [&](int closing) {
        if (!ask || (closing == kNoForm ? QueryBeside() : QueryClosing(closing))) return false;
        ribTools[formNumber].value = !pressed;
        return true;
    };
    const int open = currentForm_;
    if (open == kNoForm) {
        if (pressed) {
            if (formNumber == kFormArchive && !(hooks_.kelmoraFound && hooks_.kelmoraFound())) {
                dialogs_.MsgBox("You cannot use the 'Archive' form until Kelmora is installed!",
                                MsgButtons::OK, MsgIcon::Information, "");
                Release(formNumber);
            } else {
                if (refused(kNoForm)) return;
                if (newFormOpen_) HideForm(kFormNew);
                if (meltFormOpen_) HideForm(kFormMelt);
                currentForm_ = formNumber;
                ShowForm(formNumber, false);
            }
        }
    } else if (open == kFormManage || open == kFormImport) {
        if (!pressed) {
            if (refused(open)) return;
            currentForm_ = kNoForm;
            HideForm(open);
        } else if (formNumber == open) {
            // already open
        } else if (formNumber == kFormNew) {
            // the open form stays; the new-material form is reached from its own commands
            ShowForm(kFormNew, true);
        } else {
            if (refused(open)) return;
            HideForm(open);
            currentForm_ = formNumber;
            ShowForm(formNumber, false);
        }
    } else {
        if (!pressed) {
            if (refused(open)) return;
            currentForm_ = kNoForm;
            HideForm(open);
        } else if (formNumber != open) {
            if (refused(open)) return;
            HideForm(open);
            currentForm_ = formNumber;
            ShowForm(formNumber, false);
        }
    }
    if (formNumber == kFormSetup) EnableTools();
}

void ManageForms::UnloadAll() {
    const int open = currentForm_;
    currentForm_ = kNoForm;
    if (newFormOpen_) HideForm(kFormNew);
    if (meltFormOpen_) HideForm(kFormMelt);
    if (open != kNoForm) HideForm(open);
}

bool ManageForms::OpenForEdit(int formNumber) {
    if (formNumber != kFormNew && formNumber != kFormMelt) return false;
    const bool beside = formNumber == kFormNew ? newFormOpen_ : meltFormOpen_;
    if (currentForm_ == formNumber || beside) return Query(formNumber);
    if (currentForm_ == kFormManage || currentForm_ == kFormImport) {
        if (formNumber == kFormNew) newFormOpen_ = true;
        if (formNumber == kFormMelt) meltFormOpen_ = true;
        ribTools[formNumber].value = true;
        return true;
    }
    RibbonClick(formNumber, true);
    return currentForm_ == formNumber;
}

void ManageForms::FormClosed(int formNumber) {
    if (!ValidForm(formNumber)) return;
    if (currentForm_ == formNumber) {
        Click(formNumber, false, false);
    } else {
        HideForm(formNumber);
    }
}

bool ManageForms::ShowForm(int formNumber, bool keep) {
    if (!ValidForm(formNumber)) return false;
    WorkingForm* f = Form(formNumber);
    if (formNumber == kFormSetup) {
        if (f) f->Display();
        return true;
    }
    if (f && !(formNumber == kFormNew && keep)) f->Display();
    if (hooks_.updateWallPaper) hooks_.updateWallPaper();
    return true;
}

void ManageForms::HideForm(int formNumber) {
    if (!ValidForm(formNumber)) return;
    if (formNumber == kFormManage || formNumber == kFormImport) {
        if (newFormOpen_) {
            Unload(kFormNew);
            newFormOpen_ = false;
            Release(kFormNew);
        }
        if (meltFormOpen_) {
            Unload(kFormMelt);
            meltFormOpen_ = false;
            Release(kFormMelt);
        }
    }
    Unload(formNumber);
    if (formNumber == kFormNew) newFormOpen_ = false;
    if (formNumber == kFormMelt) meltFormOpen_ = false;
    Release(formNumber);
}

}  // namespace ostrel
