// The custom material list, in its current layout and the three older ones. The first byte
// of the input chooses the layout (the file name looked for); the rest is the file.
#include "core/material/glasses_list.h"
#include "core/platform/clock.h"
#include "core/platform/error_display.h"
#include "fuzz_support.h"

using namespace ostrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    static const char* const names[] = {kCustomFileName, kCustomFileV2Name, kCustomFileV1Name,
                                        kCustomFileV0Name};
    fuzz::ClearFolder();
    fuzz::PutFile(names[data[0] % 4], data + 1, size - 1);
    QuietDialogs dialogs;
    SystemClock clock;
    ErrorDisplayer errors(fuzz::Folder().string(), dialogs, clock);
    GlassesList list(fuzz::Folder().string(), errors);
    list.LoadCustomFile();
    fuzz::CheckRecords(list.CustomList());
    return 0;
}
