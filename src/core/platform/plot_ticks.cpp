#include "core/platform/plot_ticks.h"

#include <cmath>

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

}  // namespace ostrel
