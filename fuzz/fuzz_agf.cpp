// AGF catalogues. The input's length chooses the options: an odd length refits the
// formulas that have no stored form, every other pair of lengths leaves the transmission
// tables for later.
#include "core/import/import_zemax_agf.h"
#include "fuzz_support.h"

using namespace ostrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto path = fuzz::PutFile("FUZZ.AGF", data, size);
    QuietDialogs dialogs;
    ImportOptions options;
    options.refitOtherFormulas = size % 2 == 1;
    options.leaveTransTables = size / 2 % 2 == 1;
    CImportZemaxAGF reader(dialogs, options);
    std::vector<MaterialRecord> records;
    std::vector<float> refitErrors;
    std::string errorText;
    int count = 0, refitCount = 0;
    int16_t ok = 0;
    reader.ReadFile(path.string(), "FUZZ.AGF", records, count, refitCount, refitErrors, errorText,
                    8, ok);
    fuzz::Expect(ok == kTrue || ok == kFalse, "ok is a flag");
    fuzz::Expect(ok == kTrue || !errorText.empty(), "a failed read says why");
    fuzz::CheckCatalogueRead(reader, records, count, refitCount, refitErrors);
    return 0;
}
