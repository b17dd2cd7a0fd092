#include <gtest/gtest.h>

#include <fstream>

#include "support/run_cli.h"
#include "support/temp_dir.h"

namespace ostrel::testing {
namespace {

int Count(const std::string& text, const std::string& what) {
    int n = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
    return n;
}

// Glasses of the demonstration catalogue, all or of one maker.
int DemoGlasses(const std::string& maker = "") {
    std::ifstream in(OSTREL_TEST_DATA "/../../data/demo/demo_glasses.csv");
    std::string line;
    int n = 0;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        if (maker.empty() || line.rfind(maker + ",", 0) == 0) ++n;
    }
    return n;
}

class GlassMapCli : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(RunCliIn(dir, "demo " + (dir / "demo").string()).status, 0);
        // A melt of N-BK7 from its melt sheet, kept in the list as material 1.
        const auto melt =
            RunCliIn(dir,
                     "melt --parent-source Schott --parent N-BK7 --code M1 --save --sheet "
                     "1.5172,1.5193,0.00806,0.00242,0.00564,0.00467,0.00432,0.00822,0.00472");
        ASSERT_EQ(melt.status, 0) << melt.err;
    }
    std::string Out(const std::string& name) { return (dir / name).string(); }
    TempDir dir;
};

TEST_F(GlassMapCli, MapHoldsOnePointPerGlassOfTheSourcesChosen) {
    ASSERT_GT(DemoGlasses("Schott"), 0);
    struct Case {
        std::string args;
        int catalogue;
        bool normalLine;
    };
    const Case cases[] = {
        {"map --out " + Out("a.svg"), DemoGlasses(), false},
        {"map --pgf --out " + Out("a.svg"), DemoGlasses(), true},
        {"map --sources Schott,hoya --out " + Out("a.svg"),
         DemoGlasses("Schott") + DemoGlasses("Hoya"), false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.args);
        const auto r = RunCliIn(dir, c.args);
        ASSERT_EQ(r.status, 0) << r.err;
        const std::string svg = ReadFileBytes(dir / "a.svg");
        EXPECT_EQ(Count(svg, "<circle class=\"catalogue\""), c.catalogue);
        EXPECT_EQ(Count(svg, "<path class=\"melt\""), 1);
        EXPECT_EQ(Count(svg, "stroke-dasharray"), c.normalLine ? 1 : 0);
        EXPECT_EQ(r.out, std::to_string(c.catalogue) + " catalogue and 1 custom glasses shown\n");
    }
    const auto png = RunCliIn(dir, "map --out " + Out("a.png"));
    ASSERT_EQ(png.status, 0) << png.err;
    EXPECT_EQ(ReadFileBytes(dir / "a.png").substr(1, 3), "PNG");
}

TEST_F(GlassMapCli, NearestAndCompare) {
    auto r = RunCliIn(dir, "nearest 1 --count 2");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out.substr(0, r.out.find('\t', r.out.find('\t') + 1)), "N-BK7\tSchott");
    EXPECT_EQ(Count(r.out, "\n"), 2);

    r = RunCliIn(dir, "compare 1 N-BK7/Schott F2 --out " + Out("c.csv"));
    ASSERT_EQ(r.status, 0) << r.err;
    const std::string csv = ReadFileBytes(dir / "c.csv");
    EXPECT_EQ(csv.substr(0, csv.find('\n')),
              "Wavelength (nm),n N-BK7 *M1 (Schott),n N-BK7 (Schott),n F2 (Schott),"
              "dn N-BK7 (Schott),dn F2 (Schott)");
}

TEST_F(GlassMapCli, RefusalsSayWhy) {
    struct Case {
        std::string args;
        int status;
        std::string err;
    };
    const Case cases[] = {
        {"map --out " + Out("a.txt"), 2, "The map is written as FILE.svg or FILE.png\n"},
        {"map --sources Nobody --out " + Out("a.svg"), 1, "No source Nobody in the catalogue\n"},
        {"nearest 4", 1, "There is no material 4 in the list (it holds 1).\n"},
        {"compare 1 --out " + Out("c.csv"), 2, ""},
        {"compare 1 NO-SUCH --out " + Out("c.csv"), 1, "No material NO-SUCH\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.args);
        const auto r = RunCliIn(dir, c.args);
        EXPECT_EQ(r.status, c.status);
        if (!c.err.empty()) {
            EXPECT_EQ(r.err, c.err);
        }
    }
}

TEST(GlassMapCliAlone, WithoutTheCatalogueProgramTheMapShowsTheListAndSaysWhy) {
    TempDir dir;
    const auto r = RunCliIn(dir, "map --out " + (dir / "a.svg").string());
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out,
              "0 catalogue and 0 custom glasses shown. KelmoraTD was not found: the map shows "
              "the custom list alone.\n");
}

}  // namespace
}  // namespace ostrel::testing
