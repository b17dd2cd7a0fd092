#pragma once
// Set-up shared by the command-line tests: lists written as the program stores them and the
// demonstration catalogue; the import samples are those of the import tests.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/import/import_fixture.h"
#include "core/material/material_record_codec.h"
#include "support/run_cli.h"

namespace ostrel::testing {

inline MaterialRecord NamedRecord(const std::string& name, const std::string& source) {
    MaterialRecord rec = ClearedMaterialRecord();
    rec.General.GlassName.Set(name);
    rec.General.Source.Set(source);
    return rec;
}

// The bytes of a custom list holding these records in turn.
inline std::string ListBytes(const std::vector<MaterialRecord>& list) {
    std::string bytes;
    for (const auto& rec : list) {
        const auto image = ToBytes(rec);
        bytes.append(reinterpret_cast<const char*>(image.data()), image.size());
    }
    return bytes;
}

inline std::string DemoCatalogue() {
    return std::string(OSTREL_TEST_DATA) + "/../../data/demo/demo_glasses.csv";
}

// A run of the command line as one row of a table: what it is given, its exit status and
// texts its output and its errors must hold. A text that begins with '=' must be the whole
// output, with '^' its start, with '!' it must not be there; an empty list asks nothing.
// A file of the test's folder named by `file` must hold the texts of `inFile` alike.
struct CliRow {
    std::string args;
    int status = 0;
    std::vector<std::string> out = {}, err = {};
    std::string file = {};
    std::vector<std::string> inFile = {};
};

inline void ExpectHolds(const std::string& stream, const std::string& got,
                        const std::vector<std::string>& wants) {
    for (const auto& want : wants) {
        if (!want.empty() && want[0] == '=') {
            EXPECT_EQ(got, want.substr(1)) << stream;
        } else if (!want.empty() && want[0] == '^') {
            EXPECT_EQ(got.rfind(want.substr(1), 0), 0u) << stream << ":\n" << got;
        } else if (!want.empty() && want[0] == '!') {
            EXPECT_EQ(got.find(want.substr(1)), std::string::npos) << stream << ":\n" << got;
        } else {
            EXPECT_NE(got.find(want), std::string::npos) << stream << " lacks " << want << ":\n"
                                                         << got;
        }
    }
}

// Runs the row in dir (with another data folder when given) and checks what it printed.
inline CliResult ExpectRow(const TempDir& dir, const CliRow& row, const std::string& data = {}) {
    SCOPED_TRACE(row.args);
    CliResult r = data.empty() ? RunCliIn(dir, row.args) : RunCliWithDataDir(dir, data, row.args);
    EXPECT_EQ(r.status, row.status) << r.err;
    ExpectHolds("stdout", r.out, row.out);
    ExpectHolds("stderr", r.err, row.err);
    if (!row.file.empty()) ExpectHolds(row.file, ReadFileBytes(dir / row.file), row.inFile);
    return r;
}

// Installs the demonstration programs in DEMO, from the demonstration catalogue.
inline CliResult InstallDemo(const TempDir& dir, const std::string& dataDir,
                             const std::string& demo) {
    return RunCliWithDataDir(dir, dataDir,
                             "demo \"" + demo + "\" --catalogue \"" + DemoCatalogue() + "\"");
}

}  // namespace ostrel::testing
