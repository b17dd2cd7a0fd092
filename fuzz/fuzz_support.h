#pragma once
// What the fuzz targets share. The readers take a file name, so each input is written to a
// file in a folder of the fuzzing process's own (below $TMPDIR, removed at exit). The few
// boxes a reader may show are answered by the core's QuietDialogs.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "core/material/material_record.h"
#include "core/platform/dialogs.h"

namespace ostrel::fuzz {

// The process's own folder, made on first use.
const std::filesystem::path& Folder();

// Writes the input to `name` below Folder() (sub-folders made as needed) and returns its
// full path.
std::filesystem::path PutFile(const std::string& name, const uint8_t* data, size_t size);

// Empties Folder(), for readers that look at every file in it.
void ClearFolder();

// Stops the run (abort, so that the fuzzer keeps the input) when `holds` is false; `what`
// names the broken rule in the report.
void Expect(bool holds, const char* what);

// The rule every record a reader hands on must keep: its point counts fit their tables (the
// forms and writers index the tables by them).
void CheckRecords(const std::vector<MaterialRecord>& records);

// The rules of a catalogue read (AGF, GLC): one refit error and one stated index per
// record, refits among the records, and the records the rule of CheckRecords.
template <typename Reader>
void CheckCatalogueRead(const Reader& reader, const std::vector<MaterialRecord>& records, int count,
                        int refitCount, const std::vector<float>& refitErrors) {
    Expect(count == static_cast<int>(records.size()), "count is the number of records");
    Expect(refitErrors.size() == records.size(), "one refit error per record");
    Expect(reader.stated().size() == records.size(), "one stated index per record");
    Expect(refitCount >= 0 && refitCount <= count, "refits are among the records");
    CheckRecords(records);
}

// A single-material file (GLA, GLS) read by Reader: the one material, or the reason why not.
template <typename Reader>
int ReadSingleMaterial(const char* name, const uint8_t* data, size_t size) {
    const auto path = PutFile(name, data, size);
    Reader reader;
    std::vector<MaterialRecord> records;
    int16_t ok = 0;
    reader.ReadFile(path.string(), records, ok);
    Expect(ok == kTrue ? records.size() == 1 : !reader.failure().empty(),
           "a read gives the one material or says why not");
    CheckRecords(records);
    return 0;
}

}  // namespace ostrel::fuzz
