#pragma once
// A label that keeps to one line: a text too long for it ends in "…" and shows whole in the
// tool tip. text() is the whole text.
#include <QLabel>

namespace ostrel::gui {

class ElidedLabel : public QLabel {
    Q_OBJECT
  public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    // The line as drawn at the present width.
    QString ShownText() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* e) override;
    bool event(QEvent* e) override;
};

}  // namespace ostrel::gui
