#pragma once
// The one way an index is obtained from a stored dispersion polynomial.
#include <array>
#include <cstdint>
#include <string>

namespace ostrel {

using PolyCoefBlock = std::array<double, 14>;

// Index at a wavelength in nanometres (a 32-bit float, as stored) for the polynomial of
// the given type code; ok is -1 for a valid result, 0 otherwise (then the result is 0).
double IndexFromPolynomial(const PolyCoefBlock& coef, float wavelengthNm, int16_t type,
                           int16_t& ok);

std::string PolyTypeName(int16_t type);
int16_t PolyMinPoints(int16_t type);
int16_t PolyTypeFromShortName(const std::string& shortName);

}  // namespace ostrel
