#include "core/import/import_new_glz.h"

#include <algorithm>

#include "core/materialform/verification.h"
#include "core/optics/trans_calcs.h"
#include "core/platform/file_io.h"

namespace ostrel {
namespace {

template <size_t N>
bool ReadText(FieldStream& in, FixedText<N>& field) {
    std::string t;
    if (!in.Text(t)) return false;
    field.SetRaw(t);
    return true;
}

// Label and value pairs: the label is passed over unread.
template <size_t N>
bool ReadLabelled(FieldStream& in, FixedText<N>& field) {
    std::string label;
    return in.Text(label) && ReadText(in, field);
}

bool Failed(FieldStream& in, std::string& failure, const std::string& why) {
    failure = "line " + std::to_string(in.LineNumber()) + ": " + why;
    return false;
}

}  // namespace

void CImportNewGLZ::SplitResistances(MaterialRecord& rec, const std::string& text) {
    auto ch = [&text](size_t i) { return i < text.size() ? text.substr(i, 1) : std::string(); };
    rec.Other.CR.SetRaw(ch(0));
    rec.Other.FR.SetRaw(ch(1));
    rec.Other.SR.SetRaw(ch(2));
    rec.Other.AR.SetRaw(ch(3));
    rec.Other.PR.SetRaw(ch(4));
}

std::string CImportNewGLZ::ZeroToBlank(const std::string& text) {
    return text == "0" ? std::string() : text;
}

bool CImportNewGLZ::ReadRecord(FieldStream& in, MaterialRecord& rec) {
    auto& g = rec.General;
    auto& t = rec.Thermal;
    auto& o = rec.Other;
    auto& m = rec.Measured;
    auto& melt = rec.Melt;
    int indexRows = 0;
    auto fail = [&](const std::string& why) { return Failed(in, failure_, why); };
    auto bad = [&]() { return Failed(in, failure_, in.error()); };
    for (;;) {
        std::string_view line;
        if (!in.ReadLine(line)) return fail("end of file inside a material block");
        if (line == kGlzGeneral) {
            g.GlassKind = 8;
            if (!ReadText(in, g.GlassName) || !ReadText(in, g.Source)) return bad();
            if (!in.Integer(g.Polytype) || !in.Integer(g.IndexWvMin) || !in.Integer(g.IndexWvMax) ||
                !in.Single(g.Density)) {
                return bad();
            }
            for (double& c : g.PolyCoef) {
                if (!in.Number(c)) return bad();
            }
            if (!in.Integer(g.IndexPoints) || !in.Integer(g.IndexReserved) ||
                !in.Integer(g.IndexDataType)) {
                return bad();
            }
            in.EndLine();
            if (g.IndexPoints > kMaxIndexPoints) return fail("more than 150 index points");
            indexRows = g.IndexPoints = std::max<int16_t>(g.IndexPoints, 0);  // < 0: none
            rec.GeneralState.Ready = kTrue;
            rec.IndexState.Ready = kTrue;
        } else if (line == kGlzDndt) {
            float lamda2 = 0;
            if (!in.Integer(t.dndttype) || !in.Single(t.dndt_lin) || !in.Single(t.dndt_D0) ||
                !in.Single(t.dndt_D1) || !in.Single(t.dndt_D2) || !in.Single(t.dndt_E0) ||
                !in.Single(t.dndt_E1) || !in.Single(t.dndt_LamdaTK) || !in.Single(lamda2) ||
                !in.Single(t.dndt_RefTemp) || !in.Single(t.ThermalAux)) {
                return bad();
            }
            in.EndLine();
            t.dndt_LamdaTK = lamda2;
            rec.ThermalState.Ready = kTrue;
        } else if (line == kGlzOther) {
            if (!ReadLabelled(in, o.A3070) || !ReadLabelled(in, o.A20300) ||
                !ReadLabelled(in, o.Tg) || !ReadLabelled(in, o.T1013) ||
                !ReadLabelled(in, o.T1076) || !ReadLabelled(in, o.Cp) ||
                !ReadLabelled(in, o.lambda) || !ReadLabelled(in, o.EMod) ||
                !ReadLabelled(in, o.Poisson) || !ReadLabelled(in, o.Torsion) ||
                !ReadLabelled(in, o.Knoop) || !ReadLabelled(in, o.CR) || !ReadLabelled(in, o.FR) ||
                !ReadLabelled(in, o.SR) || !ReadLabelled(in, o.AR) || !ReadLabelled(in, o.PR) ||
                !ReadLabelled(in, o.REMark) || !ReadLabelled(in, o.CC) ||
                !ReadLabelled(in, o.Bubble) || !ReadLabelled(in, o.Status) ||
                !ReadLabelled(in, o.Price)) {
                return bad();
            }
            in.EndLine();
            rec.OtherState.Ready = kTrue;
        } else if (line == kGlzTrans) {
            if (!in.Integer(m.TransPoints) || !in.Single(m.TransWidth) ||
                !in.Integer(m.TransType)) {
                return bad();
            }
            if (m.TransPoints > kMaxTransPoints || m.TransPoints < 0) {
                return fail("transmission row count out of range");
            }
            for (int i = 0; i < m.TransPoints; ++i) {
                const auto k = static_cast<size_t>(i);
                if (!in.Single(m.TransWave[k]) || !in.Single(m.TransInternal[k]) ||
                    !in.Single(m.TransTotal[k]) || !in.Single(m.TransAbsorb[k])) {
                    return bad();
                }
            }
            in.EndLine();
            rec.TransState.Ready = m.TransPoints >= 2 ? kTrue : kFalse;
        } else if (line == kGlzOldIndex) {
            for (int i = 0; i < indexRows; ++i) {
                const auto k = static_cast<size_t>(i);
                std::string wave, value;
                if (!in.Text(wave) || !in.Text(value)) return bad();
                if (!ParseNumber(wave, m.IndexWave[k]) || !ParseNumber(value, m.IndexValue[k])) {
                    return fail("an index row is no number");
                }
                m.IndexWeight[k] = 1.0f;
            }
            in.EndLine();
        } else if (line == kGlzRefIndex) {
            for (int i = 0; i < indexRows; ++i) {
                const auto k = static_cast<size_t>(i);
                if (!in.Number(m.IndexWave[k]) || !in.Number(m.IndexValue[k]) ||
                    !in.Single(m.IndexWeight[k])) {
                    return bad();
                }
                m.IndexWeight[k] = std::clamp(m.IndexWeight[k], 0.0f, 1.0f);
                m.IndexValue[k] = std::clamp(m.IndexValue[k], 0.0, 9.0);
            }
            in.EndLine();
        } else if (line == kGlzMelt) {
            melt.MeltFlag = kTrue;
            if (!ReadText(in, melt.MeltParentName) || !ReadText(in, melt.MeltParentSource) ||
                !ReadText(in, melt.MeltCode) || !in.Integer(melt.MeltIndexPoints)) {
                return bad();
            }
            if (melt.MeltIndexPoints > kMaxMeltPoints || melt.MeltIndexPoints < 0) {
                return fail("melt index point count out of range");
            }
            for (int i = 0; i < melt.MeltIndexPoints; ++i) {
                const auto k = static_cast<size_t>(i);
                if (!in.Single(melt.MeltIndexWave[k]) || !in.Number(melt.MeltIndexValue[k])) {
                    return bad();
                }
            }
            if (!in.Integer(melt.MeltTransPoints)) return bad();
            if (melt.MeltTransPoints > kMaxMeltPoints || melt.MeltTransPoints < 0) {
                return fail("melt transmission row count out of range");
            }
            for (int i = 0; i < melt.MeltTransPoints; ++i) {
                const auto k = static_cast<size_t>(i);
                if (!in.Number(melt.MeltTransPair[0][k]) || !in.Number(melt.MeltTransPair[1][k]) ||
                    !in.Number(melt.MeltTransThird[k])) {
                    return bad();
                }
            }
            in.EndLine();
        } else if (line == kGlzBlockEnd) {
            // Up to 150 rows are kept. Rows of zeros behind the data are no data: older
            // backups padded every glass to 150 rows that way, and they come back with the
            // rows that were measured. The tables are then built from those rows.
            if (m.TransPoints > 0) {
                const int16_t written = m.TransPoints;
                m.TransPoints = static_cast<int16_t>(RealTransRows(m));
                if (m.TransPoints != written) {
                    rec.TransState.Ready = m.TransPoints >= 2 ? kTrue : kFalse;
                }
            }
            FinishTransTables(rec, m.TransPoints + 1);
            NormaliseRecord(rec);
            return true;
        }
    }
}

void CImportNewGLZ::ReadFile(const std::string& fileName, std::vector<MaterialRecord>& records,
                             int& count, int16_t& ok) {
    failure_.clear();
    records.clear();
    count = 0;
    ok = kFalse;
    std::string bytes;
    FileError error;
    if (!ReadWholeFile(fileName, bytes, error)) {
        failure_ = error.message;
        return;
    }
    // The format is single-byte text; a file saved by an editor as UTF-16 or UTF-8 is
    // brought back to it.
    const std::string text = DecodeTextFile(bytes);
    FieldStream in(SplitTextLines(text));
    std::string_view first;
    if (!in.ReadLine(first)) {
        failure_ = "line 1: the file is empty";
        return;
    }
    if (first.find(kGlzTitle) == std::string_view::npos) {
        dialogs_.MsgBox(kNotGlzMsg, MsgButtons::OK, MsgIcon::None, {});
    }
    MaterialRecord rec;
    size_t lastReport = 0;
    while (!in.AtEnd()) {
        bool found = false;
        std::string_view line;
        while (in.ReadLine(line)) {
            if (in.OnLastLine()) break;  // the last line starts nothing
            if (line == kGlzBlockStart) {
                found = true;
                break;
            }
        }
        if (!found) break;
        ClearMaterialRecord(rec);
        if (!ReadRecord(in, rec)) {
            records.clear();
            count = 0;
            return;
        }
        records.push_back(rec);
        if (options_.progress && in.LineNumber() - lastReport > 2000) {
            lastReport = in.LineNumber();
            options_.progress(lastReport, in.LineCount());
        }
    }
    count = static_cast<int>(records.size());
    ok = kTrue;
    if (options_.progress) options_.progress(in.LineCount(), in.LineCount());
}

}  // namespace ostrel
