#pragma once
// Round ticks of a plot axis, for every plot of the program alike.
#include <vector>

namespace ostrel {

// A step of 1, 2 or 5 times a power of ten giving about `wanted` intervals over `span`.
double NiceStep(double span, int wanted);
// Tick positions from lo to hi at multiples of NiceStep(hi - lo, wanted); a tick that
// lands within a trace of rounding of zero is zero.
std::vector<double> NiceTicks(double lo, double hi, int wanted);

}  // namespace ostrel
