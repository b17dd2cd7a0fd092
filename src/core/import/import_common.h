#pragma once
// What the importers share: the options a read takes, the nd and vd a file states for a
// glass (kept to check the stored polynomial against), and the last steps on the
// transmission tables.
#include <string>
#include <vector>

#include "core/import/import_text.h"
#include "core/material/material_record.h"

namespace ostrel {

struct ImportOptions {
    // Told of the bytes read so far; may be empty.
    ImportProgress progress;
    // AGF only: glasses whose formula has no stored form are evaluated by the AGF formula
    // and refitted to Schott instead of being skipped.
    bool refitOtherFormulas = false;
    // AGF and GLC: leave the transmission work only a stored material needs (the absorption
    // of each row, the short tables, the resampled table and the colour code) to
    // FinishImportedTrans, which the import form runs when a glass leaves its staging list.
    // A whole catalogue is then staged in about four fifths of the time.
    bool leaveTransTables = false;
};

// nd and vd as the file states them; present is false when the file gives none.
struct StatedIndex {
    bool present = false;
    double nd = 0;
    double vd = 0;
};

// Copies transmission rows 1..41 (at most TransPoints) to TransShortWave and
// TransShortValue (from TransAbsorb), sets TransShortValue from position noDataFrom
// (1-based) up to 40 to the no-data value, and resamples TransTable from all rows.
void FinishTransTables(MaterialRecord& rec, int noDataFrom);

// The last transmission steps of an AGF or GLC read: the absorption of every row from its
// internal transmittance, FinishTransTables from TransPoints + 1, and for more than three
// rows read from an AGF file (TransType 2) the colour code.
void FinishImportedTrans(MaterialRecord& rec);

// The check of a staged glass: nd and vd from the stored polynomial against the values the
// file states. Empty when they agree (within 0.0001 in nd and 0.1 in vd) or the file states
// none; otherwise "nd 1.51680 vs 1.51700", "vd 64.17 vs 64.30" or both joined by ", "
// (computed value first).
std::string ImportCheckText(const MaterialRecord& rec, const StatedIndex& stated);

// A failed read's message followed by the reader's reason ("line 5: ... is no number") as a
// sentence of its own on the next line; the message alone when there is no reason.
std::string WithReason(const std::string& message, const std::string& reason);

// Stores the six Schott dn/dT constants D0 D1 D2 E0 E1 lambdaTK, in that order, as 32-bit
// values. True when all six are 0.
bool SetSchottDndt(ThermalData& t, const double (&d)[6]);

}  // namespace ostrel
