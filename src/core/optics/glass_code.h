#pragma once
// The six-digit glass code: the index nd and the Abbe number vd packed into one number,
// (nd - 1) x 1000 followed by vd x 10 in at least three digits.
#include <cstdint>
#include <string>

#include "core/material/material_record.h"

namespace ostrel {

// Wavelengths of the d, C and F lines used for the glass code, in nanometres.
constexpr float kWaveD = 587.5618f;
constexpr float kWaveC = 656.2725f;
constexpr float kWaveF = 486.1327f;

// Code from nd and vd given as texts; 0 when nd reads as 0. Bad texts read as 0.
int32_t MakeGlassCode(const std::string& ndText, const std::string& vdText);

// Code from nd and vd as values: the same code as from nd written with 15 significant digits
// and vd with 7.
int32_t GlassCodeOf(double nd, float vd);

// Evaluates the record's polynomial at d, C and F and stores the code in GlassCode.
void UpdateGlassCode(MaterialRecord& rec);

}  // namespace ostrel
