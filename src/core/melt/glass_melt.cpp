#include "core/melt/glass_melt.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>

#include "core/material/catalogue_record.h"
#include "core/material/glasses_list.h"
#include "core/optics/index_fit.h"
#include "core/optics/index_from_polynomial.h"
#include "core/optics/least_squares.h"
#include "core/platform/file_io.h"
#include "core/platform/number_text.h"
#include "core/platform/text.h"
#include "core/wave/wave_names.h"

namespace fs = std::filesystem;

namespace ostrel {

std::string SpectralLetter(float waveNm) {
    for (const auto& line : GetGlassLines()) {
        if (!WaveNear(line.Wave, waveNm)) continue;
        std::string letter = line.Name.substr(0, line.Name.find('|'));
        letter.resize(2, ' ');
        return letter;
    }
    return "";
}

std::vector<double> MeltDifferences(const MaterialRecord& melt, const MaterialRecord& parent) {
    std::vector<double> diff;
    const auto& m = melt.Melt;
    for (int i = 0; i < m.MeltIndexPoints && i < kMaxMeltPoints; ++i) {
        int16_t ok = 0;
        const double n = IndexFromPolynomial(parent.General.PolyCoef, m.MeltIndexWave[i],
                                             parent.General.Polytype, ok);
        diff.push_back(m.MeltIndexValue[i] - n);
    }
    return diff;
}

void ResampleMeltIndices(MaterialRecord& melt, const MaterialRecord& parent,
                         const std::vector<double>& differences, Dialogs& dialogs) {
    auto& g = melt.General;
    const float step = static_cast<float>((g.IndexWvMax - g.IndexWvMin) / 20.0);

    const size_t n = differences.size();
    std::vector<double> x(n), y(n), weight(n, 1.0);
    for (size_t i = 0; i < n; ++i) {
        x[i] = static_cast<double>(melt.Melt.MeltIndexWave[i]);
        y[i] = differences[i];
    }

    // Downward from the longest wavelength, in 32-bit steps.
    std::array<double, kMeltGridPoints> grid{};
    int count = 0;
    const float wvMin = static_cast<float>(g.IndexWvMin);
    for (float w = static_cast<float>(g.IndexWvMax); w >= wvMin && count < kMeltGridPoints;
         w = w - step) {
        grid[static_cast<size_t>(count++)] = static_cast<double>(w);
    }
    g.IndexPoints = static_cast<int16_t>(count);

    std::array<double, kMeltGridPoints> smooth{};
    QuadraticSmooth(dialogs, static_cast<int>(n), x, y, weight, count, grid, smooth);

    auto& m = melt.Measured;
    m.IndexWave.fill(0);
    m.IndexWaveUm.fill(0);
    m.IndexValue.fill(0);
    m.IndexSquared.fill(0);
    m.IndexWeight.fill(0);
    for (int i = 0; i < count; ++i) {
        const float w = static_cast<float>(grid[static_cast<size_t>(i)]);
        int16_t ok = 0;
        const double parentIndex =
            IndexFromPolynomial(parent.General.PolyCoef, w, parent.General.Polytype, ok);
        m.IndexWave[i] = static_cast<double>(w);
        m.IndexWaveUm[i] = static_cast<double>(w) * 0.001;
        m.IndexValue[i] = parentIndex + smooth[static_cast<size_t>(i)];
        m.IndexSquared[i] = m.IndexValue[i] * m.IndexValue[i];
        m.IndexWeight[i] = 1.0f;
    }

    // Total transmission from the polynomial the record has before the refit.
    for (int i = 0; i < m.TransPoints && i < kMaxTransPoints; ++i) {
        int16_t ok = 0;
        const double idx = IndexFromPolynomial(g.PolyCoef, m.TransWave[i], g.Polytype, ok);
        m.TransTotal[i] = static_cast<float>(2.0 * idx / (idx * idx + 1.0) * m.TransInternal[i]);
    }
}

bool RefitMeltIndices(MaterialRecord& melt, const MaterialRecord& parent,
                      std::string& constantsText, Dialogs& dialogs) {
    auto& g = melt.General;
    int16_t coefCount = 0;
    int16_t result = 0;
    switch (g.Polytype) {
        case 1:
            result = FitSchott(coefCount, g.IndexPoints, constantsText, g.PolyCoef, melt.Measured,
                               dialogs);
            break;
        case 2:
            result = FitSellmeier(g.IndexPoints, 3, constantsText, g.PolyCoef, melt.Measured,
                                  parent.General.PolyCoef, kTrue, kTrue, dialogs);
            break;
        case 3:
            result = FitSchottPlus(coefCount, g.IndexPoints, constantsText, g.PolyCoef,
                                   melt.Measured, dialogs);
            break;
        case 4:
            result = FitCauchy(coefCount, g.IndexPoints, constantsText, g.PolyCoef, melt.Measured,
                               dialogs);
            break;
        case 6:
            result = FitSellmeier(g.IndexPoints, 5, constantsText, g.PolyCoef, melt.Measured,
                                  parent.General.PolyCoef, kTrue, kTrue, dialogs);
            break;
        default:
            result = 0;
    }
    return result != 0;
}

std::string BuildMeltName(MaterialRecord& melt) {
    const std::string name = melt.Melt.MeltParentName.Text() + " *" + melt.Melt.MeltCode.Text();
    melt.General.GlassName.Set(name);  // cut to 30 characters
    std::string key = UpperCp1252(VbTrim(melt.General.GlassName.Raw()));
    const std::string source = UpperCp1252(VbTrim(melt.General.Source.Raw()));
    if (!source.empty()) {
        key += source.front() == '[' ? " " + source : " [" + source + "]";
    }
    return Cp1252ToUtf8(key);
}

std::string MeltCaption(const std::string& sourceIn, const std::string& nameIn,
                        const std::string& codeIn) {
    const std::string source = VbTrimCopy(sourceIn);
    const std::string name = VbTrimCopy(nameIn);
    const std::string code = VbTrimCopy(codeIn);
    if (!code.empty()) return source + "  " + name + " *" + code;
    if (!source.empty()) return source + "  " + name + "  -  please enter a melt code!";
    return "<- select a parent glass for the melt";
}

namespace {

void ConstantsText(std::string& text, const MaterialRecord& rec) {
    const auto& c = rec.General.PolyCoef;
    switch (rec.General.Polytype) {
        case 1:
            SchottConstantsText(text, c);
            break;
        case 2:
            SellmeierConstantsText(text, c);
            break;
        case 3:
            SchottPlusConstantsText(text, c);
            break;
        case 4:
            CauchyConstantsText(text, c);
            break;
        default:
            break;
    }
}

}  // namespace

std::string MeltConstantsReport(const MaterialRecord& melt, const MaterialRecord& parent) {
    std::string text;
    const int16_t type = melt.General.Polytype;
    if (type >= 1 && type <= 4) {
        text = "Melt glass: ";
        ConstantsText(text, melt);
        text += "\n\nParent glass: ";
        ConstantsText(text, parent);
        text += "\n\n";
    }
    text += "WaveLen Min:   " + std::to_string(melt.General.IndexWvMin) + "nm\n";
    text += "WaveLen Max:   " + std::to_string(melt.General.IndexWvMax) + "nm";
    return text;
}

namespace {

// The shortest and longest wavelength of the measured pairs; false with none.
bool PairSpan(const MaterialRecord& melt, float& lo, float& hi) {
    const auto& m = melt.Melt;
    const int n = std::min<int>(m.MeltIndexPoints, kMaxMeltPoints);
    if (n < 1) return false;
    lo = hi = m.MeltIndexWave[0];
    for (int i = 1; i < n; ++i) {
        lo = std::min(lo, m.MeltIndexWave[static_cast<size_t>(i)]);
        hi = std::max(hi, m.MeltIndexWave[static_cast<size_t>(i)]);
    }
    return true;
}

}  // namespace

std::vector<WaveRange> ExtrapolatedRanges(const MaterialRecord& melt,
                                          const MaterialRecord& parent) {
    std::vector<WaveRange> ranges;
    const double bandLo = parent.General.IndexWvMin, bandHi = parent.General.IndexWvMax;
    float lo = 0, hi = 0;
    if (!(bandHi > bandLo) || !PairSpan(melt, lo, hi)) return ranges;
    if (lo > bandLo) ranges.push_back({bandLo, std::min<double>(lo, bandHi)});
    if (hi < bandHi) ranges.push_back({std::max<double>(hi, bandLo), bandHi});
    return ranges;
}

bool OutsideMeltPairs(const MaterialRecord& melt, float waveNm) {
    float lo = 0, hi = 0;
    return PairSpan(melt, lo, hi) && (waveNm < lo || waveNm > hi);
}

std::string MeltComparisonReport(const MaterialRecord& melt, const MaterialRecord& parent) {
    const auto& pg = parent.General;
    const float step = static_cast<float>((pg.IndexWvMax - pg.IndexWvMin) / 20.0);
    if (!(step > 0.0f)) return kNoWavebandText;
    std::string text = "Index comparison over waveband [parent & melt glasses]\n\n";
    text += "Wave\t\tParent\tMelt\t\tDifference\n";
    const float wvMax = static_cast<float>(pg.IndexWvMax);
    bool marked = false;
    for (float w = static_cast<float>(pg.IndexWvMin); w <= wvMax; w = w + step) {
        int16_t okParent = 0, okMelt = 0;
        const double np = IndexFromPolynomial(pg.PolyCoef, w, pg.Polytype, okParent);
        const double nm = IndexFromPolynomial(melt.General.PolyCoef, w, pg.Polytype, okMelt);
        text += FormatNumber(w, "0.0") + "\t";
        if (okParent != 0 && okMelt != 0) {
            text += "   \t" + FormatNumber(np, "0.000000  ") + "\t" + FormatNumber(nm, "0.000000") +
                    "\t\t" + FormatNumber(nm - np, "0.000000");
        } else {
            text += "           index < 1 !!";
        }
        if (OutsideMeltPairs(melt, w)) {
            text += kExtrapolatedMark;
            marked = true;
        }
        text += "\n";
    }
    float lo = 0, hi = 0;
    if (marked && PairSpan(melt, lo, hi)) {
        text += "\n* extrapolated: outside the measured wavelengths, " + FormatNumber(lo, "0.0") +
                " to " + FormatNumber(hi, "0.0") + " nm";
    }
    return text;
}

std::vector<std::string> GenericMakerNames(const std::string& lumbrakFolder) {
    std::vector<std::string> makers;
    if (lumbrakFolder.empty()) return makers;
    std::string content;
    FileError error;
    if (!ReadWholeFile(fs::path(lumbrakFolder) / kGenericFileName, content, error)) return makers;
    std::vector<unsigned char> image(kExternalRecordSize);
    for (size_t off = 0; off + kExternalRecordSize <= content.size(); off += kExternalRecordSize) {
        std::copy_n(content.begin() + static_cast<std::ptrdiff_t>(off), kExternalRecordSize,
                    image.begin());
        ExternalRecord rec;
        FromBytes(image.data(), rec);
        const std::string maker = rec.Source.Text();
        if (maker.empty() || maker.find('\0') != std::string::npos) continue;
        bool seen = false;
        for (const auto& m : makers) seen = seen || m == maker;
        if (!seen) makers.push_back(maker);
    }
    return makers;
}

}  // namespace ostrel
