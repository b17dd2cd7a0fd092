#include "core/materialform/frm2_manage.h"

#include "core/materialform/frm3new_fixture.h"

namespace ostrel::testing {
namespace {

class Frm2ManageTest : public ListFixture {
  protected:
    void SetUp() override { Fresh(); }
    void Add(const MaterialRecord& r) { ASSERT_TRUE(list->ListAdd(r, false)); }
    frm2Manage& Form() {
        frm2Manage::Hooks hooks;
        const auto edit = [this](const char* form) {
            return [this, form](int i, const MaterialRecord&) {
                edits.push_back(form + std::to_string(i));
            };
        };
        hooks.editInNewForm = edit("new ");
        hooks.editInMeltForm = edit("melt ");
        hooks.showGlassesDel = [this](frmGlassesDel& del) {
            offered = del.lstGlasses.Items();
            for (int i : toDelete) del.lstGlasses.SetSelected(i, true);
            cancelDelete ? del.comCancelClick() : del.comDelSelClick();
        };
        hooks.close = [this] { ++closes; };
        form = std::make_unique<frm2Manage>(*list, dialogs, hooks);
        form->Display();
        return *form;
    }
    std::unique_ptr<frm2Manage> form;
    std::vector<std::string> edits;
    std::vector<int> toDelete;
    std::vector<std::string> offered;  // what the delete box listed
    bool cancelDelete = false;
    int closes = 0;
};

TEST_F(Frm2ManageTest, RowShowsWavebandIndexRangeDateAndStatus) {
    Add(ReadyRecord("N-XY", "Schott"));
    MaterialRecord b = ReadyRecord("PTS", "Melt Co");
    b.General.IndexPoints = 3;
    b.Measured.IndexWave = {1013.98, 587.56, 365.01};
    b.General.IndexWvMin = 0;  // an end of zero shows zero
    b.IndexState.Ready = kFalse;
    b.ThermalState.Ready = kFalse;
    b.Melt.MeltFlag = kTrue;
    Add(b);
    auto& f = Form();
    auto& g = f.ssGlassesCurr;
    ASSERT_EQ(g.MaxRows(), 2);
    EXPECT_EQ(g.ClipText({1, 1, 7, 1}),
              "N-XY\tSchott\t400.0 - 800.0\t1.521 - 1.505\t2024-01-01\tOK\t1");
    EXPECT_EQ(g.ClipText({1, 2, 7, 2}),
              "PTS\tMelt Co\t365.0 - 1014.0\t0.000 - 1.505\t2024-01-01\tIndex dn/dt\t2");
    EXPECT_EQ(std::tuple(g.CellColour(frm2Manage::kColStatus, 1),
                         g.CellColour(frm2Manage::kColStatus, 2), g.RowColour(1), g.RowColour(2)),
              std::tuple(kStatusGreen, kStatusRed, std::nullopt, kMeltRowColour));
    EXPECT_EQ(std::tuple(f.form.visible.get(), dialogs.everBusy, dialogs.busyDepth),
              std::tuple(true, true, 0));
}

TEST_F(Frm2ManageTest, EditOpensTheMeltFormForMeltGlassesAndNothingOnAnEmptyList) {
    auto& f = Form();
    f.comEditClick();  // nothing to edit
    Add(ReadyRecord("A", "S"));
    MaterialRecord m = ReadyRecord("M", "S");
    m.Melt.MeltFlag = kTrue;
    Add(m);
    f.UpdatesGlasssAftEdit();
    f.ssGlassesCurr.SetActiveCell(1, 2);
    f.comEditClick();
    f.ssGlassesCurr.SetSelection({0, 1, 0, 2});  // block mode: first row of the block
    f.comEditClick();
    EXPECT_EQ(edits, (std::vector<std::string>{"melt 2", "new 1"}));
    EXPECT_TRUE(dialogs.boxes.empty());
}

// A cancel or nothing chosen changes nothing; the chosen are removed and the rest saved.
TEST_F(Frm2ManageTest, DeleteRemovesTheChosenAndSavesTheRest) {
    for (const char* n : {"A", "B", "C", "D"}) Add(ReadyRecord(n, "S"));
    auto& f = Form();
    cancelDelete = true;
    toDelete = {0};
    f.comDeleteClick();
    cancelDelete = false;
    toDelete = {};
    f.comDeleteClick();
    EXPECT_EQ(std::tuple(list->CustomCount(), refreshes, std::filesystem::exists(Current())),
              std::tuple(4, 0, false));

    toDelete = {1, 3};
    f.comDeleteClick();
    EXPECT_EQ(std::tuple(offered, Names(), f.ssGlassesCurr.MaxRows(), f.ssGlassesCurr.Text(1, 2),
                         f.ssGlassesCurr.Text(frm2Manage::kColIndex, 2), refreshes,
                         ReadFileBytes(Current())),
              std::tuple((std::vector<std::string>{"A/S", "B/S", "C/S", "D/S"}),
                         (std::vector<std::string>{"A", "C"}), 2, "C", "2", 1,
                         Image(list->CustomList())));
}

TEST_F(Frm2ManageTest, SortsGridAndStoresTheOrder) {
    const std::pair<MsgAnswer, std::vector<std::string>> answers[] = {
        {MsgAnswer::Cancel, {"f2", "BK7", "ZK1", "AB"}},
        {MsgAnswer::Yes, {"AB", "BK7", "f2", "ZK1"}},  // by glass
        {MsgAnswer::No, {"ZK1", "AB", "BK7", "f2"}}};  // by source, then glass
    for (auto [name, source] :
         {std::pair{"f2", "Schott"}, {"BK7", "Schott"}, {"ZK1", "Ohara"}, {"AB", "Schott"}})
        Add(ReadyRecord(name, source));
    auto& f = Form();
    for (const auto& [answer, names] : answers) {
        for (int twice = 0; twice < 2; ++twice) {
            dialogs.answers.push_back(answer);
            f.comSortClick();
            EXPECT_EQ(Names(), names) << "pass " << twice;
        }
        for (int row = 1; row <= f.ssGlassesCurr.MaxRows(); ++row)
            EXPECT_EQ(f.ssGlassesCurr.Text(frm2Manage::kColIndex, row), std::to_string(row));
        if (answer == MsgAnswer::Cancel)
            EXPECT_FALSE(std::filesystem::exists(Current()));
        else
            EXPECT_EQ(ReadFileBytes(Current()), Image(list->CustomList()));
    }
    ASSERT_FALSE(dialogs.boxes.empty());
    EXPECT_EQ(dialogs.boxes[0].buttons, MsgButtons::YesNoCancel);
}

TEST_F(Frm2ManageTest, DuplicateInsertsBehindTheSelectedAndRefills) {
    Add(ReadyRecord("A", "S"));
    Add(ReadyRecord("B", "S"));
    auto& f = Form();
    f.ssGlassesCurr.SetActiveCell(1, 1);
    dialogs.inputs.push_back("A2");
    f.comDuplicateClick();
    EXPECT_EQ(std::tuple(Names(), f.ssGlassesCurr.MaxRows(), f.ssGlassesCurr.Text(1, 2)),
              std::tuple((std::vector<std::string>{"A", "A2", "B"}), 3, "A2"));
}

}  // namespace
}  // namespace ostrel::testing
