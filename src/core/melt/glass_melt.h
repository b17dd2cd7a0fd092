#pragma once
// The procedures of a melt glass: the differences of measured melt indices against the
// parent, the quadratic through them resampled over the parent's waveband, the refit of the
// parent's own polynomial type, the name and caption of a melt, and the two reports of the
// melt maker.
#include <cstdint>
#include <string>
#include <vector>

#include "core/material/material_record.h"
#include "core/platform/dialogs.h"

namespace ostrel {

inline constexpr int kMeltGridPoints = 21;

// The spectral letter of a glass catalogue line within 0.05 nm of the wavelength, in two
// characters ("d ", "C'"); "" when the wavelength is no such line.
std::string SpectralLetter(float waveNm);

// difference[i] = MeltIndexValue[i] - parent index at MeltIndexWave[i], for every pair.
std::vector<double> MeltDifferences(const MaterialRecord& melt, const MaterialRecord& parent);

// Fits a quadratic in wavelength (nm) through the differences and writes the parent's
// index plus the quadratic at up to 21 wavelengths from IndexWvMax down to IndexWvMin into
// the measured points of melt (IndexPoints set); the total transmission follows from the
// polynomial melt has now. A failed quadratic (shown) leaves the parent's indices.
void ResampleMeltIndices(MaterialRecord& melt, const MaterialRecord& parent,
                         const std::vector<double>& differences, Dialogs& dialogs);

// Fits the record's polynomial type to its measured points: Schott, Sellmeier (3 terms,
// started from the parent's coefficients), Schott Plus, Cauchy, Sellmeier Plus (5 terms,
// same start). True on success; any other type is a failure.
bool RefitMeltIndices(MaterialRecord& melt, const MaterialRecord& parent,
                      std::string& constantsText, Dialogs& dialogs);

// GlassName := parent name, " *", code, cut to 30 characters. Returns the key shown in
// messages: upper-case name, then " " source when the source begins with "[", otherwise
// " [" source "]".
std::string BuildMeltName(MaterialRecord& melt);

// The caption of lblMeltName.
std::string MeltCaption(const std::string& source, const std::string& name,
                        const std::string& code);

// A span of wavelengths in nanometres, from the shorter to the longer.
struct WaveRange {
    double from = 0;
    double to = 0;
    bool operator==(const WaveRange&) const = default;
};

// The parts of the parent's waveband that the melt's measured pairs do not span: from the
// band's short end to the shortest pair and from the longest pair to the band's long end.
// There the melt's indices are the quadratic carried beyond its data. Empty without pairs or
// without a waveband.
std::vector<WaveRange> ExtrapolatedRanges(const MaterialRecord& melt, const MaterialRecord& parent);

// True when the wavelength lies outside the span of the melt's measured pairs (false with no
// pairs).
bool OutsideMeltPairs(const MaterialRecord& melt, float waveNm);

// Short, so that a marked row of the report still fits the width of its message box.
inline constexpr const char* kExtrapolatedMark = "  *";

// The constants report (message box text) and the comparison report. A row of the comparison
// report that lies outside the measured pairs ends in the mark above, and a closing line then
// says what the mark means and which wavelengths were measured.
std::string MeltConstantsReport(const MaterialRecord& melt, const MaterialRecord& parent);
std::string MeltComparisonReport(const MaterialRecord& melt, const MaterialRecord& parent);

inline constexpr const char* kNoWavebandText =
    "No waveband specified.  Please enter maximum and minimum wavelengths [in nm].";

// Makers named in the generic materials file of the lens design program (distinct
// sources, in file order); empty when there is no such file.
std::vector<std::string> GenericMakerNames(const std::string& lumbrakFolder);

}  // namespace ostrel
