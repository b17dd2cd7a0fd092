#include "core/import/staged_glass.h"

#include <algorithm>

#include "core/import/import_common.h"
#include "core/optics/derived_data.h"
#include "core/optics/glass_code.h"

namespace ostrel {
namespace {

// The compact figures beside their places in the record, one list for both directions:
// `pair(place in the record, figure of the staged glass)` for each. First those every staged
// glass has, whole or not, then those only a catalogue glass keeps (its transmission rows
// aside).
template <class Rec, class Staged, class Pair>
void EachCommonFigure(Rec& rec, Staged& s, Pair pair) {
    auto& g = rec.General;
    pair(g.GlassName, s.GlassName);
    pair(g.Source, s.Source);
    pair(g.IndexDataType, s.IndexDataType);
    pair(g.GlassKind, s.GlassKind);
    pair(g.GlassCode, s.GlassCode);
    pair(g.Density, s.Density);
    pair(g.Polytype, s.Form.Polytype);
    pair(g.PolyCoef, s.Form.PolyCoef);
    pair(g.IndexWvMin, s.Form.IndexWvMin);
    pair(g.IndexWvMax, s.Form.IndexWvMax);
    pair(rec.GeneralState, s.states[0]);
    pair(rec.IndexState, s.states[1]);
    pair(rec.TransState, s.states[2]);
    pair(rec.ThermalState, s.states[3]);
    pair(rec.OtherState, s.states[4]);
}

template <class Rec, class Staged, class Pair>
void EachCatalogueFigure(Rec& rec, Staged& s, Pair pair) {
    auto& o = rec.Other;
    pair(o.A3070, s.A3070);
    pair(o.A20300, s.A20300);
    pair(o.Knoop, s.Knoop);
    pair(o.PR, s.PR);
    pair(o.Price, s.Price);
    pair(o.CR, s.CR);
    pair(o.FR, s.FR);
    pair(o.SR, s.SR);
    pair(o.AR, s.AR);
    pair(o.Bubble, s.Bubble);
    pair(o.Status, s.Status);
    auto& t = rec.Thermal;
    pair(t.ThermalAux, s.ThermalAux);
    pair(t.dndttype, s.dndttype);
    pair(t.dndt_lin, s.dndt_lin);
    pair(t.dndt_D0, s.dndt[0]);
    pair(t.dndt_D1, s.dndt[1]);
    pair(t.dndt_D2, s.dndt[2]);
    pair(t.dndt_E0, s.dndt[3]);
    pair(t.dndt_E1, s.dndt[4]);
    pair(t.dndt_LamdaTK, s.dndt[5]);
    pair(t.dndt_RefTemp, s.dndt_RefTemp);
    pair(rec.Measured.TransType, s.TransType);
    pair(rec.Measured.TransWidth, s.TransWidth);
}

constexpr auto kToStaged = [](const auto& inRecord, auto& staged) { staged = inRecord; };
constexpr auto kToRecord = [](auto& inRecord, const auto& staged) { inRecord = staged; };

// Reads rows kept as text into the record, the last row first.
void PutRowText(const StagedGlass::RowText& rows, MeasuredData& m) {
    m.TransPoints = static_cast<int16_t>(rows.count);
    for (size_t i = 0; i < rows.count; ++i) {
        const char* const row = rows.text->data() + rows.first + i * rows.stride;
        double values[2] = {0, 0};
        ReadRowValues(row, rows.places, values);  // a row of a layout always reads
        const size_t k = rows.count - 1 - i;
        m.TransWave[k] = static_cast<float>(values[0] * 1000.0);
        m.TransInternal[k] = static_cast<float>(values[1] * 100.0);
        m.TransTotal[k] = 0;
    }
}

// Writes the compact figures of a catalogue glass into their places in rec, and nothing else
// but the transmission rows.
void PutCompact(const StagedGlass& s, MaterialRecord& rec) {
    EachCommonFigure(rec, s, kToRecord);
    EachCatalogueFigure(rec, s, kToRecord);
    auto& m = rec.Measured;
    if (s.rowText.count > 0) {
        PutRowText(s.rowText, m);
        return;
    }
    m.TransPoints = static_cast<int16_t>(s.trans.size());
    for (size_t k = 0; k < s.trans.size(); ++k) {
        m.TransWave[k] = s.trans[k].wave;
        m.TransInternal[k] = s.trans[k].internal;
        m.TransTotal[k] = s.trans[k].total;
    }
}

}  // namespace

std::array<Flag, 5> StagedGlass::Ready() const {
    return {states[0].Ready, states[1].Ready, states[2].Ready, states[3].Ready, states[4].Ready};
}

std::pair<double, double> StagedGlass::IndexRange() const {
    if (whole) {
        const int points = std::clamp<int>(whole->General.IndexPoints, 0, kMaxIndexPoints);
        if (points > 0) {
            return {whole->Measured.IndexValue[0],
                    whole->Measured.IndexValue[static_cast<size_t>(points - 1)]};
        }
    }
    if (Form.IndexWvMin < 1 || Form.IndexWvMax < 1) return {0.0, 0.0};
    int16_t ok = 0;
    return {IndexFromPolynomial(Form.PolyCoef, Form.IndexWvMin, Form.Polytype, ok),
            IndexFromPolynomial(Form.PolyCoef, Form.IndexWvMax, Form.Polytype, ok)};
}

StagedGlass StageCatalogueRecord(const MaterialRecord& rec, bool totalsPending) {
    StagedGlass s;
    EachCommonFigure(rec, s, kToStaged);
    EachCatalogueFigure(rec, s, kToStaged);
    const auto& m = rec.Measured;
    const auto points = static_cast<size_t>(std::clamp<int>(m.TransPoints, 0, kMaxTransPoints));
    s.trans.resize(points);
    for (size_t k = 0; k < points; ++k) {
        s.trans[k] = {m.TransWave[k], m.TransInternal[k], totalsPending ? 0.0f : m.TransTotal[k]};
    }
    s.tablesPending = true;
    s.totalsPending = totalsPending;
    return s;
}

StagedGlass StageWholeRecord(MaterialRecord rec) {
    StagedGlass s;
    EachCommonFigure(rec, s, kToStaged);
    s.whole = std::make_shared<const MaterialRecord>(std::move(rec));
    return s;
}

void ClearStagedFields(MaterialRecord& rec) {
    static const StagedGlass cleared = StageCatalogueRecord(ClearedMaterialRecord(), false);
    PutCompact(cleared, rec);
}

void RecordAsRead(const StagedGlass& s, MaterialRecord& rec) {
    if (s.whole) {
        rec = *s.whole;
        rec.General.Source = s.Source;
        return;
    }
    ClearMaterialRecord(rec);
    PutCompact(s, rec);
    // The readers leave the glass code of a glass with a ready index section to here.
    if (rec.IndexState.Ready != kFalse) UpdateGlassCode(rec);
    if (s.totalsPending) FillTransTotals(rec);
}

void RecordsAsRead(const std::vector<StagedGlass>& staged, bool leaveTables,
                   std::vector<MaterialRecord>& records) {
    records.clear();
    records.reserve(staged.size());
    for (const StagedGlass& s : staged) {
        MaterialRecord& rec = records.emplace_back();
        RecordAsRead(s, rec);
        if (s.tablesPending && !leaveTables) FinishImportedTrans(rec);
    }
}

MaterialRecord LeaveStaging(const StagedGlass& glass) {
    MaterialRecord rec;
    RecordAsRead(glass, rec);
    if (glass.tablesPending) FinishImportedTrans(rec);
    // A glass leaves staging with the numbers derived from the polynomial it now holds
    // (after a refit, the Schott form), as a fitted one does.
    UpdateDerivedData(rec);
    UpdateGlassCode(rec);
    return rec;
}

}  // namespace ostrel
