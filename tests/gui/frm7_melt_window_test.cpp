// The melt maker's window and its two boxes over their units, on a demo catalogue database
// in a fresh folder: a parent picked, pairs typed into the grid on screen, the fit pressed,
// and the widgets and the plot checked to follow the unit.

#include "gui/melt/frm7_melt_window.h"
#include "core/external/external_fixture.h"
#include "core/melt/glass_melt.h"
#include "core/optics/index_from_polynomial.h"
#include "core/platform/text.h"
#include "gui/melt/frm7_melt_plot.h"
#include "gui/melt/pop_melt_parent_dialog.h"
#include "gui/melt/pop_melt_schott_dialog.h"
#include "gui_fixture.h"

namespace ostrel::gui {
namespace {

class Frm7MeltWindowTest : public ::testing::Test, protected UnitEnv {
  protected:
    Frm7MeltWindowTest() : UnitEnv(46349.5) {}
    void SetUp() override {
        std::string message;
        ASSERT_TRUE(CreateDemoInstallation((dir / "demo").string(), ostrel::testing::DemoGlasses(),
                                           settings, message))
            << message;
        setup.LoadPaths();
        frm7Melt::Hooks hooks;
        hooks.show = [this](bool modal) { window->ShowForm(modal); };
        hooks.close = [this] {
            window->CloseForm();
            ++closes;
        };
        hooks.pickParent = [this](MaterialRecord& rec) {
            popMeltParent parentPicker(
                dialogs, settings, setup.GetPathKelmora(),
                GenericMakerNames(setup.GetPathLumbrak()),
                {[this](popMeltParent& p) { pickerResult = RunModal(p, pickerAction); }});
            return parentPicker.PickParent(rec);
        };
        hooks.enterSheet = [this](MaterialRecord& rec) { return sheet.EnterSheet(rec); };
        unit = std::make_unique<frm7Melt>(list, dialogs, newMsg, setup.GetPathKelmora(), hooks);
        window = std::make_unique<frm7MeltWindow>(*unit, nullptr, &area);
    }

    // In the picker: the maker's row clicked in the list, then the glass's row reached in the
    // grid with the keys from the top.
    void ChooseGlass(popMeltParentDialog& box, const std::string& maker, const QString& glass) {
        auto* makers = box.findChild<QListWidget*>("lstMakers");
        ASSERT_NE(makers, nullptr);
        const auto found = makers->findItems(ToQt(maker), Qt::MatchFixedString);
        ASSERT_EQ(found.size(), 1) << maker;
        ClickItem(makers, found[0]);
        QCoreApplication::processEvents();  // the picker answers the list after its signal
        const int row = RowOf(box.grid()->model(), glass);
        ASSERT_GE(row, 0) << glass.toStdString();
        KeyToRow(box.grid(), row);
    }

    void OpenWithBk7() {
        unit->DisplayNew(false);
        pickerAction = [this](popMeltParentDialog& box) {
            ChooseGlass(box, "Schott", "N-BK7");
            box.button("comOK")->click();
        };
        window->button("comParent")->click();
    }

    void Type(int col, int row, const QString& text) { TypeInto(window->grid(), col, row, text); }
    QString Cell(int col, int row) {
        QAbstractItemModel* m = window->grid()->model();
        return m->data(m->index(row - 1, col - 1)).toString();
    }

    Bas1Setup setup{settings, dialogs};
    QMdiArea area;
    popMeltSchott sheet = popMeltSchott(
        dialogs, newMsg, {[this](popMeltSchott& s) { sheetResult = RunModal(s, sheetAction); }});
    std::unique_ptr<frm7Melt> unit;
    std::unique_ptr<frm7MeltWindow> window;
    std::function<void(popMeltParentDialog&)> pickerAction;
    int closes = 0;
    std::function<void(popMeltSchottDialog&)> sheetAction;
    int pickerResult = -1;
    int sheetResult = -1;
};

TEST_F(Frm7MeltWindowTest, APickedParentAndFourPairsGiveAFittedMeltOnScreen) {
    unit->DisplayNew(false);
    EXPECT_EQ(window->subWindow()->windowTitle(), "Melt glass: new");

    OpenWithBk7();
    ASSERT_EQ(pickerResult, QDialog::Accepted);
    EXPECT_FALSE(window->findChild<QWidget*>("pnlSide")->isHidden());

    QLineEdit* code = window->edit("txtMeltCode");
    code->setText("m1234");
    emit code->textEdited("m1234");
    emit code->editingFinished();
    EXPECT_EQ(window->label("lblMeltName")->text(), "Schott  N-BK7 *m1234");

    // Pairs of the parent's index plus 0.0002 at the d, F, C and g lines.
    const auto& p = unit->ParentRecord().General;
    int row = 0;
    for (float wave : {656.273f, 587.562f, 486.133f, 435.834f}) {
        int16_t ok = 0;
        const double n = IndexFromPolynomial(p.PolyCoef, wave, p.Polytype, ok) + 0.0002;
        Type(2, ++row, QString::number(wave, 'f', 4));
        Type(3, row, QString::number(n, 'f', 7));
    }
    window->button("comIndexFit")->click();
    ASSERT_EQ(unit->MeltRecord().IndexState.Ready, kTrue);
    // The plot: the four measured differences and the fitted curve over the band.
    EXPECT_EQ(
        std::pair(window->plot()->MeasuredPointCount(), window->plot()->CurvePointCount() > 100),
        std::pair(4, true));
    ASSERT_EQ(unit->ExtrapolatedRanges().size(), 2u);
    EXPECT_EQ(window->plot()->ShadedRanges(), unit->ExtrapolatedRanges());
    EXPECT_TRUE(window->button("comAdd")->isEnabled());

    // An edit makes the index not ready again: the curve and the shading go.
    Type(3, 1, "1.5150000");
    EXPECT_EQ(std::pair(window->plot()->CurvePointCount(), window->plot()->ShadedRanges().size()),
              std::pair(0, size_t{0}));

    // The close box asks as the Close button does; Cancel keeps the form on screen.
    dialogs.answers = {MsgAnswer::Cancel};
    window->subWindow()->close();
    EXPECT_EQ(dialogs.boxes.back().text, "Save changes to N-BK7 *m1234?");
    EXPECT_TRUE(unit->IsOpen() && !window->subWindow()->isHidden());
}

TEST_F(Frm7MeltWindowTest, ACancelledPickTakesNothingAndTheCloseBoxClosesTheForm) {
    unit->DisplayNew(false);
    pickerAction = [this](popMeltParentDialog& box) {
        EXPECT_FALSE(box.button("comOK")->isEnabled());
        ChooseGlass(box, "Ohara", "S-BSL7");
        EXPECT_TRUE(box.button("comOK")->isEnabled());
        box.button("comCancel")->click();
    };
    window->button("comParent")->click();
    EXPECT_EQ(pickerResult, QDialog::Rejected);
    EXPECT_EQ(unit->MeltRecord().Melt.MeltParentName.Text(), "");
    EXPECT_TRUE(window->findChild<QWidget*>("pnlSide")->isHidden());

    window->subWindow()->close();
    EXPECT_EQ(std::tuple(window->subWindow()->isHidden(), unit->IsOpen(), closes),
              std::tuple(true, false, 1));
}

// A band clicked or reached with the arrow keys fills the wavelengths; entering the list by
// Tab picks nothing.
TEST_F(Frm7MeltWindowTest, WavebandsFollowTheListByMouseAndKeyboardAndTheSheetFillsTheGrid) {
    OpenWithBk7();
    QListWidget* bands = window->list("lstWaveBand");
    ASSERT_EQ(bands->count(), 3);
    Type(2, 1, "700.0000");
    QFocusEvent tabIn(QEvent::FocusIn, Qt::TabFocusReason);
    QCoreApplication::sendEvent(bands, &tabIn);
    EXPECT_EQ(Cell(2, 1), "700.0000");

    ClickItem(bands, bands->item(2));
    EXPECT_EQ(Cell(2, 7), "435.8340");  // Schott: seven lines

    PressKey(bands, Qt::Key_Up);
    EXPECT_EQ(Cell(2, 10), "404.6560");  // Ohara advanced: ten lines

    // The sheet box returns seven pairs to the grid.
    sheetAction = [](popMeltSchottDialog& box) {
        EXPECT_FALSE(box.button("comOK")->isEnabled());
        box.picture()->click();  // the parent's figures as a start
        EXPECT_EQ(box.field(1)->text(), "1.516800");
        EXPECT_TRUE(box.button("comOK")->isEnabled());
        box.button("comOK")->click();
    };
    window->button("comMeltSchott")->click();
    EXPECT_EQ(sheetResult, QDialog::Accepted);
    EXPECT_EQ(Cell(2, 1), "656.2730");
}

}  // namespace
}  // namespace ostrel::gui
