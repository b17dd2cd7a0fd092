#pragma once
// Standard wavelengths: the spectral lines of the glass catalogues, laser lines and the
// usual wavelengths of transmission curves, and the labels they give a wavelength.
#include <cstdint>
#include <string>
#include <vector>

namespace ostrel {

// A named wavelength. The name holds up to two parts separated by "|": a short name and a
// note ("e  |Hg").
struct WaveEntry {
    std::string Name;
    float Wave = 0.0f;  // nm
    bool operator==(const WaveEntry&) const = default;
};

// Copies of the three tables, longest wavelength first.
std::vector<WaveEntry> GetGlassLines();
std::vector<WaveEntry> GetLaserLines();
std::vector<WaveEntry> GetTransLines();

// True when the two wavelengths lie no more than 0.05 nm apart.
bool WaveNear(float a, float b);

// The name split at "|": "" for an empty name; with tabbed, short name, a tab and note;
// otherwise short name, " |", note and "]".
std::string FormatWaveName(const WaveEntry& entry, bool tabbed);

// Looks the wavelength up among the glass lines, then the laser lines. On a hit returns -1
// with mark set to the row's name (FormatWaveName, not tabbed); otherwise 0 and " * ".
int16_t StandardWaveMark(float wave, std::string& mark);

// The wavelength as "0.0###" with leading blanks so that the points line up in a column:
// one from 10000 nm up, two from 1000 nm up, four below.
std::string AlignedWaveText(float wave);

// The user's own wavelengths: "WaveLen.lst" in "UserData" below the data folder, one entry
// a line as name "|" wavelength. A line without a number is skipped. The folder is created
// when missing. False (and waves left as they were) when there is no such file.
inline constexpr const char* kCustomWaveFolder = "UserData";
inline constexpr const char* kCustomWaveFile = "WaveLen.lst";
bool LoadCustomWaves(const std::string& dataFolder, std::vector<WaveEntry>& waves);

}  // namespace ostrel
