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
    const int shortRows = std::min(points, kTransTableSize);
    for (int i = 0; i < shortRows; ++i) {
        const auto k = static_cast<size_t>(i);
        g.TransShortWave[k] = m.TransWave[k];
        g.TransShortValue[k] = m.TransAbsorb[k];
    }
    for (int pos = std::max(noDataFrom, 1); pos <= kTransTableSize - 1; ++pos) {
        g.TransShortValue[static_cast<size_t>(pos - 1)] = kNoTransData;
    }
    const auto count = static_cast<size_t>(points);
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

bool SetSchottDndt(ThermalData& t, const double (&d)[6]) {
    t.dndt_D0 = static_cast<float>(d[0]);
    t.dndt_D1 = static_cast<float>(d[1]);
    t.dndt_D2 = static_cast<float>(d[2]);
    t.dndt_E0 = static_cast<float>(d[3]);
    t.dndt_E1 = static_cast<float>(d[4]);
    t.dndt_LamdaTK = static_cast<float>(d[5]);
    return d[0] == 0 && d[1] == 0 && d[2] == 0 && d[3] == 0 && d[4] == 0 && d[5] == 0;
}

std::string ImportCheckText(const MaterialRecord& rec, const StatedIndex& stated) {
    if (!stated.present) return {};
    const auto& g = rec.General;
    int16_t okD = 0, okC = 0, okF = 0;
    const double nd = IndexFromPolynomial(g.PolyCoef, kWaveD, g.Polytype, okD);
    const double nC = IndexFromPolynomial(g.PolyCoef, kWaveC, g.Polytype, okC);
    const double nF = IndexFromPolynomial(g.PolyCoef, kWaveF, g.Polytype, okF);
    std::string text;
    if (stated.nd > 0) {
        if (!okD) return "nd not computable";
        if (std::fabs(nd - stated.nd) > 0.0001) {
            text =
                "nd " + FormatNumber(nd, "0.00000") + " vs " + FormatNumber(stated.nd, "0.00000");
        }
    }
    if (stated.vd > 0 && okD && okC && okF && nF != nC) {
        const double vd = (nd - 1.0) / (nF - nC);
        if (std::fabs(vd - stated.vd) > 0.1) {
            if (!text.empty()) text += ", ";
            text += "vd " + FormatNumber(vd, "0.00") + " vs " + FormatNumber(stated.vd, "0.00");
        }
    }
    return text;
}

std::string WithReason(const std::string& message, const std::string& reason) {
    if (reason.empty()) return message;
    std::string sentence = reason;
    sentence[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(sentence[0])));
    if (sentence.back() != '.') sentence += '.';
    return message + "\r\n" + sentence;
}

}  // namespace ostrel
