// The grids' keyboard habits and number entry on a real view: Enter moves down, a decimal
// comma is read as a point, an entry that is no number stays marked, Ctrl+C / Ctrl+V exchange
// tab-separated text, Delete empties the selection; and the edit commands on real entries.

#include "gui/platform/clipboard_edit.h"
#include "gui/platform/elided_label.h"
#include "gui/platform/mdi_form.h"
#include "gui_fixture.h"

namespace ostrel::gui {
namespace {

class GridKeyboard : public ::testing::Test {
  protected:
    void SetUp() override {
        grid.SetColumnFloat(1, 4);
        grid.SetColumnFloat(2, 4, 0.0, 10.0);
        grid.SetColumnLocked(3, true);
        for (int r = 1; r <= 4; ++r) grid.SetText(3, r, "calc");
        view.Bind(grid, [this](int col, int row) { changes.push_back({col, row}); });
        view.resize(400, 200);
        GridView::SetNoteSink([this](const std::string& t) { notes.push_back(t); });
    }
    void TearDown() override { GridView::SetNoteSink({}); }

    // Types `text` into the cell's editor and presses Enter.
    void Type(int col, int row, const QString& text) {
        const QModelIndex idx = view.model()->index(row - 1, col - 1);
        view.setCurrentIndex(idx);
        view.edit(idx);
        auto* editor = view.viewport()->findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        editor->setText(text);
        PressKey(editor, Qt::Key_Return);
        QCoreApplication::processEvents();  // the editor hands its entry over queued
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    ScriptedDialogs dialogs;
    QtClipboard clip;
    CSWindow edit{clip, dialogs};
    Grid grid{3, 4};
    GridView view;
    std::vector<std::pair<int, int>> changes;
    std::vector<std::string> notes;
};

TEST_F(GridKeyboard, EnterTakesTheEntryAndMovesDownCommaAndBadTextIncluded) {
    Type(1, 1, "1,51683");
    EXPECT_EQ(grid.Text(1, 1), "1.51683");
    EXPECT_EQ(view.model()->index(0, 0).data().toString(), "1.51683") << "as entered";
    EXPECT_EQ(view.currentIndex().row(), 1) << "Enter moved down";
    Type(1, 2, "n/a");
    EXPECT_EQ(grid.Text(1, 2), "n/a") << "not erased";
    EXPECT_EQ(grid.Value(1, 2), 0.0);
    const QModelIndex bad = view.model()->index(1, 0);
    EXPECT_TRUE(bad.data(Qt::BackgroundRole).isValid());
    EXPECT_EQ(bad.data(Qt::ToolTipRole).toString(),
              "\"n/a\" is not a number: it is ignored and counts as 0.");
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_EQ(notes[0], FromQt(bad.data(Qt::ToolTipRole).toString()));
    Type(2, 3, "12");
    EXPECT_EQ(grid.Text(2, 3), "") << "a number beyond the limit is still refused";
    EXPECT_EQ(changes, (std::vector<std::pair<int, int>>{{1, 1}, {1, 2}}));
}

TEST_F(GridKeyboard, CopyPasteAndDeleteExchangeTabSeparatedText) {
    grid.SetText(1, 1, "1.5");
    grid.SetText(2, 1, "2");
    grid.SetSelection({1, 1, 3, 1});
    EXPECT_TRUE(view.selectionModel()->isSelected(view.model()->index(0, 2)));
    PressKey(&view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "1.5\t2\tcalc");

    QGuiApplication::clipboard()->setText("1,25\t3\r\n656,27\t4,5\r\n");
    grid.ClearSelection();
    grid.SetActiveCell(1, 2);
    PressKey(&view, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(grid.Text(1, 2), "1.25");
    EXPECT_EQ(grid.Text(2, 3), "4.5");
    EXPECT_EQ(grid.Text(3, 2), "calc");

    grid.SetSelection({1, 2, 3, 3});
    PressKey(&view, Qt::Key_Delete);
    for (int r : {2, 3}) {
        EXPECT_EQ(grid.Text(1, r), "");
        EXPECT_EQ(grid.Text(2, r), "");
        EXPECT_EQ(grid.Text(3, r), "calc") << "a locked column keeps its text";
    }

    // The Edit menu's commands reach the same grid.
    WidgetEditTarget target(view.viewport());
    grid.SetSelection({1, 1, 2, 1});
    ASSERT_TRUE(edit.EditCut(target));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "1.5\t2");
    EXPECT_EQ(grid.Text(1, 1), "");
    // As the Edit menu calls it, on the grid that has the focus.
    view.show();
    view.activateWindow();
    view.setFocus();
    QCoreApplication::processEvents();
    ASSERT_EQ(QApplication::focusWidget(), &view);
    grid.ClearSelection();
    grid.SetActiveCell(1, 4);
    RunEditCommand(EditCommand::Paste, dialogs);
    EXPECT_EQ(grid.Text(1, 4), "1.5");
    EXPECT_EQ(grid.Text(2, 4), "2");
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(GridKeyboard, EnterAndEscapePressTheFormsDefaultAndCancelButtonsUnlessAGridTakesEnter) {
    QMdiArea area;
    auto* form = new QWidget;
    auto* layout = new QVBoxLayout(form);
    auto* box = new QLineEdit(form);
    view.setParent(form);
    auto* save = new QPushButton("&Save", form);
    save->setObjectName("comAdd");
    save->setDefault(true);
    auto* close = new QPushButton("&Close", form);
    close->setObjectName("comOK");
    for (QWidget* w : {static_cast<QWidget*>(box), static_cast<QWidget*>(&view),
                       static_cast<QWidget*>(save), static_cast<QWidget*>(close)})
        layout->addWidget(w);
    int saves = 0, closes = 0;
    QObject::connect(save, &QPushButton::clicked, [&] { ++saves; });
    QObject::connect(close, &QPushButton::clicked, [&] { ++closes; });
    AddFormSubWindow(
        &area, form, {}, "form", {400, 300}, [] { return true; }, [] {})
        ->show();
    area.show();

    PressKey(box, Qt::Key_Return);
    PressKey(box, Qt::Key_Escape);
    view.setCurrentIndex(view.model()->index(0, 0));
    PressKey(&view, Qt::Key_Return);  // moves down the grid instead
    EXPECT_EQ(saves, 1);
    EXPECT_EQ(closes, 1);
    EXPECT_EQ(view.currentIndex().row(), 1);
    // In a grid that is only read, Enter goes to the form.
    EXPECT_FALSE(view.model()->flags(view.model()->index(0, 2)) & Qt::ItemIsEditable);
    for (int c = 1; c <= 2; ++c) grid.SetColumnLocked(c, true);
    PressKey(&view, Qt::Key_Return);
    EXPECT_EQ(saves, 2);
    EXPECT_EQ(view.currentIndex().row(), 1);
    save->setEnabled(false);
    PressKey(box, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(saves, 2) << "a disabled default button is not pressed";
    view.setParent(nullptr);
}

TEST(NumberBox, DecimalCommaIsTakenWithAPoint) {
    TextBox model;
    QLineEdit edit;
    Bind(&edit, model);
    TypeText(&edit, "1,5168");
    EXPECT_EQ(model.text.get(), "1.5168");
    EXPECT_EQ(edit.text(), "1.5168");
    edit.clear();
    TypeText(&edit, "Ohara, Inc");
    EXPECT_EQ(model.text.get(), "Ohara, Inc");
}

TEST(HelpLine, KeepsOneLineWithTheWholeTextInText) {
    ElidedLabel line;
    line.resize(120, 30);
    const QString note = "N-BK7 added: 12 materials in the list, the siblings not yet updated";
    line.setText(note);
    EXPECT_EQ(line.text(), note);
    EXPECT_TRUE(line.ShownText().endsWith(QChar(0x2026)));
    EXPECT_LE(line.fontMetrics().horizontalAdvance(line.ShownText()), 120);
    EXPECT_EQ(line.sizeHint().height(), line.minimumSizeHint().height());
    line.resize(2000, 30);
    EXPECT_EQ(line.ShownText(), note);
}

TEST_F(GridKeyboard, EditCommandsCutAndPasteBetweenLineAndTextEdits) {
    QLineEdit line("nd=1.5168");
    line.setSelection(3, 6);
    WidgetEditTarget lineTarget(&line);
    ASSERT_TRUE(edit.EditCut(lineTarget));
    EXPECT_EQ(line.text(), "nd=");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "1.5168");

    QPlainTextEdit text;
    WidgetEditTarget textTarget(&text);
    ASSERT_TRUE(edit.EditPaste(textTarget));
    EXPECT_EQ(text.toPlainText(), "1.5168");
    EXPECT_TRUE(dialogs.boxes.empty());

    // What takes no text gets the box, one for each, and keeps its text.
    QLineEdit readOnly("fixed");
    readOnly.setReadOnly(true);
    QLabel label("caption");
    for (QWidget* target : {static_cast<QWidget*>(&readOnly), static_cast<QWidget*>(&label)}) {
        WidgetEditTarget t(target);
        EXPECT_FALSE(edit.EditPaste(t));
    }
    EXPECT_EQ(readOnly.text(), "fixed");
    EXPECT_EQ(dialogs.boxes.size(), 2u);
}

}  // namespace
}  // namespace ostrel::gui
