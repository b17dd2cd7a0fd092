#include "core/wave/wave_names.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "core/platform/file_io.h"
#include "core/platform/number_text.h"
#include "core/platform/text.h"

namespace ostrel {
namespace {

const std::vector<WaveEntry>& GlassLines() {
    static const std::vector<WaveEntry> table = {
        {"   |Hg", 2325.42f},
        {"   |Hg", 1970.09f},
        {"   |Hg", 1529.582f},
        {" |Nd:glass", 1060.0f},
        {"t  |Hg", 1013.98f},
        {"s  |Cs", 852.11f},
        {"A'  |K: middle of pair", 768.1943f},
        {"r  |He", 706.5188f},
        {"C  |H alpha", 656.2725f},
        {"C'  |Cd", 643.8469f},
        {"  |HeNe laser", 632.8f},
        {"D  |Na: middle of pair", 589.2938f},
        {"d  |He", 587.5618f},
        {"e  |Hg", 546.074f},
        {"F  |H beta", 486.1327f},
        {"F'  |Cd", 479.9914f},
        {"g  |Hg", 435.8343f},
        {"h  |Hg", 404.6561f},
        {"i  |Hg", 365.0146f},
        {"   |Hg", 334.1478f},
        {"", 312.5663f},
        {"   |Hg", 296.7278f},
    };
    return table;
}

// Name and wavelength as the table gives them; the wavelength text is read on use.
struct LaserText {
    const char* name;
    const char* wave;
};

const std::vector<WaveEntry>& LaserLines() {
    static const std::vector<WaveEntry> table = [] {
        static const LaserText texts[] = {
            {"Er:YAG", "2940"},
            {"Ho:YAG", "2127"},
            {"Er:YLF", "1730"},
            {"Nd:YAG", "1570"},
            {"Telecom2", "1550"},
            {"Er:glass", "1535"},
            {"HeNe", "1523.1"},
            {"Nd:YLF", "1444"},
            {"Nd:YVO4", "1342"},
            {"Nd:YAG", "1340"},
            {"Nd:YLF", "1319"},
            {"Telecom1", "1300"},
            {"HeNe", "1152.3"},
            {"Nd:YAG, Nd:YVO4", "1064"},
            {"Nd:glass", "1060"},
            {"Nd:YLF", "1053"},
            {"Yb:YAG", "1030"},
            {"Diode (InGaAs)", "980"},
            {"Xe ion", "871.6"},
            {"Diode (InGaAsP)", "808"},
            {"Kr ion", "799.3"},
            {"Xe ion", "798.8"},
            {"Kr ion", "793.1"},
            {"Diode (GaAlAs)", "790"},
            {"Xe ion", "782.8"},
            {"Kr Ion", "752.5"},
            {"Xe Ion", "714.9"},
            {"Ruby |main", "694.3"},
            {"Ruby", "692.8"},
            {"Kr Ion", "676.4"},
            {"Diode (GaInP)", "670"},
            {"Kr Ion |main", "647.1"},
            {"Diode (InGaAlP)", "635"},
            {"HeNe |main", "632.8"},
            {"Au Vapour", "627.8"},
            {"Xe ion", "627.1"},
            {"HeNe", "611.8"},
            {"HeNe", "604.6"},
            {"Xe ion", "597.1"},
            {"HeNe", "594.1"},
            {"Cu Vapor", "578.2"},
            {"Kr Ion", "568.2"},
            {"HeNe", "543.3"},
            {"Xe ion", "541.9"},
            {"Nd:YAG |2nd", "532"},
            {"Kr Ion", "530.9"},
            {"Ar Ion", "528.7"},
            {"Kr Ion", "520.8"},
            {"Ar Ion |main2", "514.5"},
            {"Cu Vapor", "510.6"},
            {"Ar Ion", "501.7"},
            {"Ar Ion", "496.5"},
            {"Ar Ion |main1", "488"},
            {"Kr Ion", "482.5"},
            {"Ar Ion", "476.5"},
            {"Kr Ion", "476.2"},
            {"Ar Ion", "472.7"},
            {"Kr Ion", "468"},
            {"Ar Ion", "465.8"},
            {"Xe Ion", "460.3"},
            {"Ar Ion", "457.9"},
            {"Ar Ion", "454.5"},
            {"HeCd", "441.6"},
            {"N2", "428"},
            {"Kr Ion", "416"},
            {"Diode (GaN)", "415"},
            {"Ne ion", "371.3"},
            {"Ar Ion", "364"},
            {"Nd:YAG |3rd", "355"},
            {"Excimer (XeF)", "351"},
            {"Ne ion", "339.3"},
            {"Ne ion", "337.8"},
            {"N2", "337.1"},
            {"Ne ion", "334.5"},
            {"Ne ion", "332.4"},
            {"HeCd", "325"},
            {"Excimer (XeCl)", "308"},
            {"Nd:YAG |4th", "266"},
            {"Excimer (KrF)", "248"},
            {"Excimer (KrCl)", "222"},
            {"Nd:YAG |5th", "213"},
        };
        std::vector<WaveEntry> out;
        for (const auto& t : texts) out.push_back({t.name, static_cast<float>(Val(t.wave))});
        return out;
    }();
    return table;
}

const std::vector<WaveEntry>& TransLines() {
    static const std::vector<WaveEntry> table = [] {
        static const char* texts[] = {
            "2500", "2325.4", "1970.1", "1529.6", "1060.0", "700", "660", "620", "580", "546.1",
            "500",  "460",    "435.8",  "420",    "404.7",  "400", "390", "380", "370", "365",
            "350",  "334.1",  "320",    "310",    "300",    "290", "280", "270", "260", "250"};
        std::vector<WaveEntry> out;
        for (const char* t : texts) out.push_back({t, static_cast<float>(Val(t))});
        return out;
    }();
    return table;
}

}  // namespace

std::vector<WaveEntry> GetGlassLines() {
    return GlassLines();
}
std::vector<WaveEntry> GetLaserLines() {
    return LaserLines();
}
std::vector<WaveEntry> GetTransLines() {
    return TransLines();
}

bool WaveNear(float a, float b) {
    return std::fabs(a - b) <= 0.05f;
}

std::string FormatWaveName(const WaveEntry& entry, bool tabbed) {
    if (entry.Name.empty()) return {};
    const size_t bar = entry.Name.find('|');
    const std::string first = entry.Name.substr(0, bar);
    const std::string second =
        bar == std::string::npos ? std::string() : entry.Name.substr(bar + 1);
    return tabbed ? first + "\t" + second : first + " |" + second + "]";
}

int16_t StandardWaveMark(float wave, std::string& mark) {
    for (const auto* table : {&GlassLines(), &LaserLines()}) {
        for (const auto& e : *table) {
            if (WaveNear(wave, e.Wave)) {
                mark = FormatWaveName(e, false);
                return -1;
            }
        }
    }
    mark = " * ";
    return 0;
}

std::string AlignedWaveText(float wave) {
    // The wavelength as the 32-bit number it is, not its nearest double: 2325.42, not
    // 2325.4199.
    char buf[32];
    const auto res = std::to_chars(buf, buf + sizeof buf, wave);
    const std::string text = FormatNumber(Val(std::string_view(buf, res.ptr - buf)), "0.0###");
    if (wave >= 10000.0f) return " " + text;
    if (wave >= 1000.0f) return "  " + text;
    return "    " + text;
}

bool LoadCustomWaves(const std::string& dataFolder, std::vector<WaveEntry>& waves) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::path(dataFolder) / kCustomWaveFolder;
    std::error_code ec;
    fs::create_directories(folder, ec);
    const fs::path file = folder / kCustomWaveFile;
    if (!fs::is_regular_file(file, ec)) return false;
    std::string text;
    FileError error;
    if (!ReadWholeFile(file, text, error)) return false;

    std::vector<WaveEntry> out;
    for (const std::string& raw : SplitLines(text)) {
        std::string line = raw;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const size_t bar = line.rfind('|');
        const std::string name = bar == std::string::npos ? std::string() : line.substr(0, bar);
        const std::string number = bar == std::string::npos ? line : line.substr(bar + 1);
        if (!IsValidNumber(number)) continue;
        const auto wave = static_cast<float>(Val(number));
        const std::string shown = VbTrimCopy(name);
        out.push_back({shown.empty() ? VbTrimCopy(number) : shown, wave});
    }
    waves = std::move(out);
    return true;
}

}  // namespace ostrel
