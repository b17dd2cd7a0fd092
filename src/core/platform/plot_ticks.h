#pragma once
// Round ticks of a plot axis, for every plot of the program alike.
#include <string>
#include <vector>

namespace ostrel {

// A step of 1, 2 or 5 times a power of ten giving about `wanted` intervals over `span`.
double NiceStep(double span, int wanted);
// Tick positions from lo to hi at multiples of NiceStep(hi - lo, wanted), as StepTicks
// places them.
std::vector<double> NiceTicks(double lo, double hi, int wanted);

// A labelled tick.
struct StepTick {
    double value = 0;
    std::string text;
};
// The decimals a label of ticks `step` apart needs, and no more: 0 for a whole step, 1 for
// 0.2 or 0.5, 2 for 0.05.
int StepDecimals(double step);
// The ticks at the multiples of step within [lo, hi] (at most 200), each its whole multiple
// times the step, so that the tick at zero is zero and is labelled "0", "0.0"..., never with
// a minus sign.
std::vector<StepTick> StepTicks(double lo, double hi, double step);

}  // namespace ostrel
