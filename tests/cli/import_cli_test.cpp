// The command line in scripts: import and export (the grid as TSV and JSON, adding, a backup
// that reads back), several files in one import with a summary of each, notices only when
// asked for, its version, and JSON from every command that prints data.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "cli_fixture.h"
#include "core/platform/install_paths.h"

namespace ostrel::testing {
namespace {

TEST(ImportCli, GridAsTsvAndAddAll) {
    TempDir dir;
    auto r = RunCliIn(dir, "import '" + ImportSample("sample.glc") + "'");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out.substr(0, r.out.find('\n')),
              "Glass\tSource\tWaveband [nm]\tIndex range\tStatus\tRefit error [mean]\tCheck");
    EXPECT_NE(r.out.find("N-BK7\tSCHOTT\t400.0 - 700.0\t"), std::string::npos);
    EXPECT_NE(r.out.find("\tCheck\t"), std::string::npos);  // SF5 disagrees with its file
    r = RunCliIn(dir, "import '" + ImportSample("sample.glc") + "' --add-all --rename-source Lab");
    ASSERT_EQ(r.status, 0) << r.err;
    r = RunCliIn(dir, "list");
    EXPECT_EQ(r.out, "1\tN-BK7\tLab\n2\tSF5\tLab\n");
    // Export and read back.
    const std::string out = (dir / "b.glz").string();
    r = RunCliIn(dir, "export '" + out + "' 2");
    ASSERT_EQ(r.status, 0) << r.err;
    r = RunCliIn(dir, "import '" + out + "' --json");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_NE(r.out.find("\"SF5\""), std::string::npos);
    EXPECT_EQ(r.out.find("\"N-BK7\""), std::string::npos);
    EXPECT_NE(r.out.find("\"refitError\""), std::string::npos);
}

// SF5 of the sample disagrees with its file: TSV and JSON give its status "Check", and
// adding it goes through the question, answered by --answer.
TEST(ImportCli, CheckGlassesShowTheirStatusAndAreAddedOnlyOnYes) {
    const struct {
        const char* answer;
        const char* list;
    } cases[] = {{"yes", "1\tN-BK7\tSCHOTT\n2\tSF5\tSCHOTT\n"}, {"no", "1\tN-BK7\tSCHOTT\n"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.answer);
        TempDir dir;
        const auto r = RunCliIn(dir, std::string("--answer ") + c.answer + " import '" +
                                         ImportSample("sample.glc") + "' --add-all --json");
        ASSERT_EQ(r.status, 0) << r.err;
        EXPECT_NE(r.out.find("\"status\": \"Check\""), std::string::npos);
        EXPECT_NE(r.out.find("\"status\": \"OK\""), std::string::npos);
        EXPECT_NE(r.err.find("marked Check"), std::string::npos);
        EXPECT_EQ(RunCliIn(dir, "list").out, c.list);
    }
}

TEST(ImportCli, FailedReadShowsWhatWasRead) {
    TempDir dir;
    const auto r = RunCliIn(dir, "import '" + ImportSample("bad_number.agf") + "'");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("glass BAD2"), std::string::npos);
    EXPECT_NE(r.out.find("OK1\t"), std::string::npos);  // what was read before is shown
}

TEST(BatchCli, VersionIsTheProjectVersion) {
    TempDir dir;
    const auto r = RunCliIn(dir, "--version");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, std::string("ostrel-cli ") + ProgramVersion() + "\n");
}

TEST(BatchCli, ImportsSeveralFilesWithASummaryOfEach) {
    TempDir dir;
    const std::string glc = ImportSample("sample.glc"), gla = ImportSample("sample.gla");
    auto r = RunCliIn(dir, "import '" + glc + "' '" + gla + "' --add-all");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out.substr(0, r.out.find('\t')), "File");
    EXPECT_NE(r.out.find("\n" + glc + "\tN-BK7\t"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("\n" + gla + "\t"), std::string::npos) << r.out;
    EXPECT_NE(r.err.find(glc + ": 2 staged, 0 refitted"), std::string::npos) << r.err;
    EXPECT_NE(r.err.find(gla + ": "), std::string::npos) << r.err;
    const auto list = RunCliIn(dir, "list").out;
    EXPECT_NE(list.find("\tSF5\tSCHOTT\n"), std::string::npos) << list;
    EXPECT_GT(std::count(list.begin(), list.end(), '\n'), 2) << list;
    // Material 2 is read alone, and is what the list shows there.
    r = RunCliIn(dir, "show 2 --json");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_NE(r.out.find("\"SF5\""), std::string::npos);

    // A file that cannot be read fails the run, the others are still read.
    r = RunCliIn(dir, "import '" + ImportSample("bad_number.agf") + "' '" + glc + "' --json");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("\"file\": \"" + glc + "\""), std::string::npos) << r.out;
}

TEST(BatchCli, NoticesAreShownOnlyWhenVerbose) {
    const std::string notice = "Enhanced import: Sept 2004";
    // An AGF formula without a stored form is refitted, which brings the refit notice.
    std::string agf = ReadFileBytes(ImportSample("chengdu.agf"));
    agf.replace(agf.find("NM G1 2 "), 8, "NM G1 6 ");
    for (const bool verbose : {false, true}) {
        SCOPED_TRACE(verbose);
        TempDir dir;
        WriteFileBytes(dir / "f6.agf", agf);
        const auto r = RunCliIn(dir, std::string(verbose ? "--verbose " : "") + "import '" +
                                         (dir / "f6.agf").string() + "' --refit-all");
        ASSERT_EQ(r.status, 0) << r.err;
        EXPECT_NE(r.err.find("f6.agf: 1 staged, 1 refitted"), std::string::npos) << r.err;
        EXPECT_EQ(r.err.find(notice) != std::string::npos, verbose) << r.err;
        EXPECT_EQ(r.err.find("see this message again"), std::string::npos) << r.err;
    }
}

TEST(BatchCli, EveryCommandThatPrintsDataWritesJson) {
    TempDir dir;
    WriteFileBytes(dir / "curve.csv", "300,0.46\n500,0.001\n");
    const struct {
        std::string args;
        const char* field;
    } cases[] = {
        {"glasscode 1.5168 64.17 --json", "\"GlassCode\": 517642"},
        {"index --polytype 2 --coef 1.03961212,0.231792344,1.01046945,0.00600069867,"
         "0.0200179144,103.560653 --wave 587.56 --json",
         "\"Index\": 1.51"},
        {"transtable '" + (dir / "curve.csv").string() + "' --json", "\"CC\""},
        {"paths --json", "\"PathKelmora\""},
        {"about --json", "\"version\""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.args);
        const auto r = RunCliIn(dir, c.args);
        ASSERT_EQ(r.status, 0) << r.err;
        ASSERT_FALSE(r.out.empty());
        EXPECT_TRUE(r.out.front() == '{' || r.out.front() == '[') << r.out;
        EXPECT_NE(r.out.find(c.field), std::string::npos) << r.out;
    }
}

}  // namespace
}  // namespace ostrel::testing
