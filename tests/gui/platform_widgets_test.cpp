// The window toolkit's parts on real widgets. The grids' keyboard habits and number entry:
// Enter moves down, a decimal comma is read as a point, an entry that is no number stays
// marked, Ctrl+C / Ctrl+V exchange tab-separated text, Delete empties the selection; the edit
// commands on real entries. The Qt dialogs: input that reaches the program while it is busy is
// dropped, not run after the work; a message text longer than the screen scrolls with its
// buttons in reach. The plots' view: values under the pointer, wheel zoom and its reset, the
// context menu and the saved pictures.

#include <QCategoryAxis>
#include <QChart>
#include <QScatterSeries>
#include <QValueAxis>

#include "gui/platform/chart_parts.h"
#include "gui/platform/clipboard_edit.h"
#include "gui/platform/elided_label.h"
#include "gui/platform/mdi_form.h"
#include "gui/platform/plot_view.h"
#include "gui/platform/qt_dialogs.h"
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
    EXPECT_EQ(view.currentIndex().row(), 1) << "Enter moved down";
    Type(1, 2, "n/a");
    EXPECT_EQ(grid.Text(1, 2), "n/a") << "not erased";
    const QModelIndex bad = view.model()->index(1, 0);
    const std::string why = "\"n/a\" is not a number: it is ignored and counts as 0.";
    EXPECT_TRUE(bad.data(Qt::BackgroundRole).isValid());
    EXPECT_EQ(std::pair(FromQt(bad.data(Qt::ToolTipRole).toString()), notes),
              std::pair(why, std::vector<std::string>{why}));
    EXPECT_EQ(changes, (std::vector<std::pair<int, int>>{{1, 1}, {1, 2}}));
    // A box of text that is no number keeps its comma.
    TextBox source;
    QLineEdit box;
    Bind(&box, source);
    TypeText(&box, "Ohara, Inc");
    EXPECT_EQ(source.text.get(), "Ohara, Inc");
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
    EXPECT_EQ(grid.Text(2, 3), "4.5");

    grid.SetSelection({1, 2, 3, 3});
    PressKey(&view, Qt::Key_Delete);
    for (int r : {2, 3})
        EXPECT_EQ(grid.Text(1, r) + grid.Text(2, r) + grid.Text(3, r), "calc") << r;

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
    EXPECT_EQ(grid.Text(1, 4) + "|" + grid.Text(2, 4), "1.5|2");
}

TEST_F(GridKeyboard, EnterAndEscapePressTheFormsDefaultAndCancelButtonsUnlessAGridTakesEnter) {
    QMdiArea area;
    auto* form = new QWidget;
    auto* box = new QLineEdit(form);
    view.setParent(form);
    auto* save = new QPushButton(form);
    save->setObjectName("comAdd");
    save->setDefault(true);
    auto* close = new QPushButton(form);
    close->setObjectName("comOK");
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
    EXPECT_EQ(std::tuple(saves, closes, view.currentIndex().row()), std::tuple(1, 1, 1));
    // In a grid that is only read, Enter goes to the form.
    EXPECT_FALSE(view.model()->flags(view.model()->index(0, 2)) & Qt::ItemIsEditable);
    for (int c = 1; c <= 2; ++c) grid.SetColumnLocked(c, true);
    PressKey(&view, Qt::Key_Return);
    EXPECT_EQ(std::pair(saves, view.currentIndex().row()), std::pair(2, 1));
    save->setEnabled(false);
    PressKey(box, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(saves, 2) << "a disabled default button is not pressed";
    view.setParent(nullptr);
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
    QLineEdit line("nd=1.5168"), readOnly("fixed");
    line.setSelection(3, 6);
    readOnly.setReadOnly(true);
    QPlainTextEdit text;
    QLabel label("caption");
    WidgetEditTarget lineTarget(&line), textTarget(&text), fixed(&readOnly), caption(&label);
    ASSERT_TRUE(edit.EditCut(lineTarget));
    ASSERT_TRUE(edit.EditPaste(textTarget));
    // What takes no text gets the box, one for each, and keeps its text.
    EXPECT_FALSE(edit.EditPaste(fixed));
    EXPECT_FALSE(edit.EditPaste(caption));
    EXPECT_EQ(std::tuple(line.text(), text.toPlainText(), readOnly.text(), dialogs.boxes.size()),
              std::tuple("nd=", "1.5168", "fixed", 2u));
}

TEST(BusyInput, ClicksQueuedDuringBusyWorkAreDroppedWhenItEnds) {
    QtDialogs dialogs;
    QPushButton button("Scan");
    button.resize(80, 30);
    button.show();
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, [&clicks] { ++clicks; });

    // Nested busy work: the clicks wait for the outer end and go there.
    dialogs.SetBusy(true);
    dialogs.SetBusy(true);
    ClickWidget(&button, true);
    dialogs.SetBusy(false);
    EXPECT_EQ(QApplication::overrideCursor() != nullptr, true);
    dialogs.SetBusy(false);
    QCoreApplication::processEvents();
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);

    // Once the program listens again, the same click acts.
    ClickWidget(&button, true);
    QCoreApplication::processEvents();
    EXPECT_EQ(clicks, 1);
}

TEST(MessageBox, ALongTextScrollsWholeAndTheButtonsStayOnTheScreen) {
    std::string names;
    for (int i = 0; i < 400; ++i)
        names += (i ? ", " : "") + ("N-GLASS" + std::to_string(i) + "/SCHOTT");
    const std::string question = "Do you want to overwrite the existing data?";
    for (const std::string& text : {names + "\n\n" + question, question}) {
        const bool isLong = text != question;
        QtDialogs dialogs;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box) return;
            auto* label = box->findChild<QLabel*>("longMessageText");
            EXPECT_EQ(box->findChild<QScrollArea*>("longMessageScroll") != nullptr, isLong);
            if (isLong) {
                EXPECT_EQ(FromQt(label ? label->text() : QString()), text);
                EXPECT_LE(box->frameGeometry().height(),
                          box->screen()->availableGeometry().height());
            }
            box->button(QMessageBox::No)->click();
        });
        EXPECT_EQ(dialogs.MsgBox(text, MsgButtons::YesNo, MsgIcon::Question, {}), MsgAnswer::No);
    }
}

TEST(PlotView, ToolTipZoomMenuAndPictures) {
    auto* chart = new QChart();
    QValueAxis* x = MakeAxis(chart, Qt::AlignBottom, "Wavelength [nm]", "%.0f");
    QValueAxis* y = MakeAxis(chart, Qt::AlignLeft, "dn [1e-6]", "%.1f");
    auto* points = new QScatterSeries(chart);
    points->append(587.56, 1.5);
    Attach(chart, points, x, y);
    x->setRange(400, 700);
    y->setRange(-2, 2);
    PlotView view(chart);
    view.resize(400, 300);
    view.grab();  // lays the chart out

    const QPoint at = view.mapFromScene(chart->mapToScene(chart->mapToPosition({587.56, 1.5})));
    EXPECT_EQ(view.ValuesAt(at + QPoint(2, 1)), "Wavelength [nm]: 587.56\ndn [1e-6]: 1.5");
    EXPECT_EQ(view.ValuesAt(QPoint(1, 1)), "") << "outside the plot area";

    view.ZoomAt(at, 2.0);
    EXPECT_NEAR(x->max() - x->min(), 150, 1);
    EXPECT_GT(x->max(), 587.56) << "the point under the pointer stays in view";
    QAction* reset = view.MakeContextMenu()->actions().value(0);
    ASSERT_TRUE(reset && reset->isEnabled());
    reset->trigger();
    EXPECT_DOUBLE_EQ(x->min(), 400);
    EXPECT_DOUBLE_EQ(x->max(), 700);

    ostrel::testing::TempDir dir;
    ASSERT_TRUE(view.SaveImage(QString::fromStdString((dir / "plot.png").string())));
    EXPECT_EQ(ostrel::testing::ReadFileBytes(dir / "plot.png").substr(1, 3), "PNG");
#ifdef OSTREL_HAVE_SVG
    ASSERT_TRUE(view.SaveImage(QString::fromStdString((dir / "plot.svg").string())));
    EXPECT_NE(ostrel::testing::ReadFileBytes(dir / "plot.svg").find("<svg"), std::string::npos);
#endif
}

TEST(ChartParts, StepAxisLabelsItsRangeAgainWhenItChanges) {
    QChart chart;
    QCategoryAxis* axis = MakeStepAxis(&chart, Qt::AlignLeft, "dn [1e-6]");
    axis->setRange(-0.7, 0.9);
    SetAxisStep(axis, 0.2);
    EXPECT_EQ(axis->categoriesLabels(),
              QStringList({"-0.6", "-0.4", "-0.2", "0.0", "0.2", "0.4", "0.6", "0.8"}));
    axis->setRange(-0.25, 0.45);  // as a zoom sets it
    EXPECT_EQ(axis->categoriesLabels(), QStringList({"-0.2", "0.0", "0.2", "0.4"}));
}

}  // namespace
}  // namespace ostrel::gui
