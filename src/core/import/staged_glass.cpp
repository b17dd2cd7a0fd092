#include "core/import/staged_glass.h"

#include <algorithm>

#include "core/import/import_common.h"
#include "core/optics/derived_data.h"
#include "core/optics/glass_code.h"

namespace ostrel {
namespace {

// The compact figures every staged glass has, whole or not.
void CopyCompact(const MaterialRecord& rec, StagedGlass& s) {
    const auto& g = rec.General;
    s.GlassName = g.GlassName;
    s.Source = g.Source;
    s.IndexDataType = g.IndexDataType;
    s.GlassKind = g.GlassKind;
    s.GlassCode = g.GlassCode;
    s.Density = g.Density;
    s.Form = {g.Polytype, g.PolyCoef, g.IndexWvMin, g.IndexWvMax};
    s.states = {rec.GeneralState, rec.IndexState, rec.TransState, rec.ThermalState, rec.OtherState};
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
    CopyCompact(rec, s);
    const auto& o = rec.Other;
    s.A3070 = o.A3070;
    s.A20300 = o.A20300;
    s.Knoop = o.Knoop;
    s.PR = o.PR;
    s.Price = o.Price;
    s.CR = o.CR;
    s.FR = o.FR;
    s.SR = o.SR;
    s.AR = o.AR;
    s.Bubble = o.Bubble;
    s.Status = o.Status;
    const auto& t = rec.Thermal;
    s.ThermalAux = t.ThermalAux;
    s.dndttype = t.dndttype;
    s.dndt_lin = t.dndt_lin;
    s.dndt = {t.dndt_D0, t.dndt_D1, t.dndt_D2, t.dndt_E0, t.dndt_E1, t.dndt_LamdaTK};
    s.dndt_RefTemp = t.dndt_RefTemp;
    const auto& m = rec.Measured;
    s.TransType = m.TransType;
    s.TransWidth = m.TransWidth;
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
    CopyCompact(rec, s);
    s.whole = std::make_shared<const MaterialRecord>(std::move(rec));
    return s;
}

namespace {

// Writes the compact figures of a catalogue glass into their places in rec, and nothing else
// but the transmission rows.
void PutCompact(const StagedGlass& s, MaterialRecord& rec) {
    auto& g = rec.General;
    g.GlassName = s.GlassName;
    g.Source = s.Source;
    g.IndexDataType = s.IndexDataType;
    g.GlassKind = s.GlassKind;
    g.GlassCode = s.GlassCode;
    g.Density = s.Density;
    g.Polytype = s.Form.Polytype;
    g.PolyCoef = s.Form.PolyCoef;
    g.IndexWvMin = s.Form.IndexWvMin;
    g.IndexWvMax = s.Form.IndexWvMax;
    auto& o = rec.Other;
    o.A3070 = s.A3070;
    o.A20300 = s.A20300;
    o.Knoop = s.Knoop;
    o.PR = s.PR;
    o.Price = s.Price;
    o.CR = s.CR;
    o.FR = s.FR;
    o.SR = s.SR;
    o.AR = s.AR;
    o.Bubble = s.Bubble;
    o.Status = s.Status;
    auto& t = rec.Thermal;
    t.ThermalAux = s.ThermalAux;
    t.dndttype = s.dndttype;
    t.dndt_lin = s.dndt_lin;
    t.dndt_D0 = s.dndt[0];
    t.dndt_D1 = s.dndt[1];
    t.dndt_D2 = s.dndt[2];
    t.dndt_E0 = s.dndt[3];
    t.dndt_E1 = s.dndt[4];
    t.dndt_LamdaTK = s.dndt[5];
    t.dndt_RefTemp = s.dndt_RefTemp;
    auto& m = rec.Measured;
    m.TransType = s.TransType;
    m.TransWidth = s.TransWidth;
    m.TransPoints = static_cast<int16_t>(s.trans.size());
    for (size_t k = 0; k < s.trans.size(); ++k) {
        m.TransWave[k] = s.trans[k].wave;
        m.TransInternal[k] = s.trans[k].internal;
        m.TransTotal[k] = s.trans[k].total;
    }
    rec.GeneralState = s.states[0];
    rec.IndexState = s.states[1];
    rec.TransState = s.states[2];
    rec.ThermalState = s.states[3];
    rec.OtherState = s.states[4];
}

}  // namespace

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
