// import and export from the command line: the grid as TSV, JSON, adding, and a backup
// that reads back.
#include <gtest/gtest.h>

#include <filesystem>

#include "support/run_cli.h"
#include "support/temp_dir.h"

namespace ostrel::testing {
namespace {

std::string Data(const std::string& name) {
    return (std::filesystem::path(OSTREL_TEST_DATA) / "import" / name).string();
}

TEST(ImportCli, GridAsTsvAndAddAll) {
    TempDir dir;
    auto r = RunCliIn(dir, "import '" + Data("sample.glc") + "'");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out.substr(0, r.out.find('\n')),
              "Glass\tSource\tWaveband [nm]\tIndex range\tStatus\tRefit error [mean]\tCheck");
    EXPECT_NE(r.out.find("N-BK7\tSCHOTT\t400.0 - 700.0\t"), std::string::npos);
    r = RunCliIn(dir, "import '" + Data("sample.glc") + "' --add-all --rename-source Lab");
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
    TempDir probe;
    auto r = RunCliIn(probe, "import '" + Data("sample.glc") + "' --json");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_NE(r.out.find("\"status\": \"Check\""), std::string::npos);
    EXPECT_NE(r.out.find("\"status\": \"OK\""), std::string::npos);
    const struct {
        const char* answer;
        const char* list;
    } cases[] = {{"yes", "1\tN-BK7\tSCHOTT\n2\tSF5\tSCHOTT\n"}, {"no", "1\tN-BK7\tSCHOTT\n"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.answer);
        TempDir dir;
        r = RunCliIn(dir, std::string("--answer ") + c.answer + " import '" + Data("sample.glc") +
                              "' --add-all");
        ASSERT_EQ(r.status, 0) << r.err;
        EXPECT_NE(r.out.find("\tCheck\t"), std::string::npos);
        EXPECT_NE(r.err.find("marked Check"), std::string::npos);
        EXPECT_EQ(RunCliIn(dir, "list").out, c.list);
    }
}

TEST(ImportCli, BadTypeAndFailedRead) {
    TempDir dir;
    EXPECT_EQ(RunCliIn(dir, "import x.txt").status, 2);
    const auto r = RunCliIn(dir, "import '" + Data("bad_number.agf") + "'");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("glass BAD2"), std::string::npos);
    EXPECT_NE(r.out.find("OK1\t"), std::string::npos);  // what was read before is shown
}

}  // namespace
}  // namespace ostrel::testing
