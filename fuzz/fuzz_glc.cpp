// GLC catalogues. An odd input length leaves the transmission tables for later.
#include "core/import/import_oslo_glc.h"
#include "fuzz_support.h"

using namespace ostrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto path = fuzz::PutFile("fuzz.glc", data, size);
    QuietDialogs dialogs;
    ImportOptions options;
    options.leaveTransTables = size % 2 == 1;
    CImportOsloGLC reader(dialogs, options);
    std::vector<MaterialRecord> records;
    std::vector<float> refitErrors;
    int count = 0, refitCount = 0;
    int16_t ok = 0;
    reader.ReadFile(path.string(), records, count, refitCount, refitErrors, ok);
    fuzz::Expect(ok == kTrue || (ok == kFalse && count == 0), "a failed read has no records");
    fuzz::CheckCatalogueRead(reader, records, count, refitCount, refitErrors);
    return 0;
}
