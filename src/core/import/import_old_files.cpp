#include "core/import/import_old_files.h"

#include <algorithm>
#include <optional>

#include "core/import/field_stream.h"
#include "core/import/import_common.h"
#include "core/import/import_text.h"
#include "core/materialform/verification.h"
#include "core/platform/file_io.h"
#include "core/platform/text.h"

namespace ostrel {
namespace {

// Fields 1 to 12, shared by both formats; then the transmission tables.
bool ReadLumbrakPart(FieldStream& in, MaterialRecord& rec, std::string& why) {
    auto& g = rec.General;
    auto& m = rec.Measured;
    auto bad = [&]() {
        why = "line " + std::to_string(in.LineNumber()) + ": " + in.error();
        return false;
    };
    std::string text;
    if (!in.Text(text)) return bad();
    g.GlassName.SetRaw(text);
    if (!in.Integer(g.GlassKind) || !in.Text(text)) return bad();
    g.Source.SetRaw(text);
    if (!in.Long(g.GlassCode) || !in.Single(g.Density) || !in.Integer(g.IndexDataType) ||
        !in.Integer(g.IndexPoints)) {
        return bad();
    }
    if (g.IndexPoints < 0 || g.IndexPoints > kMaxIndexPoints) {
        why = "index point count out of range";
        return false;
    }
    for (int i = 0; i < g.IndexPoints; ++i) {
        const auto k = static_cast<size_t>(i);
        if (!in.Number(m.IndexWave[k]) || !in.Number(m.IndexValue[k]) ||
            !in.Single(m.IndexWeight[k])) {
            return bad();
        }
        m.IndexWaveUm[k] = m.IndexWave[k] * 0.001;
        m.IndexSquared[k] = m.IndexValue[k] * m.IndexValue[k];
    }
    if (!in.Integer(g.IndexWvMin) || !in.Integer(g.IndexWvMax) || !in.Integer(g.Polytype)) {
        return bad();
    }
    for (double& c : g.PolyCoef) {
        if (!in.Number(c)) return bad();
    }
    if (!in.Integer(m.TransPoints) || !in.Integer(m.TransType) || !in.Single(m.TransWidth)) {
        return bad();
    }
    // The short tables have 41 places; position 0 does not exist.
    if (m.TransPoints < 1 || m.TransPoints > kTransTableSize) {
        why = "transmission row count " + std::to_string(m.TransPoints) + " out of range";
        return false;
    }
    for (int i = 0; i < m.TransPoints; ++i) {
        const auto k = static_cast<size_t>(i);
        if (!in.Single(m.TransWave[k]) || !in.Single(m.TransTotal[k]) ||
            !in.Single(m.TransInternal[k]) || !in.Single(m.TransAbsorb[k])) {
            return bad();
        }
    }
    for (int pos = m.TransPoints + 1; pos <= kTransTableSize; ++pos) {
        const auto k = static_cast<size_t>(pos - 1);
        m.TransWave[k] = m.TransTotal[k] = m.TransInternal[k] = m.TransAbsorb[k] = 0;
    }
    // These older paths have always marked the last real row's short value as no data too.
    FinishTransTables(rec, m.TransPoints);
    return true;
}

void Finish(MaterialRecord& rec, std::vector<MaterialRecord>& records, int16_t& ok) {
    SetAllSectionsReady(rec, kTrue);
    NormaliseRecord(rec);
    records.assign(1, rec);
    ok = kTrue;
}

bool OpenStream(const std::string& path, std::string& text, std::string& why) {
    std::string bytes;
    FileError error;
    if (!ReadWholeFile(path, bytes, error)) {
        why = error.message;
        return false;
    }
    text = DecodeTextFile(bytes);
    return true;
}

// Opens the file and reads its Lumbrak part into a cleared record. The stream reads views
// into `text`, which the caller keeps.
bool OpenLumbrakPart(const std::string& path, std::string& text, std::optional<FieldStream>& in,
                     MaterialRecord& rec, std::string& why) {
    if (!OpenStream(path, text, why)) return false;
    in.emplace(SplitTextLines(text));
    ClearMaterialRecord(rec);
    return ReadLumbrakPart(*in, rec, why);
}

}  // namespace

void CImportOldLumbrak::ReadFile(const std::string& path, std::vector<MaterialRecord>& records,
                                 int16_t& ok) {
    ok = kFalse;
    failure_.clear();
    std::string text;
    std::optional<FieldStream> stream;
    MaterialRecord rec;
    if (!OpenLumbrakPart(path, text, stream, rec, failure_)) return;
    rec.Other.Status.SetRaw("A");
    Finish(rec, records, ok);
}

void CImportOldKelmora::NullToBlank(std::vector<std::string>& values) {
    for (auto& v : values) {
        if (UpperCp1252(VbTrim(v)) == "NULL") v.clear();
    }
}

void CImportOldKelmora::ReadFile(const std::string& path, std::vector<MaterialRecord>& records,
                                 int16_t& ok) {
    ok = kFalse;
    failure_.clear();
    std::string text;
    std::optional<FieldStream> stream;
    MaterialRecord rec;
    if (!OpenLumbrakPart(path, text, stream, rec, failure_)) return;
    FieldStream& in = *stream;
    // Skip what is left of the line and any empty lines: the file may end here.
    in.EndLine();
    std::string probe;
    bool more = false;
    {
        FieldStream look = in;
        more = look.Field(probe);
    }
    if (more) {
        auto& d = rec.Derived;
        auto& o = rec.Other;
        auto bad = [&]() {
            failure_ = "line " + std::to_string(in.LineNumber()) + ": " + in.error();
        };
        std::string dropped;
        if (!in.Single(d.nd) || !in.Single(d.DerivedSpare[0]) || !in.Single(d.DerivedSpare[1]) ||
            !in.Single(d.vd) || !in.Single(d.nF_NC) || !in.Text(dropped) || !in.Single(d.Ne) ||
            !in.Single(d.DerivedSpare[2]) || !in.Single(d.DerivedSpare[3]) || !in.Single(d.Ve) ||
            !in.Single(d.nfd_ncd)) {
            return bad();
        }
        // Text groups: each read whole, cleaned of NULL, then stored.
        auto group = [&](size_t n, std::vector<std::string>& values) {
            values.assign(n, {});
            for (auto& v : values) {
                if (!in.Text(v)) return false;
            }
            NullToBlank(values);
            return true;
        };
        std::vector<std::string> v;
        if (!group(2, v)) return bad();
        o.A3070.SetRaw(v[0]);
        o.A20300.SetRaw(v[1]);
        if (!group(3, v)) return bad();
        o.Tg.SetRaw(v[0]);
        o.T1013.SetRaw(v[1]);
        o.T1076.SetRaw(v[2]);
        if (!group(2, v)) return bad();
        o.Cp.SetRaw(v[0]);
        o.lambda.SetRaw(v[1]);
        if (!group(4, v)) return bad();
        o.EMod.SetRaw(v[0]);
        o.Poisson.SetRaw(v[1]);
        o.Torsion.SetRaw(v[2]);
        o.Knoop.SetRaw(v[3]);
        if (!group(5, v)) return bad();
        o.CR.SetRaw(v[0]);
        o.FR.SetRaw(v[1]);
        o.SR.SetRaw(v[2]);
        o.AR.SetRaw(v[3]);
        o.PR.SetRaw(v[4]);
        if (!group(1, v)) return bad();
        o.REMark.SetRaw(v[0]);
        if (!group(5, v)) return bad();
        o.CC.SetRaw(v[0]);
        o.Bubble.SetRaw(v[2]);
        o.Status.SetRaw(v[3]);
        o.Price.SetRaw(v[4]);
        if (VbTrim(o.Status.Raw()).empty()) o.Status.SetRaw("A");
        if (!in.Single(d.PCs) || !in.Single(d.PdC) || !in.Single(d.PgF)) return bad();
        for (auto& tt : rec.Thermal.TT) {
            std::string line;
            if (!in.Text(line)) return bad();
            tt.SetRaw(line);
        }
    } else {
        rec.Other.Status.SetRaw("A");
    }
    Finish(rec, records, ok);
}

}  // namespace ostrel
