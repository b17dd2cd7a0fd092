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
