#include "gui/platform/qt_dialogs.h"

#include <algorithm>
#include <memory>

#include <QApplication>
#include <QDesktopServices>
#include <QEvent>
#include <QFileDialog>
#include <QFontMetrics>
#include <QGridLayout>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QScreen>
#include <QScrollArea>
#include <QStringList>
#include <QUrl>

#include "core/platform/maker.h"
#include "gui/platform/binders.h"

namespace ostrel::gui {

namespace {

// A text this long (a list of every glass of a catalogue, say) would make the box taller than
// the screen and put its buttons out of reach.
bool IsLongMessage(const QString& text) {
    return text.size() > 1200 || text.count('\n') > 24;
}

// Shows the box's text in a scrolled pane of at most half the screen's height, beside the
// icon and above the buttons as before.
void ScrollMessageText(QMessageBox& box) {
    auto* label = box.findChild<QLabel*>("qt_msgbox_label");
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    if (!label || !grid) return;
    auto* full = new QLabel(box.text());
    full->setObjectName("longMessageText");
    full->setWordWrap(true);
    full->setTextFormat(Qt::PlainText);
    full->setTextInteractionFlags(Qt::TextSelectableByMouse);
    full->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* scroll = new QScrollArea(&box);
    scroll->setObjectName("longMessageScroll");
    scroll->setWidget(full);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const QScreen* screen = box.screen() ? box.screen() : QApplication::primaryScreen();
    const QRect room = screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
    scroll->setFixedSize(std::min(560, room.width() * 3 / 4), std::min(360, room.height() / 2));
    label->hide();
    // The layout hands back the label's old item, which is ours to delete.
    delete grid->replaceWidget(label, scroll);
}

}  // namespace

QString QtFileFilter(const std::string& filter) {
    const QStringList parts = ToQt(filter).split('|');
    QStringList out;
    for (int i = 0; i + 1 < parts.size(); i += 2) out << parts[i];
    if (out.isEmpty() && !parts.isEmpty()) out << parts[0];
    return out.join(";;");
}

std::unique_ptr<QMessageBox> MakeMessageBox(QWidget* owner, const std::string& text,
                                            MsgButtons buttons, MsgIcon icon,
                                            const std::string& title) {
    auto box = std::make_unique<QMessageBox>(owner);
    box->setWindowTitle(title.empty() ? QString(maker::kProgramTitle) : ToQt(title));
    box->setText(ToQt(text));
    switch (icon) {
        case MsgIcon::None:
            box->setIcon(QMessageBox::NoIcon);
            break;
        case MsgIcon::Information:
            box->setIcon(QMessageBox::Information);
            break;
        case MsgIcon::Question:
            box->setIcon(QMessageBox::Question);
            break;
        case MsgIcon::Exclamation:
            box->setIcon(QMessageBox::Warning);
            break;
        case MsgIcon::Critical:
            box->setIcon(QMessageBox::Critical);
            break;
    }
    switch (buttons) {
        case MsgButtons::OK:
            box->setStandardButtons(QMessageBox::Ok);
            break;
        case MsgButtons::OKCancel:
            box->setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
            break;
        case MsgButtons::YesNo:
            box->setStandardButtons(QMessageBox::Yes | QMessageBox::No);
            break;
        case MsgButtons::YesNoCancel:
            box->setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
            break;
    }
    if (IsLongMessage(box->text())) ScrollMessageText(*box);
    return box;
}

MsgAnswer QtDialogs::MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                            const std::string& title) {
    const std::unique_ptr<QMessageBox> box = MakeMessageBox(owner_, text, buttons, icon, title);
    // A box must not sit behind a busy pointer.
    const int busy = busyDepth_;
    for (int i = 0; i < busy; ++i) QApplication::restoreOverrideCursor();
    const int answer = box->exec();
    for (int i = 0; i < busy; ++i) QApplication::setOverrideCursor(Qt::WaitCursor);
    switch (answer) {
        case QMessageBox::Yes:
            return MsgAnswer::Yes;
        case QMessageBox::No:
            return MsgAnswer::No;
        case QMessageBox::Cancel:
            return MsgAnswer::Cancel;
        case QMessageBox::Ok:
            return MsgAnswer::OK;
        default:
            // Closed by the window's close box: the safest answer the box offers.
            return buttons == MsgButtons::OK      ? MsgAnswer::OK
                   : buttons == MsgButtons::YesNo ? MsgAnswer::No
                                                  : MsgAnswer::Cancel;
    }
}

std::optional<std::string> QtDialogs::InputBox(const std::string& prompt, const std::string& title,
                                               const std::string& proposal) {
    bool ok = false;
    const QString answer =
        QInputDialog::getText(owner_, title.empty() ? QString(maker::kProgramTitle) : ToQt(title),
                              ToQt(prompt), QLineEdit::Normal, ToQt(proposal), &ok);
    if (!ok) return std::nullopt;
    return FromQt(answer);
}

namespace {

// File dialogs open large enough to read long names and several columns: 100 characters by
// 30 lines, within the owner's screen.
QSize ReadableFileDialogSize(QWidget* owner) {
    const QFontMetrics fm(owner ? owner->font() : QApplication::font());
    QSize size(fm.averageCharWidth() * 100, fm.lineSpacing() * 30);
    if (QScreen* screen = owner ? owner->screen() : QGuiApplication::primaryScreen()) {
        size = size.boundedTo(screen->availableSize() * 0.9);
    }
    return size;
}

}  // namespace

std::optional<std::string> QtDialogs::FileOpen(const FileDialogSpec& spec) {
    std::optional<FileChoice> choice = FileOpenFiltered(spec);
    if (!choice) return std::nullopt;
    return std::move(choice->path);
}

std::optional<FileChoice> QtDialogs::FileOpenFiltered(const FileDialogSpec& spec) {
    const QStringList filters = QtFileFilter(spec.filter).split(";;");
    const int start = spec.filterIndex - 1;
    QFileDialog dlg(owner_, ToQt(spec.title), ToQt(spec.initialPath), QtFileFilter(spec.filter));
    dlg.setFileMode(QFileDialog::ExistingFile);
    if (start >= 0 && start < filters.size()) dlg.selectNameFilter(filters[start]);
    dlg.resize(ReadableFileDialogSize(owner_));
    if (dlg.exec() != QDialog::Accepted || dlg.selectedFiles().isEmpty()) return std::nullopt;
    const int chosen = static_cast<int>(filters.indexOf(dlg.selectedNameFilter()));
    return FileChoice{FromQt(dlg.selectedFiles().front()),
                      chosen >= 0 ? chosen + 1 : spec.filterIndex};
}

std::optional<std::string> QtDialogs::FileSave(const FileDialogSpec& spec) {
    QFileDialog dlg(owner_, ToQt(spec.title), ToQt(spec.initialPath), QtFileFilter(spec.filter));
    dlg.setAcceptMode(QFileDialog::AcceptSave);
    if (!spec.defaultExt.empty()) dlg.setDefaultSuffix(ToQt(spec.defaultExt));
    dlg.resize(ReadableFileDialogSize(owner_));
    if (dlg.exec() != QDialog::Accepted || dlg.selectedFiles().isEmpty()) return std::nullopt;
    return FromQt(dlg.selectedFiles().front());
}

namespace {

// Swallows the clicks, keys and wheel turns that reach the program while it is installed.
class InputSwallower : public QObject {
  public:
    bool eventFilter(QObject*, QEvent* event) override {
        switch (event->type()) {
            case QEvent::MouseButtonPress:
            case QEvent::MouseButtonRelease:
            case QEvent::MouseButtonDblClick:
            case QEvent::KeyPress:
            case QEvent::KeyRelease:
            case QEvent::Wheel:
                return true;
            default:
                return false;
        }
    }
};

}  // namespace

void QtDialogs::SetBusy(bool busy) {
    if (busy) {
        ++busyDepth_;
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else if (busyDepth_ > 0) {
        --busyDepth_;
        if (busyDepth_ == 0) DropHeldInput();
        QApplication::restoreOverrideCursor();
    }
}

void QtDialogs::DropHeldInput() {
    // Clicks and keys made while the pointer was busy were held back (see HelpNote); they
    // were meant for a window that was not listening and would act on what the work left,
    // a Cancel on a finished scan or a second click on the button that started it. They go.
    InputSwallower swallower;
    qApp->installEventFilter(&swallower);
    QApplication::processEvents();
    qApp->removeEventFilter(&swallower);
}

void QtDialogs::HelpNote(const std::string& text, bool bold) {
    if (helpLine_) helpLine_(text, bold);
    // Let the help line repaint and the window stay alive during long work. The user's
    // clicks and keys are held back: handled now, a second click on the button that started
    // the work would start it again inside the first run. They are dropped when the pointer
    // stops being busy.
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

bool QtDialogs::OpenUrl(const std::string& url) {
    return QDesktopServices::openUrl(QUrl(ToQt(url)));
}

}  // namespace ostrel::gui
