#include "core/optics/derived_data.h"

#include <string>

#include "core/optics/index_from_polynomial.h"
#include "core/platform/number_text.h"

namespace ostrel {

namespace {

// Keeps the given number of decimals by formatting the value and reading the text back.
float KeepDecimals(double value, int decimals) {
    const std::string pattern = "0." + std::string(static_cast<size_t>(decimals), '0');
    return static_cast<float>(Val(FormatNumber(value, pattern)));
}

}  // namespace

void UpdateDerivedData(MaterialRecord& rec) {
    const auto& coef = rec.General.PolyCoef;
    const int16_t type = rec.General.Polytype;
    auto index = [&](float wave) {
        int16_t ok = 0;
        return IndexFromPolynomial(coef, wave, type, ok);
    };
    const double ns = index(kWaveS);
    const double nC = index(kWaveCLine);
    const double nC1 = index(kWaveCPrime);
    const double nd = index(kWaveDLine);
    const double ne = index(kWaveE);
    const double nF = index(kWaveFLine);
    const double nF1 = index(kWaveFPrime);
    const double ng = index(kWaveG);

    // Every ratio is taken from the full-precision indices; only the stored values are cut.
    DerivedData& d = rec.Derived;
    const double dispersion = nF - nC;
    const double dispersionE = nF1 - nC1;
    d.nd = KeepDecimals(nd, 5);
    d.nF_NC = KeepDecimals(dispersion, 6);
    d.Ne = KeepDecimals(ne, 5);
    d.nfd_ncd = KeepDecimals(dispersionE, 6);
    if (dispersion != 0.0) {
        d.vd = KeepDecimals((nd - 1.0) / dispersion, 2);
        d.PCs = KeepDecimals((nC - ns) / dispersion, 5);
        d.PdC = KeepDecimals((nd - nC) / dispersion, 5);
        d.PgF = KeepDecimals((ng - nF) / dispersion, 5);
    }
    if (dispersionE != 0.0) d.Ve = KeepDecimals((ne - 1.0) / dispersionE, 2);

    d.DerivedSpare = {static_cast<float>(nC), static_cast<float>(nF), static_cast<float>(nC1),
                      static_cast<float>(nF1)};
}

}  // namespace ostrel
