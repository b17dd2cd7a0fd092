#pragma once
// The one way an index is obtained from a stored dispersion polynomial.
#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace ostrel {

using PolyCoefBlock = std::array<double, 14>;

// Index at a wavelength in nanometres (a 32-bit float, as stored) for the polynomial of
// the given type code; ok is -1 for a valid result, 0 otherwise (then the result is 0).
double IndexFromPolynomial(const PolyCoefBlock& coef, float wavelengthNm, int16_t type,
                           int16_t& ok);

// A wavelength made ready for the index of any number of glasses: the micrometre value the
// formulas see and the powers the Schott form divides by, worked out once.
struct SweepWave {
    float nm = 0.0f;
    double lambda = 0.0;  // micrometres, rounded to a 32-bit float
    double x = 0.0;       // lambda squared
    double cube = 0.0;    // x^3 and x^4 as pow gives them
    double fourth = 0.0;
};

SweepWave PrepareWave(float wavelengthNm);

// The same index and ok as IndexFromPolynomial at wave.nm.
double IndexAt(const PolyCoefBlock& coef, const SweepWave& wave, int16_t type, int16_t& ok);

// One glass at many wavelengths: n[i] and ok[i] as IndexFromPolynomial gives them at the i-th
// wavelength. n and ok hold at least as many entries as there are wavelengths.
void IndexSweep(const PolyCoefBlock& coef, int16_t type, std::span<const SweepWave> waves,
                std::span<double> n, std::span<int16_t> ok);
void IndexSweep(const PolyCoefBlock& coef, int16_t type, std::span<const float> wavelengthsNm,
                std::span<double> n, std::span<int16_t> ok);

std::string PolyTypeName(int16_t type);
int16_t PolyMinPoints(int16_t type);
int16_t PolyTypeFromShortName(const std::string& shortName);

}  // namespace ostrel
