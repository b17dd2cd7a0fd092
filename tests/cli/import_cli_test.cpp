// The command line in scripts: import and export (the grid as TSV and JSON, adding, a backup
// that reads back), several files in one import with a summary of each, notices only when
// asked for, its version, and JSON from every command that prints data.
#include <gtest/gtest.h>

#include <string>

#include "cli_fixture.h"
#include "core/platform/install_paths.h"

namespace ostrel::testing {
namespace {

std::string Q(const std::string& path) {
    return " '" + path + "'";
}

TEST(ImportCli, GridAddExportAndJson) {
    TempDir dir;
    WriteFileBytes(dir / "curve.csv", "300,0.46\n500,0.001\n");
    const std::string glc = Q(ImportSample("sample.glc")), out = Q((dir / "b.glz").string());
    const CliRow rows[] = {
        {"import" + glc,
         0,
         {"^Glass\tSource\tWaveband [nm]\tIndex range\tStatus\tRefit error [mean]\tCheck\n",
          "N-BK7\tSCHOTT\t400.0 - 700.0\t", "\tCheck\t"}},  // SF5 disagrees with its file
        {"import" + glc + " --add-all --rename-source Lab", 0},
        {"list", 0, {"=1\tN-BK7\tLab\n2\tSF5\tLab\n"}},
        // Export and read back.
        {"export" + out + " 2", 0},
        {"import" + out + " --json", 0, {"\"SF5\"", "!\"N-BK7\"", "\"refitError\""}},
        // A failed read shows what was read before it.
        {"import" + Q(ImportSample("bad_number.agf")), 1, {"OK1\t"}, {"glass BAD2"}},
        {"--version", 0, {std::string("=ostrel-cli ") + ProgramVersion() + "\n"}},
        // Every command that prints data writes JSON.
        {"glasscode 1.5168 64.17 --json", 0, {"^{", "\"GlassCode\": 517642"}},
        {"index --polytype 2 --coef 1.03961212,0.231792344,1.01046945,0.00600069867,"
         "0.0200179144,103.560653 --wave 587.56 --json",
         0,
         {"^[", "\"Index\": 1.51"}},
        {"transtable" + Q((dir / "curve.csv").string()) + " --json", 0, {"^{", "\"CC\""}},
        {"paths --json", 0, {"^{", "\"PathKelmora\""}},
        {"about --json", 0, {"^{", "\"version\""}},
    };
    for (const CliRow& row : rows) ExpectRow(dir, row);
}

// SF5 of the sample disagrees with its file: TSV and JSON give its status "Check", and
// adding it goes through the question, answered by --answer.
TEST(ImportCli, CheckGlassesShowTheirStatusAndAreAddedOnlyOnYes) {
    for (const char* answer : {"yes", "no"}) {
        TempDir dir;
        ExpectRow(dir, {std::string("--answer ") + answer + " import" +
                            Q(ImportSample("sample.glc")) + " --add-all --json",
                        0,
                        {"\"status\": \"Check\"", "\"status\": \"OK\""},
                        {"marked Check"}});
        ExpectRow(dir, {"list",
                        0,
                        {answer[0] == 'y' ? "=1\tN-BK7\tSCHOTT\n2\tSF5\tSCHOTT\n"
                                          : "=1\tN-BK7\tSCHOTT\n"}});
    }
}

TEST(ImportCli, ImportsSeveralFilesWithASummaryOfEach) {
    TempDir dir;
    const std::string glc = ImportSample("sample.glc"), gla = ImportSample("sample.gla");
    const CliRow rows[] = {
        {"import" + Q(glc) + Q(gla) + " --add-all",
         0,
         {"^File\t", "\n" + glc + "\tN-BK7\t", "\n" + gla + "\t"},
         {glc + ": 2 staged, 0 refitted", gla + ": "}},
        {"list", 0, {"=1\tN-BK7\tSCHOTT\n2\tSF5\tSCHOTT\n3\tGLA1\tOLDSRC\n"}},
        // Material 2 is read alone, and is what the list shows there.
        {"show 2 --json", 0, {"\"SF5\""}},
        // A file that cannot be read fails the run, the others are still read.
        {"import" + Q(ImportSample("bad_number.agf")) + Q(glc) + " --json",
         1,
         {"\"file\": \"" + glc + "\""}},
    };
    for (const CliRow& row : rows) ExpectRow(dir, row);
}

TEST(ImportCli, NoticesAreShownOnlyWhenVerbose) {
    const std::string notice = "Enhanced import: Sept 2004";
    // An AGF formula without a stored form is refitted, which brings the refit notice.
    std::string agf = ReadFileBytes(ImportSample("chengdu.agf"));
    agf.replace(agf.find("NM G1 2 "), 8, "NM G1 6 ");
    for (const bool verbose : {false, true}) {
        TempDir dir;
        WriteFileBytes(dir / "f6.agf", agf);
        ExpectRow(dir, {std::string(verbose ? "--verbose " : "") + "import" +
                            Q((dir / "f6.agf").string()) + " --refit-all",
                        0,
                        {},
                        {"f6.agf: 1 staged, 1 refitted", (verbose ? "" : "!") + notice,
                         "!see this message again"}});
    }
}

}  // namespace
}  // namespace ostrel::testing
