#pragma once
// The refit of dispersion forms the sibling programs cannot evaluate (types 7 and 8, and on
// request the further AGF formulas) to the Schott form, over the glass's own waveband.
#include <functional>
#include <string>
#include <vector>

#include "core/material/material_record.h"
#include "core/platform/dialogs.h"

namespace ostrel {

// Index at a wavelength in nanometres; false where the form gives none.
using IndexEvaluator = std::function<bool(float waveNm, double& n)>;

// Samples the record's own polynomial over IndexWvMin..IndexWvMax in 20 steps (for type 8
// the lower end is first raised to 650 nm in the record), fits the Schott form with
// FitSchott and on success sets Polytype 1 and meanError to the root mean square of the fit.
// False when the waveband is empty or the fit failed; a failed fit shows its message with a
// first line that names the glass and says that it is left out. A sample where the form gives
// no index is left out of the fit; noIndexAt, when given, receives the first such wavelength
// (0 when there was none), for such a refit stands on part of the band only.
bool RefitToSchott(MaterialRecord& rec, float& meanError, Dialogs& dialogs,
                   float* noIndexAt = nullptr);

// The same over any evaluator; the record's IndexWvMin and IndexWvMax give the band.
bool RefitToSchottFrom(MaterialRecord& rec, const IndexEvaluator& index, float& meanError,
                       Dialogs& dialogs, float* noIndexAt = nullptr);

// The first line of a failed refit's message.
std::string RefitFailedLine(const std::string& glass);

// The AGF formula numbers that have no stored form but can be evaluated and refitted:
// 4, 6, 7, 8, 9, 10, 11, 12, 13.
bool IsRefittableAgfFormula(int formula);

// Index by an AGF formula from its coefficients in file order, wavelength in micrometres.
// False for another formula number or where the formula gives no real index.
bool AgfFormulaIndex(int formula, const std::vector<double>& c, double lambdaUm, double& n);

}  // namespace ostrel
