#pragma once
// N-BK7, a common borosilicate crown (nd 1.51680, vd 64.17), from its published Sellmeier
// constants (B first, then C).
#include <cmath>

#include "core/optics/index_from_polynomial.h"

namespace ostrel::testing {

inline const PolyCoefBlock kNbk7Coef{1.03961212,    0.231792344,  1.01046945,
                                     0.00600069867, 0.0200179144, 103.560653};

// The index of a three-term Sellmeier block at a wavelength in nanometres, written out apart
// from the program's evaluation.
inline double SellmeierIndex(const PolyCoefBlock& c, double nm) {
    const double x = nm * nm * 1e-6;
    return std::sqrt(1.0 + c[0] * x / (x - c[3]) + c[1] * x / (x - c[4]) + c[2] * x / (x - c[5]));
}

// N-BK7 at a wavelength in micrometres.
inline double Nbk7(double um) {
    return SellmeierIndex(kNbk7Coef, um * 1000.0);
}

}  // namespace ostrel::testing
