#pragma once
// A glass waiting in the import form's staging list. A catalogue glass is kept compact: the
// figures its grid row and its check look at, and what its catalogue lines gave (texts,
// formula and coefficients, dn/dT constants, transmission rows), about a twentieth of a full
// record. The full record is built when the glass leaves staging (added to the list,
// previewed, written out), byte for byte the record the reader would have made. A record
// read whole from a file (GLZ, GLA, GLS) is kept whole beside its compact figures.
#include <array>
#include <memory>
#include <string>
#include <vector>

#include "core/import/import_common.h"
#include "core/import/row_layout.h"
#include "core/material/material_record.h"

namespace ostrel {

struct StagedGlass {
    // General
    FixedText<30> GlassName;
    FixedText<30> Source;
    int16_t IndexDataType = 0;
    int16_t GlassKind = 0;
    int32_t GlassCode = 0;
    float Density = 0;
    DispersionForm Form;
    // Other: the texts a catalogue line fills.
    FixedText<15> A3070, A20300, Knoop, PR, Price;
    FixedText<5> CR, FR;
    FixedText<9> SR;
    FixedText<6> AR;
    FixedText<4> Bubble, Status;
    // dn/dT
    float ThermalAux = 0;
    int16_t dndttype = 0;
    float dndt_lin = 0;
    std::array<float, 6> dndt{};  // D0 D1 D2 E0 E1 lambdaTK
    float dndt_RefTemp = 0;
    // Transmission rows as read, TransPoints of them in stored order.
    struct TransRow {
        float wave = 0, internal = 0, total = 0;
    };
    int16_t TransType = 0;
    float TransWidth = 0;
    std::vector<TransRow> trans;
    // Or the rows still as the file's text has them, when they share one layout and follow
    // each other line by line: they are read when the glass leaves staging (a wavelength in
    // um and an internal transmittance as a fraction each, the file's last row stored
    // first), their total transmission still to be worked out.
    struct RowText {
        std::shared_ptr<const std::string> text;
        size_t first = 0;   // where the first row starts
        size_t stride = 0;  // from one row to the next
        size_t count = 0;
        RowPlaces places;
    };
    RowText rowText;
    // General, Index, Trans, dn/dt and Other, as in the record.
    std::array<SectionState, 5> states{};
    // The read left the transmission work only a stored material needs to FinishImportedTrans,
    // and the total transmission of the rows to FillTransTotals.
    bool tablesPending = false;
    bool totalsPending = false;
    // A record read whole; its compact figures above are copies, but for Source, which the
    // staging list may change.
    std::shared_ptr<const MaterialRecord> whole;

    // The ready flags of the five sections.
    std::array<Flag, 5> Ready() const;
    // Lowest and highest index the grid shows: of the measured points of a whole record that
    // has them, else of the polynomial at the ends of the band (0 when the band is not set).
    std::pair<double, double> IndexRange() const;
};

// Clears what a catalogue reader fills and StageCatalogueRecord takes, as a cleared record
// has it, so that one work record serves glass after glass.
void ClearStagedFields(MaterialRecord& rec);
// The compact form of a record a catalogue reader made, its transmission tables still to be
// finished, and its glass code still to be derived where its index section is ready.
// totalsPending: the total transmission of its rows is still to be worked out.
StagedGlass StageCatalogueRecord(const MaterialRecord& rec, bool totalsPending);
// A record read whole.
StagedGlass StageWholeRecord(MaterialRecord rec);

// The record as the reader made it (tables still pending where they were).
void RecordAsRead(const StagedGlass& glass, MaterialRecord& rec);
// Every glass as read into records (replaced), the tables finished unless leaveTables.
void RecordsAsRead(const std::vector<StagedGlass>& staged, bool leaveTables,
                   std::vector<MaterialRecord>& records);
// The record as it leaves staging: as read, its transmission tables finished, and its derived
// data and glass code worked out from the polynomial it holds.
MaterialRecord LeaveStaging(const StagedGlass& glass);

}  // namespace ostrel
