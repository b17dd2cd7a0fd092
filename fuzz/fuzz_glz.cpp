// GLZ material text files (the backup format).
#include "core/import/import_new_glz.h"
#include "fuzz_support.h"

using namespace ostrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto path = fuzz::PutFile("input.glz", data, size);
    QuietDialogs dialogs;
    CImportNewGLZ reader(dialogs);
    std::vector<MaterialRecord> records;
    int count = 0;
    int16_t ok = 0;
    reader.ReadFile(path.string(), records, count, ok);
    fuzz::Expect(ok == kTrue || (count == 0 && records.empty() && !reader.failure().empty()),
                 "a failed read keeps nothing and says where");
    fuzz::Expect(count == static_cast<int>(records.size()), "count is the number of records");
    fuzz::CheckRecords(records);
    return 0;
}
