#pragma once
// Set-up shared by the command-line tests: lists written as the program stores them, the
// demonstration catalogue and the import samples.
#include <gtest/gtest.h>

#include <string>
#include <vector>

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

inline std::string ImportSample(const std::string& name) {
    return std::string(OSTREL_TEST_DATA) + "/import/" + name;
}

inline std::string DemoCatalogue() {
    return std::string(OSTREL_TEST_DATA) + "/../../data/demo/demo_glasses.csv";
}

// Runs a command that must succeed.
inline CliResult RunOk(const TempDir& dir, const std::string& args) {
    CliResult r = RunCliIn(dir, args);
    EXPECT_EQ(r.status, 0) << args << ": " << r.err;
    return r;
}

// Installs the demonstration programs in DEMO, from the demonstration catalogue.
inline CliResult InstallDemo(const TempDir& dir, const std::string& dataDir,
                             const std::string& demo) {
    return RunCliWithDataDir(dir, dataDir,
                             "demo \"" + demo + "\" --catalogue \"" + DemoCatalogue() + "\"");
}

}  // namespace ostrel::testing
