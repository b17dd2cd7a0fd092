#include "core/material/material_record.h"

#include "core/material/material_record_codec.h"

namespace ostrel {

void ClearMaterialRecord(MaterialRecord& rec) {
    rec = MaterialRecord{};  // numbers zero, fixed texts blank
    rec.ThermalState.Ready = kTrue;
}

MaterialRecord& AppendClearedRecord(std::vector<MaterialRecord>& records) {
    // One block copy of a cleared record is several times faster than building each one
    // field by field.
    static const MaterialRecord cleared = ClearedMaterialRecord();
    return records.emplace_back(cleared);
}

MaterialRecord ClearedMaterialRecord() {
    MaterialRecord rec;
    ClearMaterialRecord(rec);
    return rec;
}

MaterialRecord ZeroMaterialRecord() {
    MaterialImage zeros{};
    return FromBytes(zeros);
}

MaterialSummary SummaryOf(const MaterialRecord& rec) {
    MaterialSummary s;
    s.GlassName = rec.General.GlassName;
    s.Source = rec.General.Source;
    s.Polytype = rec.General.Polytype;
    s.IndexWvMin = rec.General.IndexWvMin;
    s.IndexWvMax = rec.General.IndexWvMax;
    s.MeltFlag = rec.Melt.MeltFlag;
    s.DateChanged = rec.DateChanged;
    s.Ready = {rec.GeneralState.Ready, rec.IndexState.Ready, rec.TransState.Ready,
               rec.ThermalState.Ready, rec.OtherState.Ready};
    return s;
}

bool AllSectionsReady(const MaterialRecord& rec) {
    return rec.GeneralState.Ready && rec.IndexState.Ready && rec.TransState.Ready &&
           rec.ThermalState.Ready && rec.OtherState.Ready;
}

void SetAllSectionsReady(MaterialRecord& rec, Flag ready) {
    for (SectionState* state :
         {&rec.GeneralState, &rec.IndexState, &rec.TransState, &rec.ThermalState, &rec.OtherState})
        state->Ready = ready;
}

}  // namespace ostrel
