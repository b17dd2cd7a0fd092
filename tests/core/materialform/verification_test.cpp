#include "core/materialform/verification.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "core/material/list_fixture.h"

namespace ostrel::testing {
namespace {

using ReadyFlags = std::array<bool, 5>;  // ready: General, Index, Trans, dn/dt, Other

MaterialRecord ReadyRecord(const char* name, const char* source,
                           ReadyFlags ready = {true, true, true, true, true}) {
    MaterialRecord rec = MakeRecord(name, source);
    SectionState* states[] = {&rec.GeneralState, &rec.IndexState, &rec.TransState,
                              &rec.ThermalState, &rec.OtherState};
    for (size_t i = 0; i < 5; ++i) states[i]->Ready = ready[i] ? kTrue : kFalse;
    return rec;
}

TEST(CheckGlassReady, ReportLineStatusCellAndOneBoxForARange) {
    const std::pair<ReadyFlags, const char*> cases[] = {
        {{true, true, true, true, true}, ""},
        {{true, true, true, true, false}, "Other"},
        {{true, true, false, false, true}, "Trans dn/dt"}};
    for (const auto& [ready, list] : cases) {
        SCOPED_TRACE(list);
        const MaterialRecord rec = ReadyRecord("N-TEST5", "Melt 42", ready);
        std::string report = "before\n";
        const bool allReady = std::string(list).empty();
        EXPECT_EQ(CheckGlassReady(rec, report), allReady);
        EXPECT_EQ(report, allReady
                              ? "before\n"
                              : std::string("before\nN-TEST5/Melt 42 - check: ") + list + "\n");
        EXPECT_EQ(
            std::tuple(ReadyStatusCell(rec).text, ReadyStatusCell(rec).colour),
            std::tuple(allReady ? "OK" : list, allReady ? ReadyColour::Green : ReadyColour::Red));
    }

    // Every glass not ready in a range is reported in one box.
    ScriptedDialogs dialogs;
    const std::vector<MaterialRecord> glasses{
        ReadyRecord("A1", "S1"), ReadyRecord("B2", "S2", {true, true, false, true, true}),
        ReadyRecord("C3", "S3", {false, true, true, true, false}),
        ReadyRecord("D4", "S4", {true, false, true, true, true})};

    EXPECT_FALSE(CheckGlassesReady(dialogs, 0, 2, glasses));
    EXPECT_EQ(dialogs.boxes,
              (std::vector<ShownBox>{{"The following glass[s] are not ready for export.\n"
                                      "B2/S2 - check: Trans\n"
                                      "C3/S3 - check: General Other\n",
                                      MsgButtons::OK, MsgIcon::Information, ""}}));

    // A ready glass, an empty range and an empty list show nothing.
    EXPECT_TRUE(CheckGlassesReady(dialogs, 0, 0, glasses));
    EXPECT_TRUE(CheckGlassesReady(dialogs, 2, 1, glasses));
    EXPECT_TRUE(CheckGlassesReady(dialogs, 0, -1, {}));
    EXPECT_EQ(dialogs.boxes.size(), 1u);
    // A range reaching past the array stops at its end.
    EXPECT_FALSE(CheckGlassesReady(dialogs, 3, 9, glasses));
    EXPECT_EQ(dialogs.boxes.back().text,
              "The following glass[s] are not ready for export.\nD4/S4 - check: Index\n");
}

// An unknown status code reads "A"; the field keeps its four bytes.
TEST(NormaliseRecord, StatusAndGlassCode) {
    const std::pair<const char*, const char*> codes[] = {{"e  ", "e   "}, {" R", " R  "},
                                                         {"A", "A   "},   {"0", "0   "},
                                                         {"X", "A   "},   {"AE", "A   "}};
    for (const auto& [stored, after] : codes) {
        MaterialRecord rec = ClearedMaterialRecord();
        rec.Other.Status.Set(stored);
        NormaliseRecord(rec);
        EXPECT_EQ(rec.Other.Status.Untrimmed(), after) << stored;
    }
    // The glass code follows the index section when it is ready.
    MaterialRecord rec = ClearedMaterialRecord();
    rec.General.Polytype = 1;  // Schott with n^2 = 2.25 at every wavelength
    rec.General.PolyCoef[0] = 2.25;
    rec.General.GlassCode = 111222;

    for (auto [ready, code] : {std::pair{kFalse, 111222}, {kTrue, 500000}}) {
        rec.IndexState.Ready = ready;
        NormaliseRecord(rec);
        EXPECT_EQ(rec.General.GlassCode, code);
    }
}

}  // namespace
}  // namespace ostrel::testing
