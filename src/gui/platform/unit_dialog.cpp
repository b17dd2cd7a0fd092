#include "gui/platform/unit_dialog.h"

#include <QPushButton>

#include "gui/shell/form_position.h"

namespace ostrel::gui {

UnitDialog::UnitDialog(UnitState state, CSApplication* app, const char* formName, QWidget* parent)
    : QDialog(parent), state_(std::move(state)), app_(app), formName_(formName) {
    setObjectName(formName_);
}

UnitDialog::~UnitDialog() {
    SaveFormPosition(this, app_, formName_);
}

QPushButton* UnitDialog::button(const char* name) const {
    return findChild<QPushButton*>(name);
}

void UnitDialog::reject() {
    // Escape and the close box cancel as the Cancel button does.
    if (state_.open()) state_.cancel();
    QDialog::reject();
}

void UnitDialog::FollowUnit() {
    if (state_.open()) return;
    if (state_.accepted()) {
        accept();
    } else {
        QDialog::reject();
    }
}

void UnitDialog::PlaceBox(QSize size) {
    resize(size);
    RestoreFormPosition(this, app_, formName_, false);
}

}  // namespace ostrel::gui
