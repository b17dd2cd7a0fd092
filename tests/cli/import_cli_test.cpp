// The command line in scripts: several files in one import with a summary of each, the grid
// as TSV and JSON, Check glasses added only on yes, export and a backup that reads back,
// notices only when asked for, its version, and JSON from the commands that print data.
#include <gtest/gtest.h>

#include <string>

#include "cli_fixture.h"
#include "core/platform/install_paths.h"

namespace ostrel::testing {
namespace {

std::string Q(const std::string& path) {
    return " '" + path + "'";
}

TEST(ImportCli, ImportAddExportAndJson) {
    TempDir dir;
    // An AGF formula without a stored form is refitted, which brings the refit notice.
    std::string agf = ReadFileBytes(Data("chengdu.agf"));
    agf.replace(agf.find("NM G1 2 "), 8, "NM G1 6 ");
    WriteFileBytes(dir / "f6.agf", agf);
    const std::string glc = Data("sample.glc"), gla = Data("sample.gla");
    const std::string bad = Q(Data("bad_number.agf")), out = Q((dir / "b.glz").string());
    const std::string f6 = " import" + Q((dir / "f6.agf").string()) + " --refit-all";
    const std::string notice = "Enhanced import: Sept 2004";
    const CliRow rows[] = {
        // SF5 of the sample disagrees with its file: adding it asks first.
        {"--answer yes import" + Q(glc) + Q(gla) + " --add-all",
         0,
         {"^File\t", "\n" + glc + "\tN-BK7\t", "\n" + gla + "\t"},
         {glc + ": 2 staged, 0 refitted", gla + ": ", "marked Check"}},
        {"list", 0, {"=1\tN-BK7\tSCHOTT\n2\tSF5\tSCHOTT\n3\tGLA1\tOLDSRC\n"}},
        // A file that cannot be read fails the run, the others are still read.
        {"import" + bad + Q(glc) + " --json",
         1,
         {"\"file\": \"" + glc + "\"", "\"status\": \"Check\"", "\"status\": \"OK\""}},
        {"--answer no import" + Q(glc) + " --add-all --rename-source Lab", 0, {}, {"marked Check"}},
        {"list", 0, {"^1\tN-BK7\tSCHOTT\n", "\n4\tN-BK7\tLab\n"}},
        // Export and read back.
        {"export" + out + " 2", 0},
        {"import" + out + " --json", 0, {"\"SF5\"", "!\"N-BK7\"", "\"refitError\""}},
        {f6, 0, {}, {"f6.agf: 1 staged, 1 refitted", "!" + notice, "!see this message again"}},
        {"--verbose" + f6, 0, {}, {notice, "!see this message again"}},
        {"--version", 0, {std::string("=ostrel-cli ") + ProgramVersion() + "\n"}},
        // The commands that print data write JSON.
        {"glasscode 1.5168 64.17 --json", 0, {"^{", "\"GlassCode\": 517642"}},
        {"about --json", 0, {"^{", "\"version\""}},
    };
    for (const CliRow& row : rows) ExpectRow(dir, row);
}

}  // namespace
}  // namespace ostrel::testing
