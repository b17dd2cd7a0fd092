// GLS single-material files.
#include "core/import/import_old_files.h"
#include "fuzz_support.h"

using namespace ostrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto path = fuzz::PutFile("fuzz.gls", data, size);
    CImportOldKelmora reader;
    std::vector<MaterialRecord> records;
    int16_t ok = 0;
    reader.ReadFile(path.string(), records, ok);
    fuzz::Expect(ok == kTrue ? records.size() == 1 : !reader.failure().empty(),
                 "a read gives the one material or says why not");
    fuzz::CheckRecords(records);
    return 0;
}
