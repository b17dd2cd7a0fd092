// GLZ material text files (the backup format).
#include "core/import/import_new_glz.h"
#include "fuzz_support.h"

using namespace ostrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto path = fuzz::PutFile("input.glz", data, size);
    fuzz::QuietDialogs dialogs;
    CImportNewGLZ reader(dialogs);
    std::vector<MaterialRecord> records;
    int count = 0;
    int16_t ok = 0;
    reader.ReadFile(path.string(), records, count, ok);
    return 0;
}
