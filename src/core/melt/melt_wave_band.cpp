#include "core/melt/melt_wave_band.h"

#include <charconv>
#include <filesystem>
#include <system_error>

#include "core/platform/file_io.h"
#include "core/platform/number_text.h"
#include "core/platform/text.h"

namespace fs = std::filesystem;

namespace ostrel {

std::vector<MeltWaveBand> FixedWaveBands() {
    return {
        {"Ohara - standard", 4, {656.273f, 587.562f, 486.133f, 435.834f}},
        // 706.519 belongs to the advanced band only.
        {"Ohara - advanced",
         10,
         {852.11f, 706.519f, 656.273f, 643.847f, 587.562f, 546.074f, 486.133f, 479.991f, 435.834f,
          404.656f}},
        {"Schott - standard",
         7,
         {656.273f, 643.847f, 587.562f, 546.074f, 486.133f, 479.991f, 435.834f}},
    };
}

namespace {

std::vector<std::string_view> SplitBar(std::string_view line) {
    std::vector<std::string_view> parts;
    size_t start = 0;
    while (true) {
        const size_t bar = line.find('|', start);
        if (bar == std::string_view::npos) {
            parts.push_back(line.substr(start));
            return parts;
        }
        parts.push_back(line.substr(start, bar - start));
        start = bar + 1;
    }
}

}  // namespace

bool ParseWaveBandLine(std::string_view line, MeltWaveBand& band) {
    while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) line.remove_suffix(1);
    const auto parts = SplitBar(line);
    if (parts.size() < 2 || !IsValidInteger(parts[1])) return false;
    const double count = Val(parts[1]);
    if (count < 0 || parts.size() < 2 + static_cast<size_t>(count)) return false;
    MeltWaveBand b;
    b.Name = std::string(parts[0]);
    b.Count = static_cast<int16_t>(count);
    for (int i = 0; i < b.Count; ++i) {
        const std::string_view text = parts[2 + static_cast<size_t>(i)];
        if (!IsValidNumber(text)) return false;
        b.Waves.push_back(static_cast<float>(Val(text)));
    }
    band = std::move(b);
    return true;
}

std::string WaveBandLine(const MeltWaveBand& band) {
    std::string line = band.Name + "|" + std::to_string(band.Count);
    for (int i = 0; i < band.Count && i < static_cast<int>(band.Waves.size()); ++i) {
        line += "|" + ShortestFloatText(band.Waves[static_cast<size_t>(i)]);
    }
    return line;
}

std::vector<MeltWaveBand> LoadWaveBands(const std::string& dataFolder) {
    std::vector<MeltWaveBand> bands = FixedWaveBands();
    const fs::path folder = fs::path(dataFolder) / kMeltWaveBandFolder;
    std::error_code ec;
    fs::create_directories(folder, ec);  // a folder that cannot be made is no error here
    std::string content;
    FileError error;
    if (!ReadWholeFile(folder / kMeltWaveBandFile, content, error)) return bands;
    for (const auto& line : SplitLines(content)) {
        MeltWaveBand band;
        if (ParseWaveBandLine(line, band)) bands.push_back(std::move(band));
    }
    return bands;
}

bool SaveWaveBands(const std::string& dataFolder, const std::vector<MeltWaveBand>& bands) {
    const fs::path folder = fs::path(dataFolder) / kMeltWaveBandFolder;
    std::error_code ec;
    fs::create_directories(folder, ec);
    // The first entry stays out of the file; the others, the fixed ones included, go in.
    std::string content;
    for (size_t i = 1; i < bands.size(); ++i) content += WaveBandLine(bands[i]) + "\n";
    FileError error;
    return WriteFileAtomic(folder / kMeltWaveBandFile, content, error);
}

}  // namespace ostrel
