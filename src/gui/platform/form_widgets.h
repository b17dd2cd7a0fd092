#pragma once
// The small widget factories the forms share: each makes a widget, names it after its
// control and binds it to the control's model.
#include <QString>
#include <functional>

#include "core/platform/controls.h"
#include "core/platform/grid.h"

class QGroupBox;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QWidget;

namespace ostrel::gui {

class GridView;

QPushButton* MakeButton(QWidget* parent, const QString& name, Button& model);
QLabel* MakeLabel(QWidget* parent, const QString& name, Label& model);
// A label whose caption is plain text (no rich text), optionally wrapped.
QLabel* MakePlainLabel(QWidget* parent, const QString& name, Label& model, bool wordWrap = false);
// A sunken, centred status panel at least one line of text high.
QLabel* MakePanel(QWidget* parent, const QString& name, Panel& model);

// A grid the user reads but does not edit, chosen by whole rows, its last column stretched.
GridView* MakeRowGrid(QWidget* parent, const QString& name, Grid& grid);

// A dialog's right-aligned row of its default OK button and its Cancel button ("comOK" and
// "comCancel"); a click runs `okClick` or `cancelClick`.
QHBoxLayout* MakeOkCancelRow(QWidget* parent, Button& ok, Button& cancel,
                             std::function<void()> okClick, std::function<void()> cancelClick);

// The frame takes the model's caption now; later changes bring caption, enabled and visible.
[[nodiscard]] Subscription BindFrame(QGroupBox* frame, Panel& model);

}  // namespace ostrel::gui
