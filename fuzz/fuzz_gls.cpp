// GLS single-material files.
#include "core/import/import_old_files.h"
#include "fuzz_support.h"

using namespace ostrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    return fuzz::ReadSingleMaterial<CImportOldKelmora>("fuzz.gls", data, size);
}
