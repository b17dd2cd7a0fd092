#include "gui/platform/form_widgets.h"

#include <QFrame>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>

#include "gui/platform/binders.h"
#include "gui/platform/grid_view.h"

namespace ostrel::gui {

QPushButton* MakeButton(QWidget* parent, const QString& name, Button& model) {
    auto* b = new QPushButton(parent);
    b->setObjectName(name);
    Bind(b, model);
    return b;
}

QLabel* MakeLabel(QWidget* parent, const QString& name, Label& model) {
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    Bind(label, model);
    return label;
}

QLabel* MakePlainLabel(QWidget* parent, const QString& name, Label& model, bool wordWrap) {
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    if (wordWrap) label->setWordWrap(true);
    Bind(label, model);
    return label;
}

QLabel* MakePanel(QWidget* parent, const QString& name, Panel& model) {
    auto* panel = new QLabel(parent);
    panel->setObjectName(name);
    panel->setFrameShape(QFrame::Panel);
    panel->setFrameShadow(QFrame::Sunken);
    panel->setAlignment(Qt::AlignCenter);
    panel->setMinimumHeight(panel->fontMetrics().height() + 8);
    Bind(panel, model);
    return panel;
}

GridView* MakeRowGrid(QWidget* parent, const QString& name, Grid& grid) {
    auto* view = new GridView(parent);
    view->setObjectName(name);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->horizontalHeader()->setStretchLastSection(true);
    view->Bind(grid);
    return view;
}

QHBoxLayout* MakeOkCancelRow(QWidget* parent, Button& ok, Button& cancel,
                             std::function<void()> okClick, std::function<void()> cancelClick) {
    auto* row = new QHBoxLayout();
    row->addStretch(1);
    QPushButton* okButton = MakeButton(parent, "comOK", ok);
    okButton->setDefault(true);
    QPushButton* cancelButton = MakeButton(parent, "comCancel", cancel);
    QObject::connect(okButton, &QPushButton::clicked, parent,
                     [click = std::move(okClick)] { click(); });
    QObject::connect(cancelButton, &QPushButton::clicked, parent,
                     [click = std::move(cancelClick)] { click(); });
    row->addWidget(okButton);
    row->addWidget(cancelButton);
    return row;
}

Subscription BindFrame(QGroupBox* frame, Panel& model) {
    Subscription sub = model.Observe([frame, &model] {
        frame->setTitle(ToQt(model.caption));
        frame->setEnabled(model.enabled);
        frame->setVisible(model.visible);
    });
    frame->setTitle(ToQt(model.caption));
    return sub;
}

}  // namespace ostrel::gui
