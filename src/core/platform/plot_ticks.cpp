#include "core/platform/plot_ticks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace ostrel {

double NiceStep(double span, int wanted) {
    const double raw = span / wanted;
    const double mag = std::pow(10.0, std::floor(std::log10(raw)));
    for (double f : {1.0, 2.0, 5.0}) {
        if (raw <= f * mag) return f * mag;
    }
    return 10 * mag;
}

std::vector<double> NiceTicks(double lo, double hi, int wanted) {
    std::vector<double> ticks;
    if (!(hi > lo) || wanted < 1 || !std::isfinite(lo) || !std::isfinite(hi)) return ticks;
    const double step = NiceStep(hi - lo, wanted);
    for (double t = std::ceil(lo / step) * step; t <= hi + step * 1e-9; t += step) {
        ticks.push_back(std::abs(t) < step * 1e-9 ? 0.0 : t);
        if (ticks.size() > 100) break;
    }
    return ticks;
}

int StepDecimals(double step) {
    if (!(step > 0) || step >= 1) return 0;
    return std::min(6, static_cast<int>(std::ceil(-std::log10(step) - 1e-9)));
}

std::vector<StepTick> StepTicks(double lo, double hi, double step) {
    std::vector<StepTick> ticks;
    if (!(step > 0) || !(hi >= lo) || !std::isfinite(lo) || !std::isfinite(hi)) return ticks;
    // Ticks are counted from zero, not added up, so that no rounding builds up along them.
    const double first = std::ceil(lo / step - 1e-9);
    const double last = std::floor(hi / step + 1e-9);
    if (!(last - first < 200)) return ticks;
    const int decimals = StepDecimals(step);
    for (double k = first; k <= last; ++k) {
        const double value = k == 0 ? 0.0 : k * step;
        char text[64];
        std::snprintf(text, sizeof text, "%.*f", decimals, value);
        ticks.push_back({value, text});
    }
    return ticks;
}

}  // namespace ostrel
