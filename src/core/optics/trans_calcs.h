#pragma once
// Transmission of a glass stated three ways: total transmission in percent (surface
// reflection included), internal transmission in percent (bulk only), and the absorption
// coefficient per millimetre. Also the resampling of measured points on the fixed
// wavelength table of the catalogue columns, and the colour code.
#include <array>
#include <cstddef>
#include <span>

#include "core/material/material_record.h"

namespace ostrel {

// The 41 wavelengths (nm) of the transmission columns; TransTable[i] belongs to entry i.
inline constexpr std::array<float, kTransTableSize> TransTableWave = {
    250.0f, 260.0f, 270.0f,  280.0f,  290.0f,  300.0f,  310.0f,  320.0f, 330.0f, 334.1f, 340.0f,
    350.0f, 360.0f, 365.0f,  370.0f,  380.0f,  390.0f,  400.0f,  404.7f, 420.0f, 435.8f, 440.0f,
    460.0f, 480.0f, 500.0f,  546.1f,  550.0f,  580.0f,  600.0f,  620.0f, 650.0f, 660.0f, 700.0f,
    800.0f, 900.0f, 1000.0f, 1060.0f, 1529.6f, 1970.1f, 2325.4f, 2500.0f};

// Fraction of light passing both surfaces of a plate of index n: 2n / (n^2 + 1).
// Total = Internal x P; the reflection loss is 1 - P.
float ReflectionFactor(double n);

// Internal transmission in percent of a plate width mm thick: 100 exp(-width alpha).
float InternalFromAbsorb(float width, float alpha);

// Absorption coefficient per mm from an internal transmission in percent. A transmission
// of 0 or less, or above 100, gives 0; so does a width of 0 or less.
float AbsorbFromInternal(float width, float internalPercent);

// Absorption coefficient at a wavelength, interpolated linearly in internal transmission
// (for the given width) between the two neighbouring points. The points are in descending
// order of wavelength; the valid ones end at the last wavelength above 0. Outside the data,
// with no data, between two points of equal wavelength, or for a width of 0 or less, the
// result is the no-data value 99.0.
float AbsorbAtWave(float wave, std::span<const float> waves, std::span<const float> absorbs,
                   float width);

// Resamples the points on TransTableWave.
void FillTransTable(std::array<float, kTransTableSize>& table, float width,
                    std::span<const float> waves, std::span<const float> absorbs);

// A point count outside 1..10 is set to the full size of the arrays (150).
void CheckTransPoints(MaterialRecord& rec);

// The measured row (0-based, rows in descending order of wavelength) that fills place `slot`
// of the 41-place short tables of a glass with `points` rows. Up to 41 rows each row has
// its own place. With more, 41 rows are taken evenly spread over the rows, the first and the
// last always among them, so that the short tables span the whole measured band: place k
// takes row k (points - 1) / 40, rounded half up. Every path that fills the short tables
// from measured rows picks them here.
size_t ShortTableRow(size_t slot, size_t points);

// Fills places 0..min(points, 41) - 1 of shortWave and shortValue from the rows ShortTableRow
// picks out of waves and absorbs (points being their common length); the other places are
// left as they are. Returns the number of places filled.
size_t CopyShortRows(std::array<float, kTransTableSize>& shortWave,
                     std::array<float, kTransTableSize>& shortValue, std::span<const float> waves,
                     std::span<const float> absorbs);

// The rows of a record's transmission table that hold data: TransPoints (taken within
// 0..150) less the rows at its end whose four numbers are all 0, such as the empty rows a
// count of 150 leaves behind the data.
int RealTransRows(const MeasuredData& m);

// Colour code "l80/l5" (each in units of 10 nm, two digits at most) from internal
// transmissions in percent, descending in wavelength, for a plate width mm thick; stored in
// the record's CC. When the curve never rises to one of the levels, CC is left as it was.
void ColourCode(MaterialRecord& rec, float width, std::span<const float> waves,
                std::span<const float> transmissions);

}  // namespace ostrel
