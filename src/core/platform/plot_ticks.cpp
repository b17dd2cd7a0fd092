#include "core/platform/plot_ticks.h"

#include <algorithm>
#include <cmath>

#include "core/platform/number_text.h"

namespace ostrel {

double NiceStep(double span, int wanted) {
    const double raw = span / wanted;
    const double mag = std::pow(10.0, std::floor(std::log10(raw)));
    for (double f : {1.0, 2.0, 5.0}) {
        if (raw <= f * mag) return f * mag;
    }
    return 10 * mag;
}

namespace {

// The multiples of step within [lo, hi] (at most 200), each counted from zero rather than
// added up, so that no rounding builds up along them and the one at zero is zero.
std::vector<double> StepValues(double lo, double hi, double step) {
    std::vector<double> values;
    if (!(step > 0) || !(hi >= lo) || !std::isfinite(lo) || !std::isfinite(hi)) return values;
    const double first = std::ceil(lo / step - 1e-9);
    const double last = std::floor(hi / step + 1e-9);
    if (!(last - first < 200)) return values;
    for (double k = first; k <= last; ++k) values.push_back(k == 0 ? 0.0 : k * step);
    return values;
}

}  // namespace

std::vector<double> NiceTicks(double lo, double hi, int wanted) {
    if (!(hi > lo) || wanted < 1) return {};
    return StepValues(lo, hi, NiceStep(hi - lo, wanted));
}

int StepDecimals(double step) {
    if (!(step > 0) || step >= 1) return 0;
    return std::min(6, static_cast<int>(std::ceil(-std::log10(step) - 1e-9)));
}

std::vector<StepTick> StepTicks(double lo, double hi, double step) {
    const int decimals = StepDecimals(step);
    const std::string pattern = decimals == 0 ? "0" : "0." + std::string(decimals, '0');
    std::vector<StepTick> ticks;
    for (const double value : StepValues(lo, hi, step)) {
        ticks.push_back({value, FormatNumber(value, pattern)});
    }
    return ticks;
}

}  // namespace ostrel
