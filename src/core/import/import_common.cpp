#include "core/import/import_common.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <span>

#include "core/optics/glass_code.h"
#include "core/optics/index_from_polynomial.h"
#include "core/optics/trans_calcs.h"
#include "core/platform/number_text.h"

namespace ostrel {

void FinishTransTables(MaterialRecord& rec, int noDataFrom) {
    auto& g = rec.General;
    auto& m = rec.Measured;
    const int points = std::clamp<int>(m.TransPoints, 0, kMaxTransPoints);
    const auto count = static_cast<size_t>(points);
    CopyShortRows(g.TransShortWave, g.TransShortValue,
                  std::span<const float>(m.TransWave).first(count),
                  std::span<const float>(m.TransAbsorb).first(count));
    for (int pos = std::max(noDataFrom, 1); pos <= kTransTableSize - 1; ++pos) {
        g.TransShortValue[static_cast<size_t>(pos - 1)] = kNoTransData;
    }
    FillTransTable(rec.TransTable, m.TransWidth, std::span<const float>(m.TransWave).first(count),
                   std::span<const float>(m.TransAbsorb).first(count));
}

void FinishImportedTrans(MaterialRecord& rec) {
    auto& m = rec.Measured;
    const auto points = static_cast<size_t>(std::clamp<int>(m.TransPoints, 0, kMaxTransPoints));
    for (size_t k = 0; k < points; ++k) {
        m.TransAbsorb[k] = AbsorbFromInternal(m.TransWidth, m.TransInternal[k]);
    }
    FinishTransTables(rec, m.TransPoints + 1);
    if (m.TransType == 2 && points > 3) {
        ColourCode(rec, m.TransWidth, std::span<const float>(m.TransWave).first(points),
                   std::span<const float>(m.TransInternal).first(points));
    }
}

void FillTransTotals(MaterialRecord& rec) {
    const auto& g = rec.General;
    auto& m = rec.Measured;
    const auto points = static_cast<size_t>(std::clamp<int>(m.TransPoints, 0, kMaxTransPoints));
    for (size_t k = 0; k < points; ++k) {
        int16_t ok = 0;
        const double n = IndexFromPolynomial(g.PolyCoef, m.TransWave[k], g.Polytype, ok);
        m.TransTotal[k] = m.TransInternal[k] * ReflectionFactor(ok ? n : 0.0);
    }
}

bool SetSchottDndt(ThermalData& t, const double (&d)[6]) {
    t.dndt_D0 = static_cast<float>(d[0]);
    t.dndt_D1 = static_cast<float>(d[1]);
    t.dndt_D2 = static_cast<float>(d[2]);
    t.dndt_E0 = static_cast<float>(d[3]);
    t.dndt_E1 = static_cast<float>(d[4]);
    t.dndt_LamdaTK = static_cast<float>(d[5]);
    return d[0] == 0 && d[1] == 0 && d[2] == 0 && d[3] == 0 && d[4] == 0 && d[5] == 0;
}

int PrintedDecimals(std::string_view text) {
    // One pass: the digits right after the point of the mantissa, then the exponent, which
    // starts at the first letter e of the text.
    const auto exponentLetter = [](char c) { return c == 'e' || c == 'E'; };
    size_t i = 0;
    while (i < text.size() && text[i] != '.' && !exponentLetter(text[i])) ++i;
    int decimals = 0;
    if (i < text.size() && text[i] == '.') {
        for (++i; i < text.size() && static_cast<unsigned>(text[i] - '0') < 10u; ++i) ++decimals;
        while (i < text.size() && !exponentLetter(text[i])) ++i;
    }
    if (i < text.size()) {
        double exponent = 0;
        if (ParseNumber(text.substr(i + 1), exponent)) {
            decimals -= static_cast<int>(std::clamp(exponent, -1000.0, 1000.0));  // any size
        }
    }
    return std::max(decimals, 0);
}

DispersionForm DispersionOf(const MaterialRecord& rec) {
    const auto& g = rec.General;
    return {g.Polytype, g.PolyCoef, g.IndexWvMin, g.IndexWvMax};
}

float FirstWaveWithoutIndex(const MaterialRecord& rec) {
    return FirstWaveWithoutIndex(DispersionOf(rec));
}

float FirstWaveWithoutIndex(const DispersionForm& g) {
    const float low = g.IndexWvMin;
    const float high = g.IndexWvMax;
    if (!(high > low) || low <= 0) return 0;
    // Steps of equal ratio, so that the short end of a wide infrared band is looked at as
    // closely as its long end: 650 to 30000 nm goes 650, 675, 702, ... nm.
    constexpr int kSteps = 100;
    const double ratio = static_cast<double>(high) / low;
    for (int k = 0; k <= kSteps; ++k) {
        const float w =
            k == kSteps
                ? high
                : static_cast<float>(low * std::pow(ratio, static_cast<double>(k) / kSteps));
        int16_t ok = 0;
        const double n = IndexFromPolynomial(g.PolyCoef, w, g.Polytype, ok);
        if (!ok || !std::isfinite(n)) return w;
    }
    return 0;
}

namespace {
// The closest agreement the check asks for, however many digits a file prints: a catalogue's
// nd and vd are measured figures, its coefficients a fit to the melt data, and the two
// commonly differ by a few units in the fifth decimal of nd and in the second of vd.
constexpr double kNdResolution = 1e-4;
constexpr double kVdResolution = 0.1;
}  // namespace

ImportCheck CheckImported(const MaterialRecord& rec, const StatedIndex& stated) {
    return CheckImported(DispersionOf(rec), stated);
}

ImportCheck CheckImported(const DispersionForm& g, const StatedIndex& stated) {
    ImportCheck out;
    auto add = [&out](const std::string& part) {
        if (!out.text.empty()) out.text += ", ";
        out.text += part;
        out.flagged = true;
    };
    float gap = stated.noIndexAt;
    if (gap == 0) gap = FirstWaveWithoutIndex(g);
    if (gap != 0) add("no index at " + FormatNumber(gap, "0") + " nm");
    if (!stated.present) {
        if (!out.flagged) out.text = "no nd, vd in file";
        return out;
    }
    int16_t okD = 0, okC = 0, okF = 0;
    const double nd = IndexFromPolynomial(g.PolyCoef, kWaveD, g.Polytype, okD);
    const double nC = IndexFromPolynomial(g.PolyCoef, kWaveC, g.Polytype, okC);
    const double nF = IndexFromPolynomial(g.PolyCoef, kWaveF, g.Polytype, okF);
    // One unit in the last printed digit, and a hair more for the binary forms of both; never
    // closer than catalogues keep (digits printed beyond that carry nothing to check).
    auto allowed = [](int decimals, double floor) {
        return std::max(std::pow(10.0, -decimals), floor) * (1.0 + 1e-9);
    };
    if (stated.nd > 0) {
        if (!okD) {
            add("nd not computable");
        } else if (std::fabs(nd - stated.nd) > allowed(stated.ndDecimals, kNdResolution)) {
            add("nd " + FormatNumber(nd, "0.00000") + " vs " + FormatNumber(stated.nd, "0.00000"));
        }
    }
    if (stated.vd > 0 && okD && okC && okF && nF != nC) {
        const double vd = (nd - 1.0) / (nF - nC);
        if (std::fabs(vd - stated.vd) > allowed(stated.vdDecimals, kVdResolution)) {
            add("vd " + FormatNumber(vd, "0.00") + " vs " + FormatNumber(stated.vd, "0.00"));
        }
    }
    if (!out.flagged) out.text = "nd, vd agree";
    return out;
}

std::string PassedOverSummary(const std::vector<PassedOver>& passed) {
    std::vector<std::string> reasons;
    for (const auto& p : passed) {
        if (std::find(reasons.begin(), reasons.end(), p.why) == reasons.end()) {
            reasons.push_back(p.why);
        }
    }
    std::string out;
    for (const auto& why : reasons) {
        int count = 0;
        std::string names;
        for (const auto& p : passed) {
            if (p.why != why) continue;
            if (++count <= 3) {
                names += (count > 1 ? ", " : "") + p.glass;
            } else if (count == 4) {
                names += ", ...";
            }
        }
        if (!out.empty()) out += "\r\n";
        out += count == 1 ? "1 glass was passed over (" + names + "): " + why + "."
                          : std::to_string(count) + " glasses were passed over (" + names +
                                "): " + why + ".";
    }
    return out;
}

std::string WithReason(const std::string& message, const std::string& reason) {
    if (reason.empty()) return message;
    std::string sentence = reason;
    sentence[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(sentence[0])));
    if (sentence.back() != '.') sentence += '.';
    return message + "\r\n" + sentence;
}

}  // namespace ostrel
