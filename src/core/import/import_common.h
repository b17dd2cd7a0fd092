#pragma once
// What the importers share: the options a read takes, the nd and vd a file states for a
// glass (kept to check the stored polynomial against), what a read passed over, and the last
// steps on the transmission tables.
#include <string>
#include <string_view>
#include <vector>

#include "core/import/import_text.h"
#include "core/material/material_record.h"
#include "core/optics/index_from_polynomial.h"

namespace ostrel {

struct ImportOptions {
    // Told of the bytes read so far; may be empty.
    ImportProgress progress;
    // AGF only: glasses whose formula has no stored form are evaluated by the AGF formula
    // and refitted to Schott instead of being skipped.
    bool refitOtherFormulas = false;
    // AGF and GLC read into full records: leave the transmission work only a stored material
    // needs (the absorption of each row, the short tables, the resampled table and the colour
    // code) to FinishImportedTrans. Compact staged glasses always leave it to their leaving.
    bool leaveTransTables = false;
};

// What a file states of a glass beside its polynomial, and what the read found out about
// the polynomial it stored: the nd and vd printed in the file (present is false when the file
// gives none) with the number of decimals each was printed with, and for a refitted glass the
// first wavelength of its band where the file's own form gave no index (0 when it gave one
// everywhere).
struct StatedIndex {
    bool present = false;
    double nd = 0;
    double vd = 0;
    int ndDecimals = 6;
    int vdDecimals = 2;
    float noIndexAt = 0;
};

// Fills TransShortWave and TransShortValue (from TransAbsorb) from the first TransPoints
// rows, 41 of them spread over the band when there are more (ShortTableRow), sets
// TransShortValue from position noDataFrom (1-based) up to 40 to the no-data value, and
// resamples TransTable from all rows.
void FinishTransTables(MaterialRecord& rec, int noDataFrom);

// The last transmission steps of an AGF or GLC read: the absorption of every row from its
// internal transmittance, FinishTransTables from TransPoints + 1, and for more than three
// rows read from an AGF file (TransType 2) the colour code.
void FinishImportedTrans(MaterialRecord& rec);

// The total transmission of the first TransPoints rows from their internal transmittance
// and the reflection loss of the stored polynomial's index at their wavelength (none where
// it gives no index).
void FillTransTotals(MaterialRecord& rec);

// Decimals a number is printed with, the exponent counted in ("1.5168" 4, "1.5168E+00" 4,
// "6.417E+01" 2, "64" 0); never below 0.
int PrintedDecimals(std::string_view text);

// The check of a staged glass against its file. A glass is flagged when its index cannot be
// computed at some point of its stored waveband (FirstWaveWithoutIndex, and where a refit
// found a gap), or when nd or vd from the stored polynomial differ from the printed
// figures by more than one unit in their last printed digit (half a unit is the rounding of
// the printed figure, the other half what the printed coefficients may lose), and never by
// less than 0.0001 in nd or 0.1 in vd, the agreement of a catalogue's fit with its own
// measured figures. The text says
// both outcomes: "nd, vd agree" or "no nd, vd in file" for a glass that passes, otherwise
// "no index at 800 nm", "nd 1.51680 vs 1.51700", "vd 64.17 vs 64.30", joined by ", " (the
// computed value first).
struct ImportCheck {
    bool flagged = false;
    std::string text;
};

// The stored polynomial of a glass and the waveband it is given for: what the check looks at.
struct DispersionForm {
    int16_t Polytype = 0;
    PolyCoefBlock PolyCoef{};
    int16_t IndexWvMin = 0;
    int16_t IndexWvMax = 0;
};
DispersionForm DispersionOf(const MaterialRecord& rec);

ImportCheck CheckImported(const DispersionForm& form, const StatedIndex& stated);
ImportCheck CheckImported(const MaterialRecord& rec, const StatedIndex& stated);

// The first of 101 points spread over IndexWvMin..IndexWvMax in steps of equal ratio (both
// ends included) where the stored polynomial gives no index; 0 when it gives one at every
// point or the band is empty.
float FirstWaveWithoutIndex(const DispersionForm& form);
float FirstWaveWithoutIndex(const MaterialRecord& rec);

// A glass line or block that a read passed over, and why ("formula 6 has no stored form").
struct PassedOver {
    std::string glass;
    std::string why;
};

// One sentence per reason, in the order the reasons first came, joined by line breaks:
// "150 glasses were passed over (J-BAF10, J-BAK1, J-BAK2, ...): formula 6 has no stored
// form." Empty for an empty list.
std::string PassedOverSummary(const std::vector<PassedOver>& passed);

// A failed read's message followed by the reader's reason ("line 5: ... is no number") as a
// sentence of its own on the next line; the message alone when there is no reason.
std::string WithReason(const std::string& message, const std::string& reason);

// Stores the six Schott dn/dT constants D0 D1 D2 E0 E1 lambdaTK, in that order, as 32-bit
// values. True when all six are 0.
bool SetSchottDndt(ThermalData& t, const double (&d)[6]);

}  // namespace ostrel
