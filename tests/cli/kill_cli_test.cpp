// A command killed at any moment leaves the custom list, each custom glass file and the
// glass database wholly as they were or wholly as the command makes them, and every one of
// them loads. The command runs in a child process that kills itself (SIGKILL) at its k-th
// step that changes a file or the database, for every k up to the uninterrupted run.
// Names with quotes, semicolons, percent signs and SQL words travel through all of them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "cli_fixture.h"
#include "core/external/external_file.h"
#include "core/external/external_fixture.h"
#include "core/external/kelmora_database.h"
#include "core/material/glasses_list.h"
#include "core/platform/sqlite_database.h"

namespace ostrel::testing {
namespace {

namespace fs = std::filesystem;

// Names that a text joined into a statement or a format would break.
const std::vector<std::pair<std::string, std::string>> kNames = {
    {"O'Hara \"K5\"", "Lab"},
    {"A;B;C", "Lab %_"},
    {"100% SiO2", "Lab"},
    {"'; DROP TABLE GlassData;--", "Lab"},
    {"SELECT * FROM Archive", "x' OR '1'='1"},
};

std::string ListImage(double b1) {
    std::vector<MaterialRecord> list;
    for (const auto& [name, source] : kNames) list.push_back(ReadyMaterial(name, source, b1));
    return ListBytes(list);
}

// What a command may change, each part as it loads.
struct State {
    std::string list, lumbrak, sextane, database;
    std::string content;  // the database without the row numbers it gives out
};

const std::pair<const char*, std::string State::*> kParts[] = {{"list", &State::list},
                                                               {"Lumbrak file", &State::lumbrak},
                                                               {"Sextane file", &State::sextane},
                                                               {"database", &State::database}};

class KillCli : public ::testing::Test {
  protected:
    void SetUp() override {
        fs::create_directory(work);
        CliResult r = InstallDemo(dir, work.string(), (work / "demo").string());
        ASSERT_EQ(r.status, 0) << r.err;
    }

    CliResult Run(const std::string& args) { return RunCliWithDataDir(dir, work.string(), args); }

    std::string Folder(const char* program) const {
        return (work / "demo" / program).string() + "/";
    }

    // The state, each part read as the program reads it; a part that does not load fails.
    State Now() {
        State s;
        const CliResult listed = Run("list");
        EXPECT_EQ(listed.status, 0) << listed.err;
        s.list = listed.out;
        for (auto [program, text] : {std::pair{"Lumbrak", &s.lumbrak}, {"Sextane", &s.sextane}}) {
            std::vector<MaterialRecord> records;
            FileError error;
            EXPECT_TRUE(ReadExternalFile(Folder(program), records, error)) << error.message;
            const std::string path = Folder(program) + kExternalFileName;
            *text = fs::exists(path) ? ReadFileBytes(path) : "<none>";
        }
        DbError error;
        auto db = OpenSqliteDatabase(Folder("Kelmora") + kGlassDatabaseName, false, error);
        EXPECT_TRUE(db) << error.message;
        if (!db) return s;
        for (const char* table : {kTableCurrent, kTableArchive}) {
            std::vector<DbRow> rows;
            EXPECT_TRUE(db->FindRows(table, {}, rows, error)) << error.message;
            for (const auto& row : rows) {
                std::string values;
                for (const auto& v : row.Values()) values += "|" + DbText(v);
                s.database += table + values + '\n';
                s.content += table + values.substr(values.find('|', 1)) + '\n';
            }
        }
        return s;
    }

    // Kills `command` at every step in turn and checks each part after each kill.
    void KillAtEveryStep(const std::string& joined) {
        fs::copy(work, dir / "start", fs::copy_options::recursive);
        const State before = Now();
        ASSERT_EQ(Run(joined).status, 0);
        const State after = Now();
        ASSERT_TRUE(std::any_of(std::begin(kParts), std::end(kParts), [&](const auto& p) {
            return before.*p.second != after.*p.second;
        }));
        int kills = 0;
        for (int k = 1;; ++k) {
            ASSERT_LT(k, 400) << "the command never ran to its end";
            fs::remove_all(work);
            fs::copy(dir / "start", work, fs::copy_options::recursive);
            // The command kills itself at its k-th changing step, or runs to its end.
            setenv("OSTREL_KILL_AT_STEP", std::to_string(k).c_str(), 1);
            const int status = Run(joined).status;
            unsetenv("OSTREL_KILL_AT_STEP");
            if (status != -1 && status != 128 + 9) break;  // SIGKILL, seen directly or by the shell
            ++kills;
            const State s = Now();
            for (const auto& [what, part] : kParts) {
                EXPECT_TRUE(s.*part == before.*part || s.*part == after.*part)
                    << what << ", killed at " << k;
            }
            // The command run again finishes the work.
            Run(joined);
            const State again = Now();
            EXPECT_TRUE(again.lumbrak == after.lumbrak && again.sextane == after.sextane &&
                        again.content == after.content)
                << "run again after a kill at " << k;
            if (HasFailure()) return;
        }
        EXPECT_GT(kills, 2);
        EXPECT_TRUE(Now().database == after.database);
    }

    TempDir dir;
    fs::path work = dir / "work";
};

// The list and the files hold names as fixed fields; the database is where a name could
// break a statement.
TEST_F(KillCli, NamesTravelUnchangedIntoTheDatabase) {
    WriteFileBytes(work / kCustomFileName, ListImage(1.03961212));
    ASSERT_EQ(Run("update --all").status, 0);
    const std::string db = Run("db list").out;
    EXPECT_EQ(std::count(db.begin(), db.end(), '\n'), 39 + 5);  // the demo's glasses stay
    for (const auto& [name, source] : kNames) {
        EXPECT_NE(db.find("\t" + name + "\t" + source + "\t"), std::string::npos) << db;
    }
}

// Each command runs over a list that the first update left behind, then changed as given.
TEST_F(KillCli, ListSaveUpdateAndSynchronise) {
    const struct {
        const char* first;
        int kept;  // records of the changed list, 0 for the list unchanged
        const char* command;
    } cases[] = {
        {"update 1", 0, "duplicate 2 'Copy of A;B;C'"},  // the database differs only by the list
        {"update 1 2", 5, "update --all"},
        {"update --all", 3, "update --sync"},
    };
    fs::copy(work, dir / "installed", fs::copy_options::recursive);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.command);
        fs::remove_all(work);
        fs::remove_all(dir / "start");
        fs::copy(dir / "installed", work, fs::copy_options::recursive);
        WriteFileBytes(work / kCustomFileName, ListImage(1.03961212));
        ASSERT_EQ(Run(c.first).status, 0);
        if (c.kept) {
            WriteFileBytes(work / kCustomFileName,
                           ListImage(1.1).substr(0, c.kept * kMaterialRecordSize));
        }
        KillAtEveryStep(c.command);
        if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace ostrel::testing
