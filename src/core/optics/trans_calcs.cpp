#include "core/optics/trans_calcs.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>

namespace ostrel {

namespace {

// Index of the last point with a wavelength above 0, scanning from the end.
std::optional<size_t> LastValidPoint(std::span<const float> waves) {
    for (size_t i = waves.size(); i-- > 0;) {
        if (waves[i] > 0.0f) return i;
    }
    return std::nullopt;
}

// Wavelength at which the curve crosses a level (a fraction), or nothing when no point
// reaches it. The scan runs from the point before the last valid one towards the long-wave
// end; the crossing is interpolated linearly between the point found and its short-wave
// neighbour.
std::optional<double> CrossingWave(std::span<const float> waves,
                                   std::span<const float> transmissions, size_t last,
                                   double level) {
    for (size_t i = last; i-- > 0;) {
        const double f = transmissions[i] * 0.01;
        if (f >= level) {
            const double fShort = transmissions[i + 1] * 0.01;
            const double wShort = waves[i + 1];
            if (f == fShort) return wShort;
            return wShort + (level - fShort) * (waves[i] - wShort) / (f - fShort);
        }
    }
    return std::nullopt;
}

// Narrows lo < hi, over points in falling order, to the neighbouring pair the wavelength lies
// between: the first point at or below it (the second point at the earliest) and the point
// before it.
void Bisect(std::span<const float> waves, float wave, size_t& lo, size_t& hi) {
    while (hi - lo > 1) {
        const size_t mid = (lo + hi) / 2;
        if (waves[mid] <= wave) {
            hi = mid;
        } else {
            lo = mid;
        }
    }
}

// Absorption at a wavelength between points lo and hi, whose transmissions at the width are
// eLo and eHi: the transmission is interpolated linearly and turned back into a coefficient.
// Nothing when the two points share a wavelength.
std::optional<float> InterpolatedAbsorb(float wave, float width, std::span<const float> waves,
                                        std::span<const float> absorbs, size_t lo, size_t hi,
                                        double eLo, double eHi) {
    const double d = static_cast<double>(waves[lo]) - waves[hi];
    if (d == 0.0) return std::nullopt;
    const double t = (static_cast<double>(wave) - waves[hi]) * (eLo - eHi) / d + eHi;
    if (!(t > 0.0)) {
        // Both neighbours absorb everything at this width: fall back on the coefficients.
        const double a = (static_cast<double>(wave) - waves[hi]) *
                             (static_cast<double>(absorbs[lo]) - absorbs[hi]) / d +
                         absorbs[hi];
        return static_cast<float>(a);
    }
    return static_cast<float>(-std::log(t) / width);
}

std::string TenNanometreText(double wave) {
    const double units = std::floor(wave / 10.0 + 0.5);
    std::string text = std::to_string(static_cast<long long>(units));
    return text.substr(0, 2);
}

}  // namespace

float ReflectionFactor(double n) {
    return static_cast<float>(2.0 * n / (std::pow(n, 2.0) + 1.0));
}

float InternalFromAbsorb(float width, float alpha) {
    return static_cast<float>(100.0 * std::exp(-static_cast<double>(width) * alpha));
}

float AbsorbFromInternal(float width, float internalPercent) {
    if (internalPercent <= 0.0f || internalPercent > 100.0f) return 0.0f;
    if (!(width > 0.0f)) return 0.0f;
    return static_cast<float>(-std::log(internalPercent * 0.01) / width);
}

float AbsorbAtWave(float wave, std::span<const float> waves, std::span<const float> absorbs,
                   float width) {
    const size_t count = std::min(waves.size(), absorbs.size());
    const auto lastValid = LastValidPoint(waves.first(count));
    if (!lastValid) return kNoTransData;
    const size_t last = *lastValid;
    if (wave > waves[0] || wave < waves[last]) return kNoTransData;
    if (!(width > 0.0f)) return kNoTransData;

    size_t lo = 0;
    size_t hi = last;
    Bisect(waves, wave, lo, hi);
    const double eLo = std::exp(-static_cast<double>(width) * absorbs[lo]);
    const double eHi = std::exp(-static_cast<double>(width) * absorbs[hi]);
    return InterpolatedAbsorb(wave, width, waves, absorbs, lo, hi, eLo, eHi).value_or(kNoTransData);
}

void FillTransTable(std::array<float, kTransTableSize>& table, float width,
                    std::span<const float> waves, std::span<const float> absorbs) {
    // The same numbers as AbsorbAtWave entry by entry, with the work that does not depend
    // on the entry done once: the valid range and the transmission of every point.
    table.fill(kNoTransData);
    const size_t count = std::min(waves.size(), absorbs.size());
    const auto lastValid = LastValidPoint(waves.first(count));
    if (!lastValid || !(width > 0.0f)) return;
    const size_t last = *lastValid;
    std::array<double, kMaxTransPoints> fraction;  // only the points in use are written and read
    const size_t kept = std::min(last + 1, fraction.size());
    if (kept < last + 1) {
        // More points than a record holds: no shortcut.
        for (size_t i = 0; i < table.size(); ++i) {
            table[i] = AbsorbAtWave(TransTableWave[i], waves, absorbs, width);
        }
        return;
    }
    for (size_t k = 0; k < kept; ++k) {
        fraction[k] = std::exp(-static_cast<double>(width) * absorbs[k]);
    }
    // The table's wavelengths rise; over points in falling order the neighbours of each
    // entry are then found by walking down the points once. This is the pair the bisection
    // of AbsorbAtWave finds: the first point at or below the entry (the second point at the
    // earliest) and the point before it. Points out of order are bisected as there.
    bool falling = true;
    for (size_t k = 1; k <= last; ++k) {
        if (waves[k] > waves[k - 1]) falling = false;
    }
    size_t below = last;  // first point at or below the present entry
    for (size_t i = 0; i < table.size(); ++i) {
        const float wave = TransTableWave[i];
        if (wave > waves[0] || wave < waves[last]) continue;
        size_t lo = 0;
        size_t hi = last;
        if (falling) {
            while (below > 0 && waves[below - 1] <= wave) --below;
            hi = std::max<size_t>(below, 1);
            lo = hi - 1;
        }
        Bisect(waves, wave, lo, hi);
        if (hi > last) continue;  // a single point: no interval
        if (const auto a = InterpolatedAbsorb(wave, width, waves, absorbs, lo, hi, fraction[lo],
                                              fraction[hi])) {
            table[i] = *a;
        }
    }
}

void CheckTransPoints(MaterialRecord& rec) {
    auto& points = rec.Measured.TransPoints;
    if (points >= 1 && points <= 10) return;
    points = kMaxTransPoints;
}

size_t ShortTableRow(size_t slot, size_t points) {
    constexpr auto places = static_cast<size_t>(kTransTableSize);
    if (points <= places) return slot;
    return (slot * (points - 1) + (places - 1) / 2) / (places - 1);
}

size_t CopyShortRows(std::array<float, kTransTableSize>& shortWave,
                     std::array<float, kTransTableSize>& shortValue, std::span<const float> waves,
                     std::span<const float> absorbs) {
    const size_t points = std::min(waves.size(), absorbs.size());
    const size_t places = std::min(points, shortWave.size());
    for (size_t slot = 0; slot < places; ++slot) {
        const size_t row = ShortTableRow(slot, points);
        shortWave[slot] = waves[row];
        shortValue[slot] = absorbs[row];
    }
    return places;
}

int RealTransRows(const MeasuredData& m) {
    int rows = std::clamp<int>(m.TransPoints, 0, kMaxTransPoints);
    while (rows > 0) {
        const auto k = static_cast<size_t>(rows - 1);
        if (m.TransWave[k] != 0.0f || m.TransInternal[k] != 0.0f || m.TransTotal[k] != 0.0f ||
            m.TransAbsorb[k] != 0.0f) {
            break;
        }
        --rows;
    }
    return rows;
}

void ColourCode(MaterialRecord& rec, float width, std::span<const float> waves,
                std::span<const float> transmissions) {
    const size_t count = std::min(waves.size(), transmissions.size());
    const auto lastValid = LastValidPoint(waves.first(count));
    if (!lastValid) return;
    const size_t last = *lastValid;

    const double t5 = std::exp(std::log(0.05) * width / 10.0);
    const double t80 = std::exp(std::log(0.8) * width / 10.0);
    const double fLast = transmissions[last] * 0.01;

    double l5 = 0.0;
    if (fLast > t5) {
        const double below = static_cast<double>(waves[last]) - 10.0;
        if (below > 0.0) l5 = below;
    } else {
        const auto cross = CrossingWave(waves, transmissions, last, t5);
        if (!cross) return;
        l5 = *cross;
    }

    double l80 = 0.0;
    if (fLast >= t80) {
        l80 = waves[last];
    } else {
        const auto cross = CrossingWave(waves, transmissions, last, t80);
        if (!cross) return;
        l80 = *cross;
    }

    // A crossing that is no ordinary wavelength (infinite or absurd rows) gives no code.
    if (!(std::abs(l80) < 1e9 && std::abs(l5) < 1e9)) return;
    rec.Other.CC.Set(TenNanometreText(l80) + "/" + TenNanometreText(l5));
}

}  // namespace ostrel
