// The melt form's plot data: the measured differences melt minus parent, the fitted
// difference curve across the parent's waveband, and where the fit extrapolates.
#include <cstdint>
#include <vector>

#include "core/melt/frm7melt.h"
#include "core/optics/index_from_polynomial.h"

namespace ostrel {

std::vector<frm7Melt::DeltaPoint> frm7Melt::DeltaPoints() const {
    std::vector<DeltaPoint> points;
    const auto& m = melt_.Melt;
    for (int i = 0; i < m.MeltIndexPoints && i < kMaxMeltPoints; ++i) {
        bool ok = false;
        const float wave = m.MeltIndexWave[static_cast<size_t>(i)];
        const double parent = ParentIndex(wave, ok);
        if (ok) points.push_back({wave, m.MeltIndexValue[static_cast<size_t>(i)] - parent});
    }
    return points;
}

std::vector<frm7Melt::DeltaPoint> frm7Melt::DeltaCurve(int nSamples) const {
    std::vector<DeltaPoint> curve;
    if (melt_.IndexState.Ready == 0 || nSamples < 2) return curve;
    const double lo = parent_.General.IndexWvMin, hi = parent_.General.IndexWvMax;
    if (!(hi > lo)) return curve;
    const int16_t type = parent_.General.Polytype;
    for (int k = 0; k < nSamples; ++k) {
        const float wave = static_cast<float>(lo + (hi - lo) * k / (nSamples - 1));
        int16_t okMelt = 0, okParent = 0;
        const double melt = IndexFromPolynomial(melt_.General.PolyCoef, wave, type, okMelt);
        const double parent = IndexFromPolynomial(parent_.General.PolyCoef, wave, type, okParent);
        if (okMelt != 0 && okParent != 0) curve.push_back({wave, melt - parent});
    }
    return curve;
}

std::vector<WaveRange> frm7Melt::ExtrapolatedRanges() const {
    if (melt_.IndexState.Ready == 0) return {};
    return ostrel::ExtrapolatedRanges(melt_, parent_);
}

}  // namespace ostrel
