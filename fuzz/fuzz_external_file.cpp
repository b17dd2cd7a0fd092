// USFenmark.dat, the custom glass file of the lens design program.
#include "core/external/external_file.h"
#include "fuzz_support.h"

using namespace ostrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::PutFile(kExternalFileName, data, size);
    std::vector<MaterialRecord> records;
    FileError error;
    ReadExternalFile(fuzz::Folder().string(), records, error);
    return 0;
}
