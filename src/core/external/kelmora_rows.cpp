// The glass database's rows: a row read into a material record and a record written as
// a new row, column by column.
#include <charconv>
#include <cmath>
#include <cstdint>

#include "core/external/kelmora_columns.h"
#include "core/external/kelmora_database.h"
#include "core/optics/derived_data.h"
#include "core/optics/index_from_polynomial.h"
#include "core/optics/trans_calcs.h"
#include "core/platform/number_text.h"
#include "core/platform/text.h"

namespace ostrel {

using kelmora_columns::Fail;
using kelmora_columns::Int;
using kelmora_columns::kDerivedColumns;
using kelmora_columns::kDndtColumns;
using kelmora_columns::kOtherNumberColumns;
using kelmora_columns::kStatusColumn;
using kelmora_columns::Str;

namespace {

constexpr int kErrNullUse = 94;     // a Null where a number must stand
constexpr int kErrNoRecord = 3021;  // no current row

// The shortest text that reads back as the same 32-bit float.
std::string FloatText(float v) {
    char buf[32];
    auto r = std::to_chars(buf, buf + sizeof buf, v);
    return std::string(buf, r.ptr);
}

bool NullError(const std::string& column, DbError& error) {
    error.code = kErrNullUse;
    error.message = "Invalid use of Null (column " + column + ")";
    return false;
}

// A number column read through a plain conversion: Null is an error.
bool Number(const DbRow& row, const char* column, double& out, DbError& error) {
    bool ok = false;
    out = DbNumber(row.Field(column), ok);
    if (!ok) return NullError(column, error);
    return true;
}

double NumberOr(const DbRow& row, const std::string& column, double nullValue) {
    bool ok = false;
    const double v = DbNumber(row.Field(column), ok);
    return ok ? v : nullValue;
}

template <size_t N>
void TextInto(const DbRow& row, const std::string& column, FixedText<N>& field) {
    const DbValue& v = row.Field(column);
    if (IsNull(v)) {
        field.Blank();
    } else if (const auto* s = std::get_if<std::string>(&v)) {
        field.Set(*s);
    } else {
        bool ok = false;
        field.Set(FloatText(static_cast<float>(DbNumber(v, ok))));
    }
}

DbValue Real(float v) {
    return DbValue{static_cast<double>(v)};
}

const char* PolytypeShortName(int16_t type) {
    switch (type) {
        case 1:
            return "Sch";
        case 2:
            return "Sel";
        case 3:
            return "Scx";
        case 4:
            return "Cau";
        default:
            return "";
    }
}

}  // namespace

std::string StatusText(const std::string& status) {
    const std::string t = VbTrimCopy(status);
    switch (t.empty() ? '\0' : t[0]) {
        case 'A':
            return "  Available?";
        case 'E':
            return "  Eco";
        case 'O':
            return "  Obsolete";
        case 'R':
            return "  Recommended";
        default:
            return status;
    }
}

bool ReadGlassRow(const DbRow& row, MaterialRecord& rec, DbError& error) {
    double v = 0;
    auto& g = rec.General;
    g.GlassKind = 8;
    TextInto(row, "GlassName", g.GlassName);
    if (!Number(row, "GlassCode", v, error)) return false;
    g.GlassCode = CLng(v);
    TextInto(row, "Source", g.Source);
    g.Polytype = PolyTypeFromShortName(VbTrimCopy(DbText(row.Field("Polytype"))));
    for (int i = 0; i < kPolyCoefCount; ++i) {
        g.PolyCoef[static_cast<size_t>(i)] = NumberOr(row, "C" + std::to_string(i + 1), 0.0);
    }
    if (!Number(row, "Density", v, error)) return false;
    g.Density = static_cast<float>(v);
    if (!Number(row, "IndexWvMin", v, error)) return false;
    g.IndexWvMin = CInt(v);
    if (!Number(row, "IndexWvMax", v, error)) return false;
    g.IndexWvMax = CInt(v);
    rec.GeneralState.Ready = kTrue;

    float* derived[] = {&rec.Derived.nd,  &rec.Derived.vd,  &rec.Derived.nF_NC,
                        &rec.Derived.Ne,  &rec.Derived.Ve,  &rec.Derived.nfd_ncd,
                        &rec.Derived.PCs, &rec.Derived.PdC, &rec.Derived.PgF};
    for (size_t i = 0; i < 9; ++i) {
        if (!Number(row, kDerivedColumns[i], v, error)) return false;
        *derived[i] = static_cast<float>(v);
    }

    auto& o = rec.Other;
    TextInto(row, "A3070", o.A3070);
    TextInto(row, "A20300", o.A20300);
    TextInto(row, "Tg", o.Tg);
    TextInto(row, "T1013", o.T1013);
    TextInto(row, "T1076", o.T1076);
    TextInto(row, "Cp", o.Cp);
    TextInto(row, "lambda", o.lambda);
    TextInto(row, "EMod", o.EMod);
    TextInto(row, "Poisson", o.Poisson);
    TextInto(row, "Torsion", o.Torsion);
    TextInto(row, "Knoop", o.Knoop);
    TextInto(row, "CR", o.CR);
    TextInto(row, "FR", o.FR);
    TextInto(row, "SR", o.SR);
    TextInto(row, "AR", o.AR);
    TextInto(row, "PR", o.PR);
    TextInto(row, "REMark", o.REMark);
    TextInto(row, "CC", o.CC);
    TextInto(row, "Bubble", o.Bubble);
    TextInto(row, kStatusColumn, o.Status);
    TextInto(row, "Price", o.Price);
    rec.OtherState.Ready = kTrue;

    auto& s = rec.Status;
    const std::pair<const char*, Flag*> flags[] = {
        {"StatusECO", &s.StatusECO}, {"StatusMold", &s.StatusMold}, {"StatusMelt", &s.StatusMelt}};
    for (auto& [name, flag] : flags) {
        if (!Number(row, name, v, error)) return false;
        *flag = CInt(v);
    }
    if (!Number(row, "Abrasion", v, error)) return false;
    s.Abrasion = CInt(v);
    if (!Number(row, "DataDate", v, error)) return false;
    s.DataDate = v;

    // Transmission: the 41 columns from T250 on, their wavelengths taken from the names.
    auto& m = rec.Measured;
    const int base = row.Position("T250");
    if (base < 0) return Fail(error, kErrNoRecord, "Item not found in this collection: T250");
    std::vector<std::pair<float, float>> pairs;
    for (int i = 0; i < kTransTableSize; ++i) {
        const DbValue& value = row.Field(base + i);
        const float wave = static_cast<float>(Val(row.Name(base + i).substr(1)));
        bool ok = false;
        const double x = DbNumber(value, ok);
        rec.TransTable[static_cast<size_t>(i)] = ok ? static_cast<float>(x) : kNoTransData;
        if (ok && pairs.size() < 100) pairs.emplace_back(wave, static_cast<float>(x));
    }
    const int count = static_cast<int>(pairs.size());
    m.TransPoints = static_cast<int16_t>(count);
    m.TransType = 2;
    m.TransWidth = 10.0f;
    for (int k = 1; k <= count; ++k) {
        const size_t at = static_cast<size_t>(count - k);
        const auto& [wave, absorb] = pairs[static_cast<size_t>(k - 1)];
        if (at < m.TransWave.size()) {
            m.TransWave[at] = wave;
            m.TransAbsorb[at] = absorb;
            m.TransInternal[at] = static_cast<float>(std::exp(-m.TransWidth * absorb) * 100.0);
        }
        if (at < static_cast<size_t>(kTransTableSize)) {
            g.TransShortWave[at] = wave;
            g.TransShortValue[at] = absorb;
        }
    }
    rec.TransState.Ready = kTrue;

    auto& t = rec.Thermal;
    for (int i = 0; i < 6; ++i)
        TextInto(row, "TT" + std::to_string(i + 1), t.TT[static_cast<size_t>(i)]);
    t.dndttype = CInt(NumberOr(row, "dndttype", 0));
    float* dndt[] = {&t.dndt_lin, &t.dndt_D0, &t.dndt_D1,     &t.dndt_D2,
                     &t.dndt_E0,  &t.dndt_E1, &t.dndt_LamdaTK};
    for (size_t i = 0; i < 7; ++i) *dndt[i] = static_cast<float>(NumberOr(row, kDndtColumns[i], 0));
    rec.ThermalState.Ready = kTrue;
    return true;
}

DbValue TextToField(const std::string& text, bool numeric) {
    const std::string t = VbTrimCopy(text);
    if (t.empty()) return DbValue{};
    if (numeric) return Real(static_cast<float>(Val(t)));
    return Str(t);
}

DbNewRow WriteGlassRow(int16_t id, const MaterialRecord& source) {
    MaterialRecord rec = source;
    UpdateDerivedData(rec);
    const auto& g = rec.General;
    const auto& d = rec.Derived;
    const auto& o = rec.Other;
    const auto& s = rec.Status;
    const auto& t = rec.Thermal;
    DbNewRow r;
    r.emplace_back("GlassID", Int(id));
    r.emplace_back("s1", Int(kCustomRowKind));
    r.emplace_back("GlassName", Str(g.GlassName.Text()));
    r.emplace_back("GlassCode", Int(g.GlassCode));
    r.emplace_back("Source", Str(g.Source.Text()));
    r.emplace_back("SchottName", Str(g.GlassName.Text()));
    r.emplace_back("Polytype", Str(PolytypeShortName(g.Polytype)));
    for (int i = 0; i < kPolyCoefCount; ++i) {
        r.emplace_back("C" + std::to_string(i + 1), DbValue{g.PolyCoef[static_cast<size_t>(i)]});
    }
    r.emplace_back("Density", Real(g.Density));
    r.emplace_back("IndexWvMin", Int(g.IndexWvMin));
    r.emplace_back("IndexWvMax", Int(g.IndexWvMax));
    const float derived[] = {d.nd, d.vd, d.nF_NC, d.Ne, d.Ve, d.nfd_ncd, d.PCs, d.PdC, d.PgF};
    for (size_t i = 0; i < 9; ++i) r.emplace_back(kDerivedColumns[i], Real(derived[i]));
    const std::string others[] = {
        o.A3070.Text(),   o.A20300.Text(),  o.Tg.Text(),     o.T1013.Text(),
        o.T1076.Text(),   o.Cp.Text(),      o.lambda.Text(), o.EMod.Text(),
        o.Poisson.Text(), o.Torsion.Text(), o.Knoop.Text(),  o.CR.Text(),
        o.FR.Text(),      o.SR.Text(),      o.AR.Text(),     o.PR.Text()};
    for (size_t i = 0; i < 16; ++i)
        r.emplace_back(kOtherNumberColumns[i], TextToField(others[i], true));
    r.emplace_back("REMark", Str(o.REMark.Untrimmed()));
    r.emplace_back("CC", TextToField(o.CC.Text(), false));
    r.emplace_back("Bubble", TextToField(o.Bubble.Text(), true));
    r.emplace_back(kStatusColumn, Str(o.Status.Text()));
    r.emplace_back("Price", TextToField(o.Price.Text(), true));
    r.emplace_back("Abrasion", Int(s.Abrasion));
    r.emplace_back("StatusECO", Int(s.StatusECO));
    r.emplace_back("StatusMold", Int(s.StatusMold));
    r.emplace_back("StatusILine", Int(s.StatusILine));
    r.emplace_back("StatusMelt", Int(rec.Melt.MeltFlag));
    r.emplace_back("DataDate", DbValue{s.DataDate});
    for (int i = 0; i < kTransTableSize; ++i) {
        const float v = rec.TransTable[static_cast<size_t>(i)];
        if (v != kNoTransData) r.emplace_back(TransColumnName(i), Real(v));
    }
    r.emplace_back("TT1", Str(t.dndt_lin == 0 ? t.TT[0].Text() : FloatText(t.dndt_lin)));
    for (int i = 1; i < 6; ++i)
        r.emplace_back("TT" + std::to_string(i + 1), Str(t.TT[static_cast<size_t>(i)].Text()));
    r.emplace_back("dndttype", Int(t.dndttype));
    const float dndt[] = {t.dndt_lin, t.dndt_D0, t.dndt_D1,     t.dndt_D2,
                          t.dndt_E0,  t.dndt_E1, t.dndt_LamdaTK};
    for (size_t i = 0; i < 7; ++i) r.emplace_back(kDndtColumns[i], Real(dndt[i]));
    return r;
}

}  // namespace ostrel
