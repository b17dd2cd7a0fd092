#pragma once
// Wavebands of the melt maker: named lists of wavelengths that fill the wavelength column
// of the melt grid in one click. Three are built in; the user's own are kept in
// "UserData/MeltWaveBand.lst" below the data folder, one a line as
// name|count|wave|wave|... (nanometres).
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {

inline constexpr const char* kMeltWaveBandFolder = "UserData";
inline constexpr const char* kMeltWaveBandFile = "MeltWaveBand.lst";

struct MeltWaveBand {
    std::string Name;
    int16_t Count = 0;
    std::vector<float> Waves;  // nm, Count entries
    bool operator==(const MeltWaveBand&) const = default;
};

// "Ohara - standard", "Ohara - advanced", "Schott - standard".
std::vector<MeltWaveBand> FixedWaveBands();

// One line of the file; false for a line with too few fields, or a count or wavelength
// that is not a number.
bool ParseWaveBandLine(std::string_view line, MeltWaveBand& band);
// The line for a waveband, numbers in their shortest decimal form.
std::string WaveBandLine(const MeltWaveBand& band);

// The fixed entries followed by every good line of the file. The folder is made when
// missing; a file that cannot be read leaves the fixed entries alone.
std::vector<MeltWaveBand> LoadWaveBands(const std::string& dataFolder);
// Rewrites the file whole with the entries from the second on. False when it could not be
// written.
bool SaveWaveBands(const std::string& dataFolder, const std::vector<MeltWaveBand>& bands);

}  // namespace ostrel
