// Every box of the windows that takes a number, given text that is no number: the text stays,
// the box is marked in red once the entry ends, and its tool tip and the help line say what
// the entry counts as instead. A number with a decimal comma is taken with a point, unmarked.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QMdiArea>
#include <memory>

#include "core/glassmap/frm_compare.h"
#include "core/glassmap/frm_glass_map.h"
#include "core/materialform/frm3new.h"
#include "core/melt/pop_melt_schott.h"
#include "gui/glassmap/frm_compare_window.h"
#include "gui/glassmap/frm_glass_map_window.h"
#include "gui/materialform/frm3_new_window.h"
#include "gui/melt/pop_melt_schott_dialog.h"
#include "gui/platform/binders.h"
#include "gui_fixture.h"

namespace ostrel::gui {
namespace {

class NumberBoxes : public ::testing::Test, protected UnitEnv {
  protected:
    void SetUp() override {
        SetEntryNoteSink([this](const std::string& text) { notes.push_back(text); });
        material.DisplayNew();
        material.lstThermal.SetListIndex(2);
        material.lstThermalClick();
    }
    void TearDown() override { SetEntryNoteSink({}); }

    QLineEdit* Box(const QString& name) const {
        for (QWidget* w : windows) {
            if (auto* box = w->findChild<QLineEdit*>(name)) return box;
        }
        return nullptr;
    }

    std::vector<std::string> notes;
    QMdiArea area;
    frm3New material{list, dialogs, {}};
    frm3NewWindow materialWindow{material, nullptr, &area};
    popMeltSchott sheet{dialogs, newMsg, {}};
    popMeltSchottDialog sheetBox{sheet, nullptr, nullptr};
    frmGlassMap map{settings};
    frmGlassMapWindow mapWindow{map, {}};
    frmCompare compare{std::vector<CompareItem>{}};
    frmCompareWindow compareWindow{compare};
    std::vector<QWidget*> windows{&materialWindow, &sheetBox, &mapWindow, &compareWindow};
};

TEST_F(NumberBoxes, TextThatIsNoNumberIsKeptMarkedAndExplained) {
    struct Case {
        const char* box;
        const char* countsAs;  // the figure the form goes on with
    };
    const Case cases[] = {
        {"txtTransGlassWidth", "10.0"},
        {"txtTherm0", "0.000e+00"},
        {"txtTherm6", "0.000e+00"},
        {"txtIndex1", "0"},
        {"txtIndex9", "0"},
        {"txtCount", "5"},
        {"txtNdScale", "100"},
        {"txtWidth", "10"},
    };
    const QColor red(kIgnoredEntryBack.r, kIgnoredEntryBack.g, kIgnoredEntryBack.b);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.box);
        QLineEdit* box = Box(c.box);
        ASSERT_NE(box, nullptr);
        const QString plainTip = box->toolTip();
        notes.clear();

        box->setText("1x");
        emit box->textEdited("1x");
        EXPECT_NE(box->palette().color(QPalette::Base), red) << "not while typing";
        emit box->editingFinished();
        const std::string why =
            "\"1x\" is not a number: it is ignored and counts as " + std::string(c.countsAs) + ".";
        EXPECT_EQ(box->text(), "1x");
        EXPECT_EQ(box->palette().color(QPalette::Base), red);
        EXPECT_EQ(FromQt(box->toolTip()), why);
        EXPECT_EQ(notes, std::vector<std::string>{why});

        box->setText("1,5");
        emit box->textEdited("1,5");
        emit box->editingFinished();
        EXPECT_TRUE(box->text().startsWith("1.5")) << box->text().toStdString();
        EXPECT_NE(box->palette().color(QPalette::Base), red);
        EXPECT_EQ(box->toolTip(), plainTip);
        EXPECT_EQ(notes.size(), 1u);
    }
}

}  // namespace
}  // namespace ostrel::gui
