#pragma once
// What the fit button of the Index tab does, over plain rows of wave, index and weight:
// reading the rows into the record (sorted, longest wavelength first), the minimum number
// of points, the fit of the record's polynomial type, and what the form shows afterwards.
// The material form feeds it from its grid, the command line from a text file.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/material/material_record.h"
#include "core/platform/dialogs.h"

namespace ostrel {

// One row of the index grid: wave in nm, index, weight.
struct IndexRow {
    float wave = 0.0f;
    double index = 0.0;
    float weight = 0.0f;
};

// A grid cell read as a number: anything that is not a number reads 0.
double CellNumber(std::string_view text);

// A typed row gets weight 1 when it has a wave, an index above 1 and no positive weight.
void CompleteWeight(IndexRow& row);

// Reads rows into the record: of the first 150, those with wave and index both not zero,
// sorted by descending wavelength (equal wavelengths keep their order), with micrometres,
// squares and the waveband. Returns how many were kept; with none the record is untouched.
int ReadIndexRows(const std::vector<IndexRow>& rows, MaterialRecord& rec);

// What the form shows after the fit button.
struct IndexFitOutcome {
    bool fitted = false;                  // a fit was run (enough points)
    bool ready = false;                   // the fit succeeded and was kept: Index is ready
    bool poor = false;                    // the average error is above kPoorFitError
    bool declined = false;                // a poor fit the user chose not to keep
    std::string errorLabel;               // lblError: the average error, or empty
    std::vector<std::string> calcTexts;   // column "index calc", one per point
    std::vector<std::string> errorTexts;  // column "error", one per point
};

// Above this average error a fit does not represent its data: the user is asked whether to
// keep it, and the error label shows it as a warning.
inline constexpr double kPoorFitError = 1e-4;
// The question put to the user about such a fit.
std::string PoorFitQuestion(double averageError);

// The fit button in index data mode, for the record's Polytype. constantsText is the
// form's last text of constants; the fit appends to it. A poor fit that the user does not
// keep leaves Index not ready, the record's coefficients and derived data as they were, and
// constantsText empty.
IndexFitOutcome IndexFitSteps(const std::vector<IndexRow>& rows, MaterialRecord& rec,
                              std::string& constantsText, Dialogs& dialogs);

}  // namespace ostrel
