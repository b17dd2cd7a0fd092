// Every command refuses a bad argument before it runs: a message on stderr naming the
// argument, exit status 2, nothing written. A command that cannot do its work says why with
// status 1 and changes nothing either.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "cli_fixture.h"
#include "core/material/glasses_list.h"

namespace ostrel::testing {
namespace {

struct BadArgument {
    const char* args;  // "{dir}" stands for the test's folder, "{data}" for the import samples
    const char* said;  // a part of the message, or all of it when it ends the line
    int status = 2;
};

class RefusalCli : public ::testing::TestWithParam<BadArgument> {};

TEST_P(RefusalCli, SaysWhyAndChangesNothing) {
    TempDir dir;
    std::filesystem::create_directory(dir / "folder");
    // A list of three, so that ranges inside it are good and only the bad one fails.
    const std::string list =
        ListBytes({NamedRecord("A", "S"), NamedRecord("B", "S"), NamedRecord("C", "S")});
    WriteFileBytes(dir / kCustomFileName, list);
    WriteFileBytes(dir / "empty.csv", "# no glass\n");

    const auto expand = [&](std::string text) {
        for (const auto& [mark, with] :
             {std::pair<std::string, std::string>{"{dir}", dir.path()}, {"{data}", Data("")}}) {
            for (size_t at; (at = text.find(mark)) != mark.npos;)
                text.replace(at, mark.size(), with);
        }
        return text;
    };
    const CliResult run = RunCliIn(dir, expand(GetParam().args));
    const std::string said = expand(GetParam().said);
    EXPECT_EQ(run.status, GetParam().status) << run.err;
    if (!said.empty() && said.back() == '\n') {
        EXPECT_EQ(run.err, said);
        EXPECT_EQ(run.out, "");
    } else {
        EXPECT_NE(run.err.find(said), std::string::npos) << run.err;
    }
    EXPECT_TRUE(ReadFileBytes(dir / kCustomFileName) == list);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, RefusalCli,
    ::testing::Values(
        BadArgument{"glasscode abc 1", "ND: \"abc\" is no finite number"},
        BadArgument{"glasscode 1.5168", ""}, BadArgument{"import x.txt", ""},
        BadArgument{"index --polytype 5 --coef 2.25 --wave 500",
                    "--polytype: \"5\" is no dispersion form"},
        BadArgument{"index --polytype 1 --coef 2.25 --wave -500", "--wave: -500 is refused"},
        BadArgument{"fit {dir}/folder --polytype 2", "is a folder, not a file"},
        BadArgument{"melt --parent-source S --parent P --code m1 --sheet 1,2", ""},
        BadArgument{"map --out {dir}/a.txt", "The map is written as FILE.svg or FILE.png\n"},
        BadArgument{"import {dir}/two.glz --add 5 3", "The range is reversed: 5 to 3"},
        BadArgument{"import {data}/sample.glc {data}/sample.gla --add 1 1", ""},
        BadArgument{"import {data}/sample.glc --add 2 5",
                    "No staged materials 2 to 5 in an import of 2"},
        BadArgument{"db restore 2.5", "ID: \"2.5\" is no GlassID"},
        BadArgument{"demo {dir}/demo --catalogue {dir}/empty.csv",
                    "the demo catalogue holds no glass"},
        BadArgument{"duplicate 1 ''", "NEWNAME: a name or source cannot be blank"},
        BadArgument{"duplicate 1 'Ωmega'", "Character 1, \"Ω\" (U+03A9), is not one of"},
        // refusals of the work itself
        BadArgument{"duplicate 1 c", "", 1},  // C - S is in the list
        BadArgument{"transtable {dir}/none.csv", "Cannot read {dir}/none.csv\n", 1}));

}  // namespace
}  // namespace ostrel::testing
