#include "cli/record_json.h"

#include <charconv>

namespace ostrel::cli {
namespace {

using Json = nlohmann::ordered_json;

// A float as the double whose shortest text is the float's own shortest text, so that
// 1.5168f prints as 1.5168 rather than 1.5167999267578125.
double Shortest(float f) {
    char buf[32];
    auto res = std::to_chars(buf, buf + sizeof buf, f);
    double d = 0;
    std::from_chars(buf, res.ptr, d);
    return d;
}

Json Num(float v) {
    return Shortest(v);
}
Json Num(double v) {
    return v;
}

template <typename T, size_t N>
Json Arr(const std::array<T, N>& a) {
    Json j = Json::array();
    for (const auto& v : a) {
        if constexpr (std::is_same_v<T, unsigned char>) {
            j.push_back(static_cast<int>(v));
        } else {
            j.push_back(Num(v));
        }
    }
    return j;
}

template <size_t N>
Json Text(const FixedText<N>& t) {
    return t.Text();
}

Json State(const SectionState& s) {
    return Json{{"Changes", s.Changes}, {"Ready", s.Ready}};
}

}  // namespace

Json RecordToJson(const MaterialRecord& r) {
    Json j;
    const auto& g = r.General;
    j["IndexDataType"] = g.IndexDataType;
    j["IndexReserved"] = g.IndexReserved;
    j["IndexPoints"] = g.IndexPoints;
    j["GlassName"] = Text(g.GlassName);
    j["GlassKind"] = g.GlassKind;
    j["Source"] = Text(g.Source);
    j["GlassCode"] = g.GlassCode;
    j["Density"] = Num(g.Density);
    j["Polytype"] = g.Polytype;
    j["PolyCoef"] = Arr(g.PolyCoef);
    j["IndexWvMin"] = g.IndexWvMin;
    j["IndexWvMax"] = g.IndexWvMax;
    j["TransShortWave"] = Arr(g.TransShortWave);
    j["TransShortValue"] = Arr(g.TransShortValue);

    const auto& d = r.Derived;
    j["nd"] = Num(d.nd);
    j["vd"] = Num(d.vd);
    j["nF_NC"] = Num(d.nF_NC);
    j["Ne"] = Num(d.Ne);
    j["Ve"] = Num(d.Ve);
    j["nfd_ncd"] = Num(d.nfd_ncd);
    j["PCs"] = Num(d.PCs);
    j["PdC"] = Num(d.PdC);
    j["PgF"] = Num(d.PgF);
    j["DerivedSpare"] = Arr(d.DerivedSpare);
    j["TransTable"] = Arr(r.TransTable);

    const auto& o = r.Other;
    j["A3070"] = Text(o.A3070);
    j["A20300"] = Text(o.A20300);
    j["Tg"] = Text(o.Tg);
    j["T1013"] = Text(o.T1013);
    j["T1076"] = Text(o.T1076);
    j["Cp"] = Text(o.Cp);
    j["lambda"] = Text(o.lambda);
    j["EMod"] = Text(o.EMod);
    j["Poisson"] = Text(o.Poisson);
    j["Torsion"] = Text(o.Torsion);
    j["Knoop"] = Text(o.Knoop);
    j["CR"] = Text(o.CR);
    j["FR"] = Text(o.FR);
    j["SR"] = Text(o.SR);
    j["AR"] = Text(o.AR);
    j["PR"] = Text(o.PR);
    j["REMark"] = Text(o.REMark);
    j["CC"] = Text(o.CC);
    j["OtherSpare"] = Arr(o.OtherSpare);
    j["Bubble"] = Text(o.Bubble);
    j["Status"] = Text(o.Status);
    j["Price"] = Text(o.Price);

    const auto& t = r.Thermal;
    for (size_t i = 0; i < t.TT.size(); ++i) j["TT" + std::to_string(i + 1)] = Text(t.TT[i]);
    j["ThermalAux"] = Num(t.ThermalAux);
    j["dndttype"] = t.dndttype;
    j["dndt_lin"] = Num(t.dndt_lin);
    j["dndt_D0"] = Num(t.dndt_D0);
    j["dndt_D1"] = Num(t.dndt_D1);
    j["dndt_D2"] = Num(t.dndt_D2);
    j["dndt_E0"] = Num(t.dndt_E0);
    j["dndt_E1"] = Num(t.dndt_E1);
    j["dndt_LamdaTK"] = Num(t.dndt_LamdaTK);
    j["dndt_RefTemp"] = Num(t.dndt_RefTemp);

    const auto& m = r.Measured;
    j["IndexWave"] = Arr(m.IndexWave);
    j["IndexWaveUm"] = Arr(m.IndexWaveUm);
    j["IndexWeight"] = Arr(m.IndexWeight);
    j["IndexValue"] = Arr(m.IndexValue);
    j["IndexSquared"] = Arr(m.IndexSquared);
    j["IndexCalc"] = Arr(m.IndexCalc);
    j["IndexError"] = Arr(m.IndexError);
    j["FitError"] = m.FitError;
    j["TransType"] = m.TransType;
    j["TransPoints"] = m.TransPoints;
    j["TransWidth"] = Num(m.TransWidth);
    j["TransWave"] = Arr(m.TransWave);
    j["TransAbsorb"] = Arr(m.TransAbsorb);
    j["TransTotal"] = Arr(m.TransTotal);
    j["TransInternal"] = Arr(m.TransInternal);

    const auto& me = r.Melt;
    j["MeltFlag"] = me.MeltFlag;
    j["MeltSpareText"] = Text(me.MeltSpareText);
    j["MeltParentName"] = Text(me.MeltParentName);
    j["MeltParentSource"] = Text(me.MeltParentSource);
    j["MeltCode"] = Text(me.MeltCode);
    j["MeltIndexPoints"] = me.MeltIndexPoints;
    j["MeltIndexWave"] = Arr(me.MeltIndexWave);
    j["MeltIndexValue"] = Arr(me.MeltIndexValue);
    j["MeltTransPoints"] = me.MeltTransPoints;
    j["MeltTransPair"] = Json::array({Arr(me.MeltTransPair[0]), Arr(me.MeltTransPair[1])});
    j["MeltTransThird"] = Arr(me.MeltTransThird);

    const auto& s = r.Status;
    j["StatusECO"] = s.StatusECO;
    j["StatusMold"] = s.StatusMold;
    j["StatusILine"] = s.StatusILine;
    j["StatusMelt"] = s.StatusMelt;
    j["Abrasion"] = s.Abrasion;
    j["DataDate"] = s.DataDate;

    j["GeneralState"] = State(r.GeneralState);
    j["IndexState"] = State(r.IndexState);
    j["TransState"] = State(r.TransState);
    j["ThermalState"] = State(r.ThermalState);
    j["OtherState"] = State(r.OtherState);
    j["DateChanged"] = r.DateChanged;
    return j;
}

namespace {

// One value as the JSON dump writes it, invalid UTF-8 replaced.
template <typename T>
void AppendValue(std::string& out, const T& value) {
    if constexpr (std::is_integral_v<T>) {
        out += std::to_string(value);
    } else {
        out += Json(value).dump(-1, ' ', false, Json::error_handler_t::replace);
    }
}

template <typename T>
void AppendMember(std::string& out, const char* indent, const char* key, const T& value,
                  bool last = false) {
    out += indent;
    out += '"';
    out += key;
    out += "\": ";
    AppendValue(out, value);
    out += last ? "\n" : ",\n";
}

}  // namespace

std::string ListToJsonText(const std::vector<MaterialSummary>& entries) {
    // Written member by member, in the layout of a dump with an indent of two, so that a
    // list of thousands of materials is not first built as a tree.
    if (entries.empty()) return "[]";
    std::string out = "[\n";
    out.reserve(entries.size() * 320);
    for (size_t i = 0; i < entries.size(); ++i) {
        const MaterialSummary& s = entries[i];
        const char* in = "    ";
        out += "  {\n";
        AppendMember(out, in, "index", static_cast<int>(i + 1));
        AppendMember(out, in, "GlassName", s.GlassName.Text());
        AppendMember(out, in, "Source", s.Source.Text());
        AppendMember(out, in, "Polytype", s.Polytype);
        AppendMember(out, in, "IndexWvMin", s.IndexWvMin);
        AppendMember(out, in, "IndexWvMax", s.IndexWvMax);
        AppendMember(out, in, "MeltFlag", s.MeltFlag);
        AppendMember(out, in, "DateChanged", s.DateChanged);
        out += "    \"Ready\": {\n";
        const char* ready = "      ";
        AppendMember(out, ready, "General", s.Ready[0]);
        AppendMember(out, ready, "Index", s.Ready[1]);
        AppendMember(out, ready, "Trans", s.Ready[2]);
        AppendMember(out, ready, "dndt", s.Ready[3]);
        AppendMember(out, ready, "Other", s.Ready[4], true);
        out += "    }\n";
        out += i + 1 < entries.size() ? "  },\n" : "  }\n";
    }
    out += ']';
    return out;
}

}  // namespace ostrel::cli
