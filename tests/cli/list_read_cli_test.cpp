// The list read in part: one material, and the columns of `list`, read without loading the
// list, give what the whole read gives, and the commands print what they always printed.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli_fixture.h"
#include "core/material/glasses_list.h"
#include "core/platform/clock.h"
#include "core/platform/dialogs.h"

namespace ostrel::testing {
namespace {

// A list file with every case the list's rule and its columns meet: a blank name and a
// name holding a NUL (passed over), a key repeated in other case (passed over), a melt
// glass, text outside ASCII with blanks around it, every column field set, and a last
// record cut short after its source.
std::string MixedFile() {
    MaterialRecord blank = NamedRecord("   ", "LAB");
    MaterialRecord full = NamedRecord(" N-BK7 \xC3\x9C", "  SCHOTT ");
    full.General.Polytype = 6;
    full.General.IndexWvMin = 310;
    full.General.IndexWvMax = 2325;
    full.DateChanged = 46349.75;
    full.GeneralState.Ready = full.IndexState.Ready = full.OtherState.Ready = kTrue;
    full.ThermalState.Ready = kFalse;
    MaterialRecord melt = NamedRecord("MELT *M1", "LAB");
    melt.Melt.MeltFlag = kTrue;
    melt.General.Polytype = 2;
    melt.DateChanged = 0.1;
    melt.TransState.Ready = kTrue;
    MaterialRecord nul = NamedRecord("NUL", "LAB");
    nul.General.GlassName.data()[5] = '\0';
    MaterialRecord odd = NamedRecord("Z", "S");
    odd.General.IndexWvMin = -1;
    odd.General.IndexWvMax = 32767;
    odd.DateChanged = 45000.123456789;
    std::string cut = ListBytes({NamedRecord("LAST", "S")});
    cut.resize(100);
    return ListBytes(
               {blank, full, melt, NamedRecord("Dup", "S"), nul, NamedRecord("DUP", "s"), odd}) +
           cut;
}

TEST(ListReadCli, OneMaterialAndColumnsAreThoseOfTheWholeRead) {
    std::vector<MaterialRecord> many;
    for (int i = 0; i < 9; ++i) {
        many.push_back(NamedRecord("G" + std::to_string(i), "S"));
        many.back().General.PolyCoef[0] = i;
    }
    std::string cutInName = ListBytes({many[0], many[1]});
    cutInName.resize(cutInName.size() + 20);
    const struct {
        const char* name;
        std::string file;
    } cases[] = {
        {"every record listed", ListBytes(many)},
        {"records passed over before the middle", MixedFile()},
        {"cut short inside a name", cutInName + std::string(12, 'X')},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TempDir dir;
        const std::string folder = dir.path().string();
        WriteFileBytes(dir / kCustomFileName, c.file);
        QuietDialogs dialogs;
        FixedClock clock(46349.5);
        ErrorDisplayer errors(folder, dialogs, clock);
        GlassesList whole(folder, errors);
        ASSERT_TRUE(whole.LoadCustomFile());
        const int count = whole.CustomCount();
        for (int n : {1, (count + 1) / 2, count}) {
            const auto one = GlassesList::ReadListedMaterial(folder, n);
            ASSERT_TRUE(one) << n;
            EXPECT_EQ(ToBytes(*one), ToBytes(whole.CustomList()[size_t(n - 1)])) << n;
        }
        const auto columns = GlassesList::ReadListedSummaries(folder);
        ASSERT_TRUE(columns);
        ASSERT_EQ(columns->size(), size_t(count));
        for (int i = 0; i < count; ++i) {
            EXPECT_EQ((*columns)[size_t(i)], SummaryOf(whole.CustomList()[size_t(i)])) << i + 1;
        }
    }
}

constexpr const char* kMixedText =
    "1\tN-BK7 \xC3\x9C\tSCHOTT\n2\tMELT *M1\tLAB\n3\tDup\tS\n4\tZ\tS\n5\tLAST\tS\n";

// The entries of `list --json` for the mixed file, one line each.
constexpr const char* kMixedJson =
    R"({"index":1,"GlassName":"N-BK7 Ü","Source":"SCHOTT","Polytype":6,"IndexWvMin":310,"IndexWvMax":2325,"MeltFlag":0,"DateChanged":46349.75,"Ready":{"General":-1,"Index":-1,"Trans":0,"dndt":0,"Other":-1}}
{"index":2,"GlassName":"MELT *M1","Source":"LAB","Polytype":2,"IndexWvMin":0,"IndexWvMax":0,"MeltFlag":-1,"DateChanged":0.1,"Ready":{"General":0,"Index":0,"Trans":-1,"dndt":-1,"Other":0}}
{"index":3,"GlassName":"Dup","Source":"S","Polytype":0,"IndexWvMin":0,"IndexWvMax":0,"MeltFlag":0,"DateChanged":0.0,"Ready":{"General":0,"Index":0,"Trans":0,"dndt":-1,"Other":0}}
{"index":4,"GlassName":"Z","Source":"S","Polytype":0,"IndexWvMin":-1,"IndexWvMax":32767,"MeltFlag":0,"DateChanged":45000.123456789,"Ready":{"General":0,"Index":0,"Trans":0,"dndt":-1,"Other":0}}
{"index":5,"GlassName":"LAST","Source":"S","Polytype":0,"IndexWvMin":0,"IndexWvMax":0,"MeltFlag":0,"DateChanged":0.0,"Ready":{"General":0,"Index":0,"Trans":0,"dndt":0,"Other":0}}
)";

// A JSON array written one element a line, for comparing with the lines above; its layout
// must be the indented dump's.
std::string OneEntryALine(const std::string& json) {
    const auto array = nlohmann::ordered_json::parse(json);
    EXPECT_EQ(json, array.dump(2) + '\n');
    std::string lines;
    for (const auto& entry : array) lines += entry.dump() + '\n';
    return lines;
}

TEST(ListReadCli, CommandsPrintWhatTheyAlwaysPrinted) {
    // The mixed file, two materials and part of a name, or no list file.
    const std::string mixed = MixedFile(),
                      cut =
                          ListBytes({NamedRecord("A", "S"), NamedRecord("B", "S")}) + "\x01\x02GLA";
    const struct {
        const std::string* file;
        const char* args;
        int status;
        std::string out;
        std::string err;
    } cases[] = {
        {&mixed, "list", 0, kMixedText, ""},
        {&mixed, "list --json", 0, kMixedJson, ""},
        {nullptr, "list --json", 0, "", ""},
        {&mixed, "show 0", 2, "", "There is no material 0 in the list (it holds 5).\n"},
        {&mixed, "show 6", 2, "", "There is no material 6 in the list (it holds 5).\n"},
        {&mixed, "index 6 --wave 500", 2, "", "There is no material 6 in the list (it holds 5).\n"},
        {&cut, "show 3", 2, "", "There is no material 3 in the list (it holds 2).\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.args);
        TempDir dir;
        if (c.file) WriteFileBytes(dir / kCustomFileName, *c.file);
        const CliResult r = RunCliIn(dir, c.args);
        EXPECT_EQ(r.status, c.status);
        EXPECT_EQ(std::string(c.args) == "list --json" ? OneEntryALine(r.out) : r.out, c.out);
        EXPECT_EQ(r.err, c.err);
    }
}

}  // namespace
}  // namespace ostrel::testing
