#include "core/material/frm_glasses_list.h"

#include "core/material/list_fixture.h"

namespace ostrel::testing {
namespace {

class FrmGlassesListTest : public ListFixture {
  protected:
    void SetUp() override {
        Fresh();
        MaterialRecord melt = MakeRecord("BK7 melt 12", "Schott");
        melt.Melt.MeltFlag = kTrue;
        list->ListAdd(MakeRecord("BK7", "Schott"), false);
        list->ListAdd(melt, false);
        list->ListAdd(MakeRecord("CaF2", "Crystran"), false);
    }
    frmGlassesList& Shown() {
        form = std::make_unique<frmGlassesList>(
            *list, frmGlassesList::Hooks{[this] { return currentForm; },
                                         [this](int index, const std::string& label) {
                                             prepared.emplace_back(index, label);
                                         },
                                         [this](int index, const std::string& label) {
                                             preparedMelt.emplace_back(index, label);
                                         },
                                         [this](const std::string& t) { notes.push_back(t); }});
        form->Display();
        return *form;
    }
    int currentForm = 0;
    std::vector<std::pair<int, std::string>> prepared, preparedMelt;
    std::vector<std::string> notes;
    std::unique_ptr<frmGlassesList> form;
};

TEST_F(FrmGlassesListTest, FillShowsNameAndSourceWithMeltRowsYellow) {
    Grid g;
    FillMaterialGrid(*list, g);
    ASSERT_EQ(g.MaxRows(), 3);
    EXPECT_EQ(g.Column(1).title, "Material");
    EXPECT_EQ(g.Column(2).title, "Source");
    EXPECT_EQ(g.ClipText({1, 1, 2, 3}), "BK7\tSchott\nBK7 melt 12\tSchott\nCaF2\tCrystran");
    EXPECT_EQ(g.RowColour(1), kWhite);
    EXPECT_EQ(g.RowColour(2), kMeltRowColour);
    EXPECT_EQ(g.RowColour(3), kWhite);
    EXPECT_TRUE(g.Redraw());
}

TEST_F(FrmGlassesListTest, ListChangesRefreshTheDisplayedForm) {
    frmGlassesList& f = Shown();
    EXPECT_TRUE(f.form.visible);
    ASSERT_TRUE(list->CommitList({MakeRecord("F2", "Schott")}));  // refreshes the form itself
    ASSERT_EQ(f.ssGlassesList.MaxRows(), 1);
    EXPECT_EQ(f.ssGlassesList.Text(1, 1), "F2");
    EXPECT_EQ(f.ssGlassesList.RowColour(1), kWhite) << "colours follow the new rows";
}

TEST_F(FrmGlassesListTest, RightClickPreparesThePopupOnlyWithNoFormOpenOnAUsableRow) {
    frmGlassesList& f = Shown();
    EXPECT_TRUE(f.ssGlassesListRightClick(3));
    EXPECT_EQ(prepared, (std::vector<std::pair<int, std::string>>{{3, "CaF2/Crystran"}}));
    EXPECT_FALSE(f.PopupIsMelt());
    EXPECT_TRUE(f.ssGlassesListRightClick(2));
    EXPECT_TRUE(f.PopupIsMelt());
    EXPECT_EQ(preparedMelt, (std::vector<std::pair<int, std::string>>{{2, "BK7 melt 12/Schott"}}));
    currentForm = 2;
    EXPECT_FALSE(f.ssGlassesListRightClick(1));
    EXPECT_EQ(notes, std::vector<std::string>{frmGlassesList::kMenuWhileFormOpen});
    currentForm = 0;
    EXPECT_FALSE(f.ssGlassesListRightClick(4)) << "below the last row";
    // A name with a NUL cannot enter the list; put it straight into the grid.
    f.ssGlassesList.SetText(1, 2, std::string("AB\0C", 4));
    EXPECT_FALSE(f.ssGlassesListRightClick(2));
    EXPECT_EQ(prepared.size(), 1u);
}

}  // namespace
}  // namespace ostrel::testing
