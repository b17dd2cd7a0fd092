#include <algorithm>
#include <tuple>
#include <utility>

#include "core/melt/pop_melt_schott.h"
#include "melt_fixture.h"

namespace ostrel::testing {
namespace {

// --- parent picker ---

class ParentPickerTest : public MeltFixture {
  protected:
    std::unique_ptr<popMeltParent> Picker(popMeltParent::Hooks hooks = {}) {
        return std::make_unique<popMeltParent>(dialogs, settings, setup.GetPathKelmora(),
                                               GenericMakerNames(setup.GetPathLumbrak()), hooks);
    }
};

TEST_F(ParentPickerTest, MakersFromTheGenericListAndTheGlassesOfOneSortedByStatus) {
    auto p = Picker();
    ASSERT_TRUE(p->Load());
    ASSERT_GE(p->lstMakers.ListCount(), 3);
    EXPECT_EQ(std::tuple(p->lstMakers.List(0), p->lstMakers.List(1), p->lstMakers.List(2),
                         p->lstMakers.listIndex(), p->ssGlasses.MaxRows()),
              std::tuple("Schott", "Ohara", "Hoya", -1, 0));

    Choose(*p, p->lstMakers, 0, &popMeltParent::lstMakersClick);
    ASSERT_EQ(p->ssGlasses.MaxRows(), 12);  // the demo's Schott glasses
    EXPECT_EQ(std::tuple(p->ssGlasses.ClipText({1, 1, 3, 1}), p->ssGlasses.Text(6, 1),
                         p->ssGlassesView.visible.get(), p->lblSelGlass.visible.get(),
                         p->comOK.enabled.get()),
              std::tuple("1\t  N-BK7\t517642", "  Recommended", true, false, false));

    p->ssGlassesClick(3, RowOf(*p, "F2"));
    const auto picked = std::tuple(p->comOK.enabled.get(), p->lblSelGlass.caption.get());
    // Another maker: a row must be clicked again.
    Choose(*p, p->lstMakers, 1, &popMeltParent::lstMakersClick);
    EXPECT_EQ(std::tuple(picked, p->comOK.enabled.get(), p->ssGlasses.Text(6, 1)),
              std::tuple(std::tuple(true, "Select glass: Schott    F2"), false, "  Available?"));

    // Sorted by status: the words first, then the names.
    Choose(*p, p->lstMakers, 2, &popMeltParent::lstMakersClick);  // Hoya: A and R
    Choose(*p, p->cmbSortOrder, 5, &popMeltParent::cmbSortOrderClick);
    std::vector<std::string> seen;
    for (int r = 1; r <= p->ssGlasses.MaxRows(); ++r)
        seen.push_back(p->ssGlasses.Text(6, r) + "|" + p->ssGlasses.Text(2, r));
    ASSERT_FALSE(seen.empty());
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end(), [](const auto& a, const auto& b) {
        return UpperAscii(a) < UpperAscii(b);
    })) << ::testing::PrintToString(seen);
    EXPECT_EQ(seen.front().rfind("  Available?|", 0), 0u);
    EXPECT_EQ(seen.back().rfind("  Recommended|", 0), 0u);
}

TEST_F(ParentPickerTest, PickReturnsTheWholeRowAndRemembersTheMaker) {
    MaterialRecord rec = ClearedMaterialRecord();
    popMeltParent::Hooks hooks;
    hooks.showModal = [](popMeltParent& p) {
        Choose(p, p.lstMakers, 2, &popMeltParent::lstMakersClick);
        p.ssGlassesClick(2, RowOf(p, "BSC7"));
        p.comOKClick();
    };
    ASSERT_TRUE(Picker(hooks)->PickParent(rec));
    EXPECT_EQ(std::tuple(rec.Melt.MeltParentName.Untrimmed().substr(0, 6),
                         rec.Melt.MeltParentSource.Text(), rec.General.GlassName.Text(),
                         rec.General.Polytype, rec.General.PolyCoef[0], rec.General.IndexWvMax,
                         settings.GetSetting("MeltParent", "MeltParentMaker", "?")),
              std::tuple("  BSC7", "Hoya", "BSC7", 1, 2.2702566, 1014, "Hoya"));

    // Opened again, the maker is selected and its glasses are shown.
    auto p = Picker();
    ASSERT_TRUE(p->Load());
    EXPECT_TRUE(p->lstMakers.listIndex() == 2 && p->ssGlasses.MaxRows() > 0);
    // A cancel keeps the setting.
    Choose(*p, p->lstMakers, 0, &popMeltParent::lstMakersClick);
    p->ssGlassesClick(1, 1);
    p->comCancelClick();
    EXPECT_EQ(settings.GetSetting("MeltParent", "MeltParentMaker", "?"), "Hoya");
}

// A maker without rows gives an empty grid; no database closes the picker.
TEST_F(ParentPickerTest, AMakerWithoutRowsOrNoDatabase) {
    popMeltParent p(dialogs, settings, setup.GetPathKelmora(), {"Nobody"});
    ASSERT_TRUE(p.Load());
    dialogs.boxes.clear();
    Choose(p, p.lstMakers, 0, &popMeltParent::lstMakersClick);
    p.ssGlassesClick(1, 1);  // nothing there
    EXPECT_EQ(std::tuple(dialogs.boxes.size(), p.ssGlasses.MaxRows(), p.comOK.enabled.get()),
              std::tuple(0u, 0, false));

    popMeltParent none(dialogs, settings, (dir / "nowhere").string(), {"Schott"});
    MaterialRecord rec = ClearedMaterialRecord();
    rec.General.GlassName.Set("kept");
    EXPECT_FALSE(none.PickParent(rec));
    EXPECT_EQ(std::tuple(dialogs.boxes.size(), none.IsOpen(), rec.General.GlassName.Text()),
              std::tuple(1u, false, "kept"));
}

// --- Schott melt sheet ---

class SchottSheetTest : public ListFixture {
  protected:
    void SetUp() override { sheet.Load(ClearedMaterialRecord()); }
    void Enter(int field, const std::string& text) {
        sheet.txtIndex[static_cast<size_t>(field)].text = text;
        sheet.txtIndexValidate(field);
    }
    void EnterAll(const std::array<const char*, 9>& values) {
        for (int i = 1; i <= 9; ++i) Enter(i, values[static_cast<size_t>(i - 1)]);
    }
    MemorySettingsStore settings;
    CNewMsg newMsg{dialogs, settings};
    popMeltSchott sheet{dialogs, newMsg};
};

// A sheet of a BK7-like melt: nd, ne, nF-nC, nd-nC, nF-nd, nF-ne, ng-nF, nF'-nC', nF'-ne.
const std::array<const char*, 9> kSheet = {"1.51680", "1.51872", "0.00805", "0.00224", "0.00581",
                                           "0.00389", "0.00455", "0.00813", "0.00437"};

TEST_F(SchottSheetTest, TheChainOfSums) {
    EXPECT_FALSE(sheet.comOK.enabled);
    EnterAll(kSheet);
    EXPECT_EQ(std::tuple(sheet.comOK.enabled.get(), sheet.comShowIndex.enabled.get(),
                         sheet.txtIndex[4].text.get()),
              std::tuple(true, true, "0.002240"));
    dialogs.boxes.clear();
    sheet.comShowIndexClick();
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text,
              " \twavelength\tindex\n"
              "C \t656.2730\t\t1.514560\n"
              "C'\t643.8470\t\t1.514960\n"
              "d \t587.5620\t\t1.516800\n"
              "e \t546.0740\t\t1.518720\n"
              "F \t486.1330\t\t1.522610\n"
              "F'\t479.9910\t\t1.523090\n"
              "g \t435.8340\t\t1.527160\n");
    const double expected[7] = {1.51456, 1.51496, 1.5168, 1.51872, 1.52261, 1.52309, 1.52716};
    const auto& m = sheet.Record().Melt;
    ASSERT_EQ(m.MeltIndexPoints, 7);
    for (int i = 0; i < 7; ++i) EXPECT_NEAR(m.MeltIndexValue[i], expected[i], 2e-7) << i;
    sheet.comOKClick();
    // The figures stay in entries 1 to 9.
    EXPECT_EQ(std::tuple(m.MeltIndexWave[1], m.MeltTransThird[1], m.MeltTransThird[9],
                         m.MeltTransThird[0], sheet.Accepted()),
              std::tuple(643.847f, static_cast<double>(1.5168f), static_cast<double>(0.00437f), 0.0,
                         true));
}

// Only figures above 0 and below 2.5 are taken; a refused one leaves the figure before it.
TEST_F(SchottSheetTest, EntriesAndTheCheckOfOK) {
    const std::tuple<int, const char*, const char*> entries[] = {
        {3, "0.01", "0.010000"}, {3, "2.4999", "2.499900"}, {3, "2.5", "0.008050"},
        {3, "0", "0.008050"},    {3, "abc", "abc"},         {1, "2.3", "2.300000"}};
    for (const auto& [field, typed, shown] : entries) {
        Enter(field, kSheet[static_cast<size_t>(field - 1)]);
        Enter(field, typed);
        EXPECT_EQ(sheet.txtIndex[static_cast<size_t>(field)].text.get(), shown) << typed;
    }
    // Fields (1 to 9) typed over kSheet, and the refusal ("" when the sheet is taken).
    const std::pair<std::vector<std::pair<int, const char*>>, const char*> sheets[] = {
        // nd 2.3 is a valid entry, but no index.
        {{{1, "2.3"}}, "Index value outside valid range!"},
        // nF' - nC' too large: C' falls below C.
        {{{8, "0.02"}}, "Index value is not increasing as wavelength gets shorter!"},
        // nF - nC and nF - ne make no pair and may disagree.
        {{{3, "0.5"}, {6, "0.4"}}, ""}};
    for (const auto& [edits, refusal] : sheets) {
        SCOPED_TRACE(refusal);
        sheet.Load(ClearedMaterialRecord());
        auto values = kSheet;
        for (const auto& [field, text] : edits) values[static_cast<size_t>(field - 1)] = text;
        EnterAll(values);
        dialogs.boxes.clear();
        sheet.comOKClick();
        EXPECT_EQ(sheet.Accepted(), !*refusal);
        std::vector<ShownBox> shown;
        if (*refusal) shown.push_back({refusal, MsgButtons::OK, MsgIcon::Exclamation, ""});
        EXPECT_EQ(dialogs.boxes, shown);
        EXPECT_EQ(sheet.Record().Melt.MeltIndexPoints, *refusal ? 0 : 7);
    }
}

// The picture fills the sheet with the parent's figures: the pairs are the parent's own, and
// they replace the whole table.
TEST_F(MeltFixture, TheParentMakesAStartingSheetThroughTheMeltMaker) {
    Start("Schott", "N-BK7", "m1");
    TypePair(12, "1000", "1.5");
    popMeltSchott::Hooks hooks;
    hooks.showModal = [](popMeltSchott& s) {
        EXPECT_EQ(s.lblIndexCat[1].caption.get(), "1.516800");
        s.pctSchottClick();
        s.comOKClick();
    };
    popMeltSchott sheet(dialogs, newMsg, hooks);
    sheetResult = [&sheet](MaterialRecord& rec) { ASSERT_TRUE(sheet.EnterSheet(rec)); };
    form->comMeltSchottClick();
    const auto& m = form->MeltRecord().Melt;
    ASSERT_EQ(m.MeltIndexPoints, 7);
    for (int i = 0; i < 7; ++i)
        EXPECT_NEAR(m.MeltIndexValue[i], IndexOf(form->ParentRecord(), m.MeltIndexWave[i]), 1e-12);
    EXPECT_EQ(form->ssRefInd.Text(2, 12), "");  // the whole table is replaced
    form->comIndexFitClick();
    EXPECT_EQ(form->MeltRecord().IndexState.Ready, kTrue);
}

}  // namespace
}  // namespace ostrel::testing
