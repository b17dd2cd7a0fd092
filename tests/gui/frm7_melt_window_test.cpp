// The melt maker's window and its two boxes over their units, on a demo catalogue database
// in a fresh folder: a parent picked, pairs typed into the grid on screen, the fit pressed,
// and the widgets and the plot checked to follow the unit.
#include <gtest/gtest.h>

#include <QAbstractItemModel>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <functional>

#include "core/external/bas1_setup.h"
#include "core/external/demo_installation.h"
#include "core/material/glasses_list.h"
#include "core/melt/frm7melt.h"
#include "core/melt/glass_melt.h"
#include "core/melt/pop_melt_parent.h"
#include "core/melt/pop_melt_schott.h"
#include "core/optics/index_from_polynomial.h"
#include "core/platform/clock.h"
#include "core/platform/error_display.h"
#include "core/platform/file_io.h"
#include "core/platform/settings_store.h"
#include "core/platform/text.h"
#include "core/shell/new_msg.h"
#include "gui/melt/frm7_melt_plot.h"
#include "gui/melt/frm7_melt_window.h"
#include "gui/melt/pop_melt_parent_dialog.h"
#include "gui/melt/pop_melt_schott_dialog.h"
#include "gui/platform/binders.h"
#include "gui/platform/grid_view.h"
#include "support/scripted_dialogs.h"
#include "support/temp_dir.h"

namespace ostrel::gui {
namespace {

using ostrel::testing::ScriptedDialogs;
using ostrel::testing::TempDir;

std::vector<DemoGlass> DemoCatalogue() {
    std::string text, message;
    FileError error;
    ReadWholeFile(std::string(OSTREL_TEST_DATA) + "/../../data/demo/demo_glasses.csv", text, error);
    std::vector<DemoGlass> glasses;
    EXPECT_TRUE(ParseDemoCatalogue(text, glasses, message)) << message;
    return glasses;
}

class Frm7MeltWindowTest : public ::testing::Test {
  protected:
    Frm7MeltWindowTest()
        : clock(46349.5),
          errors(dir.path().string() + "/", dialogs, clock),
          list(dir.path().string() + "/", errors),
          newMsg(dialogs, settings),
          setup(settings, dialogs) {
        std::string message;
        EXPECT_TRUE(
            CreateDemoInstallation((dir / "demo").string(), DemoCatalogue(), settings, message))
            << message;
        setup.LoadPaths();
        sheet = std::make_unique<popMeltSchott>(
            dialogs, newMsg, popMeltSchott::Hooks{[this](popMeltSchott& s) { RunSheet(s); }});
        frm7Melt::Hooks hooks;
        hooks.show = [this](bool modal) { window->ShowForm(modal); };
        hooks.close = [this] {
            window->CloseForm();
            ++closes;
        };
        hooks.pickParent = [this](MaterialRecord& rec) {
            popMeltParent picker(dialogs, settings, setup.GetPathKelmora(),
                                 GenericMakerNames(setup.GetPathLumbrak()),
                                 {[this](popMeltParent& p) { RunPicker(p); }});
            return picker.PickParent(rec);
        };
        hooks.enterSheet = [this](MaterialRecord& rec) { return sheet->EnterSheet(rec); };
        unit = std::make_unique<frm7Melt>(list, dialogs, newMsg, setup.GetPathKelmora(), hooks);
        window = std::make_unique<frm7MeltWindow>(*unit, nullptr, &area);
    }

    // The modal loops, with the user's action queued to run inside them.
    void RunPicker(popMeltParent& p) {
        popMeltParentDialog box(p, nullptr, nullptr);
        QTimer::singleShot(0, &box, [this, &box, &p] {
            pickerAction(box, p);
            if (box.isVisible()) box.close();
        });
        pickerResult = box.exec();
    }
    void RunSheet(popMeltSchott& s) {
        popMeltSchottDialog box(s, nullptr, nullptr);
        QTimer::singleShot(0, &box, [this, &box] {
            sheetAction(box);
            if (box.isVisible()) box.close();
        });
        sheetResult = box.exec();
    }

    // In the picker: the maker chosen, then the glass's row clicked.
    static void ChooseGlass(popMeltParentDialog& box, popMeltParent& p, const std::string& maker,
                            const std::string& glass) {
        for (int i = 0; i < p.lstMakers.ListCount(); ++i) {
            if (UpperAscii(p.lstMakers.List(i)) == UpperAscii(maker)) {
                p.lstMakers.SetListIndex(i);
                p.lstMakersClick();
            }
        }
        QAbstractItemModel* m = box.grid()->model();
        for (int r = 0; r < m->rowCount(); ++r) {
            if (VbTrimCopy(FromQt(m->data(m->index(r, 1)).toString())) == glass) {
                emit box.grid()->clicked(m->index(r, 1));
                return;
            }
        }
        ADD_FAILURE() << "no row " << glass;
    }

    void PickBk7() {
        pickerAction = [](popMeltParentDialog& box, popMeltParent& p) {
            ChooseGlass(box, p, "Schott", "N-BK7");
            box.button("comOK")->click();
        };
        window->button("comParent")->click();
    }

    void Type(int col, int row, const QString& text) {
        QAbstractItemModel* m = window->grid()->model();
        ASSERT_TRUE(m->setData(m->index(row - 1, col - 1), text, Qt::EditRole))
            << col << "," << row << " " << text.toStdString();
    }
    QString Cell(int col, int row) {
        QAbstractItemModel* m = window->grid()->model();
        return m->data(m->index(row - 1, col - 1)).toString();
    }

    // Pairs of the parent's index plus a constant, at the first `count` of the d, F, C, g
    // and e lines.
    void TypePairs(int count, double offset) {
        const float waves[] = {656.273f, 587.562f, 486.133f, 435.834f, 546.074f};
        const auto& p = unit->ParentRecord().General;
        for (int i = 0; i < count; ++i) {
            int16_t ok = 0;
            const double n = IndexFromPolynomial(p.PolyCoef, waves[i], p.Polytype, ok) + offset;
            Type(2, i + 1, QString::number(waves[i], 'f', 4));
            Type(3, i + 1, QString::number(n, 'f', 7));
        }
    }

    TempDir dir;
    ScriptedDialogs dialogs;
    FixedClock clock;
    ErrorDisplayer errors;
    GlassesList list;
    MemorySettingsStore settings;
    CNewMsg newMsg;
    Bas1Setup setup;
    QMdiArea area;
    std::unique_ptr<popMeltSchott> sheet;
    std::unique_ptr<frm7Melt> unit;
    std::unique_ptr<frm7MeltWindow> window;
    std::function<void(popMeltParentDialog&, popMeltParent&)> pickerAction =
        [](popMeltParentDialog&, popMeltParent&) {};
    std::function<void(popMeltSchottDialog&)> sheetAction = [](popMeltSchottDialog&) {};
    int pickerResult = -1;
    int sheetResult = -1;
    int closes = 0;
};

TEST_F(Frm7MeltWindowTest, APickedParentAndFourPairsGiveAFittedMeltOnScreen) {
    EXPECT_TRUE(window->subWindow()->isHidden());
    unit->DisplayNew(false);
    EXPECT_FALSE(window->subWindow()->isHidden());
    EXPECT_EQ(window->subWindow()->windowTitle(), "Melt glass: new");
    // Without a parent the side panel and the grid commands are out of reach.
    EXPECT_TRUE(window->findChild<QWidget*>("pnlSide")->isHidden());
    EXPECT_FALSE(window->button("comClipPaste")->isEnabled());

    PickBk7();
    ASSERT_EQ(pickerResult, QDialog::Accepted);
    EXPECT_EQ(unit->ParentRecord().General.GlassName.Text(), "N-BK7");
    EXPECT_FALSE(window->findChild<QWidget*>("pnlSide")->isHidden());
    EXPECT_EQ(window->label("lblMeltName")->text(), "Schott  N-BK7  -  please enter a melt code!");

    QLineEdit* code = window->edit("txtMeltCode");
    EXPECT_EQ(code->text(), "Enter melt code!");
    code->setText("m1234");
    emit code->textEdited("m1234");
    emit code->editingFinished();
    EXPECT_EQ(window->label("lblMeltName")->text(), "Schott  N-BK7 *m1234");

    TypePairs(4, 0.0002);
    EXPECT_EQ(Cell(1, 2).trimmed(), "d");  // the letter in two characters
    EXPECT_TRUE(window->grid()->isColumnHidden(5));
    EXPECT_EQ(window->plot()->CurvePointCount(), 0);
    EXPECT_FALSE(window->button("comAdd")->isEnabled());

    window->button("comIndexFit")->click();
    ASSERT_EQ(unit->MeltRecord().IndexState.Ready, kTrue);
    EXPECT_EQ(window->label("lblError")->text(),
              "Average error [user-fitted] indices at above wavelengths: 0.000200");
    EXPECT_EQ(window->label("pnlStatus")->text(), "Index: Ready");
    EXPECT_EQ(window->label("lblGlassCode")->text(),
              QString::number(unit->MeltRecord().General.GlassCode));
    EXPECT_FALSE(window->grid()->isColumnHidden(5));
    for (int r = 1; r <= 4; ++r) EXPECT_EQ(Cell(6, r), ToQt(unit->ssRefInd.Text(6, r))) << r;
    EXPECT_EQ(Cell(6, 1), "0.000200");
    // The plot: the four measured differences and the fitted curve over the band.
    EXPECT_EQ(window->plot()->MeasuredPointCount(), 4);
    EXPECT_GT(window->plot()->CurvePointCount(), 100);
    EXPECT_FALSE(window->button("comIndexFit")->isEnabled());
    EXPECT_TRUE(window->button("comShowIndex")->isEnabled());
    EXPECT_TRUE(window->button("comAdd")->isEnabled());

    // An edit makes the index not ready again: the curve goes, the fit column hides.
    Type(3, 1, "1.5150000");
    EXPECT_EQ(window->label("pnlStatus")->text(), "Index: NOT Ready");
    EXPECT_EQ(window->plot()->CurvePointCount(), 0);
    EXPECT_TRUE(window->grid()->isColumnHidden(5));
}

TEST_F(Frm7MeltWindowTest, TooFewPairsLeaveTheFormUnfitted) {
    unit->DisplayNew(false);
    PickBk7();
    TypePairs(3, 0.0);
    window->button("comIndexFit")->click();
    ASSERT_FALSE(dialogs.boxes.empty());
    EXPECT_EQ(dialogs.boxes.back().text, frm7Melt::kTooFewPairsMsg);
    EXPECT_EQ(window->label("lblError")->text(), "");
    EXPECT_EQ(window->label("pnlStatus")->text(), "Index: NOT Ready");
    EXPECT_EQ(window->plot()->CurvePointCount(), 0);
    EXPECT_TRUE(window->grid()->isColumnHidden(5));
}

TEST_F(Frm7MeltWindowTest, TheParentPickerFollowsItsUnitAndCancelKeepsTheForm) {
    unit->DisplayNew(false);
    bool okBefore = true, gridShownBefore = true, okAfter = false;
    int rows = 0;
    pickerAction = [&](popMeltParentDialog& box, popMeltParent& p) {
        okBefore = box.button("comOK")->isEnabled();
        gridShownBefore = !box.grid()->isHidden();
        ChooseGlass(box, p, "Ohara", "S-BSL7");
        rows = box.grid()->model()->rowCount();
        okAfter = box.button("comOK")->isEnabled();
        box.button("comCancel")->click();
    };
    window->button("comParent")->click();
    EXPECT_EQ(pickerResult, QDialog::Rejected);
    EXPECT_FALSE(okBefore);
    EXPECT_FALSE(gridShownBefore);
    EXPECT_GT(rows, 0);
    EXPECT_TRUE(okAfter);
    // Nothing was taken.
    EXPECT_EQ(unit->MeltRecord().Melt.MeltParentName.Text(), "");
    EXPECT_TRUE(window->findChild<QWidget*>("pnlSide")->isHidden());
}

TEST_F(Frm7MeltWindowTest, TheSheetBoxReturnsSevenPairsToTheGrid) {
    unit->DisplayNew(false);
    PickBk7();
    bool okBefore = true, okAfter = false;
    QString nd;
    sheetAction = [&](popMeltSchottDialog& box) {
        okBefore = box.button("comOK")->isEnabled();
        box.picture()->click();  // the parent's figures as a start
        nd = box.field(1)->text();
        okAfter = box.button("comOK")->isEnabled();
        box.button("comOK")->click();
    };
    window->button("comMeltSchott")->click();
    EXPECT_EQ(sheetResult, QDialog::Accepted);
    EXPECT_FALSE(okBefore);
    EXPECT_TRUE(okAfter);
    EXPECT_EQ(nd.size(), 8);  // "1.516800"
    EXPECT_EQ(Cell(2, 1), "656.2730");
    EXPECT_EQ(Cell(1, 7).trimmed(), "g");
    EXPECT_EQ(Cell(5, 3), "0.000000");  // the parent's own figures: no difference at d
    EXPECT_EQ(Cell(2, 8), "");
}

TEST_F(Frm7MeltWindowTest, TheCloseBoxClosesTheFormLikeItsCloseButton) {
    unit->DisplayNew(false);
    window->subWindow()->close();
    EXPECT_TRUE(window->subWindow()->isHidden());
    EXPECT_FALSE(unit->IsOpen());
    EXPECT_EQ(closes, 1);
}

}  // namespace
}  // namespace ostrel::gui
