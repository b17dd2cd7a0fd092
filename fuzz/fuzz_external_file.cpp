// USFenmark.dat, the custom glass file of the lens design program: the raw records the
// updates merge into, and the material records the forms list.
#include <cstring>

#include "core/external/external_file.h"
#include "fuzz_support.h"

using namespace ostrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::PutFile(kExternalFileName, data, size);
    // The program's folder paths end in a separator; the file name is appended to them.
    const std::string folder = fuzz::Folder().string() + "/";

    std::vector<ExternalRecord> file;
    bool present = false;
    FileError error;
    if (ReadExternalRecords(folder, file, present, error)) {
        fuzz::Expect(present, "the file is found");
        // A short last record counts as a whole one.
        fuzz::Expect(file.size() <= (size + kExternalRecordSize - 1) / kExternalRecordSize,
                     "no more records than the file holds");
        for (const auto& rec : file) {
            fuzz::Expect(!rec.GlassName.IsBlank() && !rec.GlassName.HasNul(),
                         "every record has a usable name");
            unsigned char image[kExternalRecordSize], again[kExternalRecordSize];
            ToBytes(rec, image);
            ExternalRecord copy;
            FromBytes(image, copy);
            ToBytes(copy, again);
            fuzz::Expect(std::memcmp(image, again, sizeof image) == 0,
                         "the record image reads back unchanged");
        }
    }

    std::vector<MaterialRecord> records;
    if (ReadExternalFile(folder, records, error)) {
        fuzz::Expect(records.size() == file.size(), "one material per record");
    }
    fuzz::CheckRecords(records);
    return 0;
}
