// The edit commands on real entries and the application's clipboard.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "gui/platform/clipboard_edit.h"
#include "support/scripted_dialogs.h"

namespace ostrel::gui {
namespace {

class ClipboardEdit : public ::testing::Test {
  protected:
    ostrel::testing::ScriptedDialogs dialogs;
    QtClipboard clip;
    CSWindow w{clip, dialogs};
};

TEST_F(ClipboardEdit, CutAndPasteBetweenLineAndTextEdits) {
    QLineEdit line("nd=1.5168");
    line.setSelection(3, 6);
    WidgetEditTarget lineTarget(&line);
    ASSERT_TRUE(w.EditCut(lineTarget));
    EXPECT_EQ(line.text(), "nd=");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "1.5168");

    QPlainTextEdit text;
    WidgetEditTarget textTarget(&text);
    ASSERT_TRUE(w.EditPaste(textTarget));
    EXPECT_EQ(text.toPlainText(), "1.5168");
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(ClipboardEdit, PasteIntoWhatTakesNoTextShowsTheBox) {
    QLineEdit readOnly("fixed");
    readOnly.setReadOnly(true);
    QLabel label("caption");
    for (QWidget* target : {static_cast<QWidget*>(&readOnly), static_cast<QWidget*>(&label)}) {
        WidgetEditTarget t(target);
        EXPECT_FALSE(w.EditPaste(t));
    }
    EXPECT_EQ(readOnly.text(), "fixed");
    EXPECT_EQ(dialogs.boxes.size(), 2u) << "one box for each";
}

}  // namespace
}  // namespace ostrel::gui
