#include "gui/melt/pop_melt_schott_dialog.h"

#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include "gui/melt/melt_sheet_picture.h"
#include "gui/platform/binders.h"
#include "gui/platform/form_widgets.h"

namespace ostrel::gui {

namespace {

constexpr const char* kFormName = "popMeltSchott";
// The fields of each frame, in the order of the sheet.
constexpr int kFirstFrame[] = {1, 3, 4, 5, 7};
constexpr int kSecondFrame[] = {2, 6, 8, 9};

}  // namespace

popMeltSchottDialog::popMeltSchottDialog(popMeltSchott& unit, CSApplication* app, QWidget* parent)
    : UnitDialog({[&unit] { return unit.IsOpen(); }, [&unit] { return unit.Accepted(); },
                  [&unit] { unit.comCancelClick(); }},
                 app, kFormName, parent),
      unit_(unit) {
    setWindowTitle(ToQt(unit_.form.caption));
    auto* layout = new QHBoxLayout(this);

    auto* frames = new QVBoxLayout();
    auto makeFrame = [this, frames](const char* name, Panel& model, const int* fields, int n) {
        auto* frame = new QGroupBox(ToQt(model.caption), this);
        frame->setObjectName(name);
        BindPanel(frame, model);
        auto* grid = new QGridLayout(frame);
        grid->setColumnStretch(3, 1);
        for (int k = 0; k < n; ++k) {
            const int i = fields[k];
            const auto idx = static_cast<size_t>(i);
            auto* label = new QLabel(frame);
            label->setObjectName(QString("lblIndex%1").arg(i));
            Bind(label, unit_.lblIndex[idx]);
            auto* edit = new QLineEdit(frame);
            edit->setObjectName(QString("txtIndex%1").arg(i));
            edit->setFixedWidth(edit->fontMetrics().horizontalAdvance("0.00000000") + 16);
            edit->setAlignment(Qt::AlignRight);
            Bind(edit, unit_.txtIndex[idx]);
            label->setBuddy(edit);
            // Enter and leaving the field both end an entry.
            connect(edit, &QLineEdit::editingFinished, this,
                    [this, i] { unit_.txtIndexValidate(i); });
            edit->installEventFilter(this);
            fields_[idx] = edit;
            auto* cat = new QLabel(frame);
            cat->setObjectName(QString("lblIndexCat%1").arg(i));
            Bind(cat, unit_.lblIndexCat[idx]);
            cat->setMinimumWidth(cat->fontMetrics().horizontalAdvance("[1.234567]") + 8);
            grid->addWidget(label, k, 0);
            grid->addWidget(edit, k, 1);
            grid->addWidget(cat, k, 2);
        }
        frames->addWidget(frame);
    };
    makeFrame("fraDCFg", unit_.fraDCFg, kFirstFrame, 5);
    makeFrame("fraEC1F1", unit_.fraEC1F1, kSecondFrame, 4);
    frames->addStretch(1);
    layout->addLayout(frames, 1);

    auto* side = new QVBoxLayout();
    picture_ = new QToolButton(this);
    picture_->setObjectName("pctSchott");
    picture_->setIcon(QIcon(MeltSheetPicture(84, 108)));
    picture_->setIconSize(QSize(84, 108));
    picture_->setAutoRaise(true);
    picture_->setToolTip(ToQt(unit_.pctSchott.toolTip));
    connect(picture_, &QToolButton::clicked, this, [this] { unit_.pctSchottClick(); });
    side->addWidget(picture_, 0, Qt::AlignHCenter);
    side->addStretch(1);
    auto makeButton = [this, side](const char* name, Button& model,
                                   void (popMeltSchott::*click)()) {
        QPushButton* b = MakeButton(this, name, model);
        b->setAutoDefault(false);
        connect(b, &QPushButton::clicked, this, [this, click] {
            (unit_.*click)();
            FollowUnit();
        });
        side->addWidget(b);
        return b;
    };
    makeButton("comShowIndex", unit_.comShowIndex, &popMeltSchott::comShowIndexClick);
    makeButton("comOK", unit_.comOK, &popMeltSchott::comOKClick);
    makeButton("comCancel", unit_.comCancel, &popMeltSchott::comCancelClick);
    layout->addLayout(side);

    setMinimumSize(sizeHint().width() + 40, sizeHint().height());
    PlaceBox(minimumSize());
}

void popMeltSchottDialog::ShowModal(popMeltSchott& unit, CSApplication* app, QWidget* parent) {
    popMeltSchottDialog box(unit, app, parent);
    box.exec();
}

bool popMeltSchottDialog::eventFilter(QObject* watched, QEvent* event) {
    // Entering a field selects all of it.
    if (event->type() == QEvent::FocusIn) {
        if (auto* edit = qobject_cast<QLineEdit*>(watched))
            QTimer::singleShot(0, edit, [edit] { edit->selectAll(); });
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace ostrel::gui
