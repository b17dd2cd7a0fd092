#pragma once
// The update frame of the managing form: where the custom materials go (the lens design
// program's files, the catalogue program's database, or both), what happens to materials
// already there, the four commands and the note on synchronising, all bound to
// frm2ManageUpdate.
#include <QGroupBox>

#include "core/external/frm2_manage_update.h"

class QComboBox;
class QPushButton;

namespace ostrel::gui {

class frm2ManageUpdatePanel : public QGroupBox {
    Q_OBJECT
  public:
    frm2ManageUpdatePanel(frm2ManageUpdate& unit, QWidget* parent = nullptr);

    QPushButton* button(const char* name) const;
    QComboBox* combo(const char* name) const;

  private:
    frm2ManageUpdate& unit_;
    Subscription captionSub_;
};

}  // namespace ostrel::gui
