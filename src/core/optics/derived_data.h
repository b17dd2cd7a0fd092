#pragma once
// The derived numbers of a catalogue row (nd, vd, nF_NC, Ne, Ve, nfd_ncd, PCs, PdC, PgF),
// computed from the record's polynomial where a material is written out.
#include "core/material/material_record.h"

namespace ostrel {

// Spectral lines the derived numbers are taken at, in nanometres.
constexpr float kWaveS = 852.11f;        // s
constexpr float kWaveCLine = 656.273f;   // C
constexpr float kWaveCPrime = 643.847f;  // C'
constexpr float kWaveDLine = 587.562f;   // d
constexpr float kWaveE = 546.074f;       // e
constexpr float kWaveFLine = 486.133f;   // F
constexpr float kWaveFPrime = 479.991f;  // F'
constexpr float kWaveG = 435.834f;       // g

// Recomputes the block Derived from the polynomial. Each value keeps a fixed number of
// decimals (indices 5, Abbe numbers 2, differences 6, partial dispersions 5); a ratio whose
// divisor is 0 keeps its previous value. nC, nF, nC' and nF' go to DerivedSpare[0..3].
void UpdateDerivedData(MaterialRecord& rec);

}  // namespace ostrel
