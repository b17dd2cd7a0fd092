#pragma once
// N-BK7, a common borosilicate crown (nd 1.51680, vd 64.17), from its published Sellmeier
// constants (B first, then C).
#include <cmath>

#include "core/optics/index_from_polynomial.h"

namespace ostrel::testing {

inline const PolyCoefBlock kNbk7Coef{1.03961212,    0.231792344,  1.01046945,
                                     0.00600069867, 0.0200179144, 103.560653};

// The index at a wavelength in micrometres, written out apart from kNbk7Coef.
inline double Nbk7(double um) {
    const double x = um * um;
    return std::sqrt(1.0 + 1.03961212 * x / (x - 0.00600069867) +
                     0.231792344 * x / (x - 0.0200179144) + 1.01046945 * x / (x - 103.560653));
}

}  // namespace ostrel::testing
