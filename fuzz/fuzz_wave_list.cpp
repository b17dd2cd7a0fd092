// The user's own list of wavelengths.
#include "core/wave/wave_names.h"
#include "fuzz_support.h"

using namespace ostrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::PutFile(std::string(kCustomWaveFolder) + "/" + kCustomWaveFile, data, size);
    std::vector<WaveEntry> waves;
    LoadCustomWaves(fuzz::Folder().string(), waves);
    for (const auto& entry : waves) {
        fuzz::Expect(!entry.Name.empty(), "every wavelength has a name");
        std::string mark;
        FormatWaveName(entry, true);
        StandardWaveMark(entry.Wave, mark);
        AlignedWaveText(entry.Wave);
    }
    return 0;
}
