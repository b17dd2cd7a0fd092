// GLC catalogues. An odd input length leaves the transmission tables for later.
#include "core/import/import_oslo_glc.h"
#include "fuzz_support.h"

using namespace ostrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto path = fuzz::PutFile("fuzz.glc", data, size);
    fuzz::QuietDialogs dialogs;
    ImportOptions options;
    options.leaveTransTables = size % 2 == 1;
    CImportOsloGLC reader(dialogs, options);
    std::vector<MaterialRecord> records;
    std::vector<float> refitErrors;
    int count = 0, refitCount = 0;
    int16_t ok = 0;
    reader.ReadFile(path.string(), records, count, refitCount, refitErrors, ok);
    fuzz::Expect(ok == kTrue || (ok == kFalse && count == 0), "a failed read has no records");
    fuzz::Expect(count == static_cast<int>(records.size()), "count is the number of records");
    fuzz::Expect(refitErrors.size() == records.size(), "one refit error per record");
    fuzz::Expect(reader.stated().size() == records.size(), "one stated index per record");
    fuzz::Expect(refitCount >= 0 && refitCount <= count, "refits are among the records");
    fuzz::CheckRecords(records);
    return 0;
}
