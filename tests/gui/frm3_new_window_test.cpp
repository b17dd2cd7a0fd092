// The material form's window and the wavelength picker over their units: rows typed into
// the grids on screen, buttons clicked, and the widgets and plots checked to follow.

#include "gui/materialform/frm3_new_window.h"
#include "core/optics/crown.h"
#include "gui/materialform/frm3_new_plots.h"
#include "gui/wave/pop_edit_param_wave_window.h"
#include "gui_fixture.h"

namespace ostrel::gui {
namespace {

class Frm3NewWindowTest : public ::testing::Test, protected UnitEnv {
  protected:
    void Type(const char* grid, int col, int row, const QString& text) {
        TypeInto(window.grid(grid), col, row, text);
    }

    void Choose(const char* name, int index) {
        QComboBox* combo = window.combo(name);
        combo->setCurrentIndex(index);
        emit combo->activated(index);
    }

    popEditParamWave picker = popEditParamWave(
        dialogs, newMsg, Folder(),
        {[this](popEditParamWave& p) { pickerResult = RunModal(p, pickerAction); }});
    std::function<void(popEditParamWaveWindow&)> pickerAction;
    int pickerResult = -1;
    int closes = 0;
    QMdiArea area;
    frm3New unit = frm3New(list, dialogs,
                           {[this](int16_t& count, float& wave, std::vector<float>& waves,
                                   int16_t tab) { return picker.Display(count, wave, waves, tab); },
                            [this] { ++closes; },
                            {}});
    frm3NewWindow window{unit, nullptr, &area};
};

TEST_F(Frm3NewWindowTest, OpensAsANewMaterialWithItsPanelsAndTabs) {
    unit.DisplayNew();
    // The panels show the sections' states.
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(Back(window.label(("pnlStatus" + std::to_string(i)).c_str())),
                  Rgb(i == frm3New::kTabDndt ? kStatusGreen : kStatusRed))
            << i;

    // Name and source typed into their boxes reach the record and the title.
    emit window.edit("txtGenGlass")->textEdited("BK7-M12");
    window.edit("txtGenSource")->setText("Lab");
    emit window.edit("txtGenSource")->textEdited("Lab");
    EXPECT_EQ(window.subWindow()->windowTitle(), "Editing data  BK7-M12::Lab");

    // The shared buttons follow the tab.
    EXPECT_FALSE(window.button("comClipPaste")->isEnabled());
    window.tabs()->setCurrentIndex(frm3New::kTabIndex);
    EXPECT_TRUE(window.button("comClipPaste")->isEnabled());

    // The dn/dt kind follows the list.
    window.tabs()->setCurrentIndex(frm3New::kTabDndt);
    auto* kinds = window.findChild<QListWidget*>("lstThermal");
    ASSERT_EQ(kinds->count(), 3);
    ClickItem(kinds, kinds->item(2));
    EXPECT_EQ(unit.Record().Thermal.dndttype, 2);

    // The close box closes through the unit, which asks about the unsaved name: Cancel keeps
    // the window, No closes it.
    dialogs.answers = {MsgAnswer::Cancel, MsgAnswer::No};
    window.subWindow()->close();
    EXPECT_EQ(std::pair(closes, window.subWindow()->isHidden()), std::pair(0, false));
    window.subWindow()->close();
    EXPECT_EQ(std::pair(closes, window.subWindow()->isHidden()), std::pair(1, true));
}

TEST_F(Frm3NewWindowTest, IndexFitShowsResultsAndPlotsUntilACellChanges) {
    unit.DisplayNew();
    window.tabs()->setCurrentIndex(frm3New::kTabIndex);
    Choose("cmbIndexPolyType", 1);
    ASSERT_EQ(unit.Record().General.Polytype, 2);
    for (int i = 0; i < 15; ++i) {  // fifteen points of the crown from 365 to 2325 nm
        const double nm = 365.0 + 140.0 * i;
        Type("ssRefInd", 1, i + 1, QString::number(nm, 'f', 4));
        Type("ssRefInd", 2, i + 1, QString::number(ostrel::testing::Nbk7(nm / 1000), 'f', 7));
    }
    window.button("comIndexFit")->click();
    EXPECT_EQ(Back(window.label("pnlStatus1")), Rgb(kStatusGreen));
    const IndexPlot* plot = window.indexPlot();
    EXPECT_EQ(std::tuple(plot->CurvePointCount() > 100, plot->MeasuredPointCount(),
                         plot->ResidualPointCount()),
              std::tuple(true, 15, 15));

    // A changed cell makes the fit stale: the plot goes back.
    Type("ssRefInd", 2, 3, "1.5010000");
    EXPECT_EQ(plot->CurvePointCount(), 0);
}

TEST_F(Frm3NewWindowTest, TransmissionRowsPlotAsInternalTransmission) {
    unit.DisplayNew();
    window.tabs()->setCurrentIndex(frm3New::kTabTrans);
    Choose("cmbTransType", 1);
    const double rows[][2] = {{2325.4, 79.3}, {1060, 99.9}, {400, 99.7}, {320, 83.0}};
    for (int r = 0; r < 4; ++r) {
        Type("ssTrans", 1, r + 1, QString::number(rows[r][0]));
        Type("ssTrans", 3, r + 1, QString::number(rows[r][1]));
    }
    window.button("comTransSort")->click();
    EXPECT_EQ(window.transPlot()->PointCount(), 4);

    // A thickness typed last is taken before a command that leaves the focus in its box: a
    // tool strip button (which never takes the focus) and closing the window.
    area.show();
    QApplication::setActiveWindow(&area);
    QLineEdit* width = window.edit("txtTransGlassWidth");
    const auto typeWidth = [width](const QString& text) {
        width->setFocus();
        width->selectAll();
        TypeText(width, text);
    };
    QToolButton tool(&area);
    tool.setFocusPolicy(Qt::TabFocus);
    float widthAtClick = 0;
    QObject::connect(&tool, &QToolButton::clicked,
                     [&] { widthAtClick = unit.Record().Measured.TransWidth; });
    typeWidth("25");
    ASSERT_TRUE(width->hasFocus());
    ClickWidget(&tool);
    EXPECT_EQ(widthAtClick, 25.0f);
    EXPECT_TRUE(width->hasFocus()) << "the focus goes back to the box";
    // So is a grid cell being typed in.
    GridView* grid = window.grid("ssTrans");
    grid->setCurrentIndex(grid->model()->index(4, 0));
    grid->edit(grid->currentIndex());
    auto* cell = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(cell, nullptr);
    TypeText(cell, "250");
    ClickWidget(&tool);
    EXPECT_EQ(unit.ssTrans.Text(1, 5), "250");
    EXPECT_TRUE(grid->hasFocus());
    // The close box runs the form's Close command, which asks about unsaved changes: the
    // width the unit holds when the Close event reaches the window, before the window
    // handles it, is the one typed.
    struct Probe : QObject {
        explicit Probe(frm3New& u) : unit(u) {}
        bool eventFilter(QObject*, QEvent* e) override {
            if (e->type() == QEvent::Close) width = unit.Record().Measured.TransWidth;
            return false;
        }
        frm3New& unit;
        float width = 0;
    } probe(unit);
    window.subWindow()->installEventFilter(&probe);
    typeWidth("30");
    window.subWindow()->close();
    window.subWindow()->removeEventFilter(&probe);
    EXPECT_EQ(probe.width, 30.0f);
}

TEST_F(Frm3NewWindowTest, ReviewLocksTheWidgets) {
    unit.DisplayReview(frm3New::FreshRecord());
    QAbstractItemModel* m = window.grid("ssRefInd")->model();
    EXPECT_EQ((std::vector<bool>{window.edit("txtGenGlass")->isEnabled(),
                                 window.button("comAdd")->isEnabled(),
                                 window.combo("cmbIndexPolyType")->isEnabled(),
                                 bool(m->flags(m->index(0, 0)) & Qt::ItemIsEditable)}),
              std::vector<bool>(4, false));
}

// A double click in the picker takes one wavelength; a cancelled pick changes nothing.
TEST_F(Frm3NewWindowTest, PickerFillsTheGridOrChangesNothing) {
    unit.DisplayNew();
    window.tabs()->setCurrentIndex(frm3New::kTabIndex);
    pickerAction = [](popEditParamWaveWindow& box) {
        box.tabs()->setCurrentIndex(1);
        GridView* lasers = box.grid(1);
        emit lasers->doubleClicked(lasers->model()->index(2, 0));  // Er:YLF 1730 nm
    };
    window.button("comWaveSelRefInd")->click();
    EXPECT_EQ(pickerResult, QDialog::Accepted);
    EXPECT_EQ(window.grid("ssRefInd")->model()->index(0, 0).data().toString(), "1730");

    pickerAction = [](popEditParamWaveWindow& box) { box.button("comCancel")->click(); };
    window.button("comWaveSelRefInd")->click();
    EXPECT_EQ(pickerResult, QDialog::Rejected);
    EXPECT_EQ(unit.ssRefInd.Text(1, 1), "1730");
}

}  // namespace
}  // namespace ostrel::gui
