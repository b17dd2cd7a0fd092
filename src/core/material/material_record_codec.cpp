#include "core/material/material_record_codec.h"

#include "core/platform/byte_codec.h"

namespace ostrel {
namespace {

// One routine walks the layout for both directions, so that reader and writer can never
// disagree on an offset.
template <typename Io, typename Rec>
void WalkLayout(Io& io, Rec& r) {
    auto num = [&io](size_t off, auto& v) {
        if constexpr (std::is_same_v<Io, ByteWriter>) {
            io.Put(off, v);
        } else {
            io.Get(off, v);
        }
    };
    auto arr = [&num](size_t off, auto& a) {
        using T = std::remove_cvref_t<decltype(a[0])>;
        for (size_t i = 0; i < a.size(); ++i) num(off + i * sizeof(T), a[i]);
    };
    auto txt = [&io](size_t off, auto& t) {
        if constexpr (std::is_same_v<Io, ByteWriter>) {
            io.PutText(off, t);
        } else {
            io.GetText(off, t);
        }
    };
    auto raw = [&io](size_t off, auto& bytes) {
        if constexpr (std::is_same_v<Io, ByteWriter>) {
            io.PutBytes(off, bytes.data(), bytes.size());
        } else {
            io.GetBytes(off, bytes.data(), bytes.size());
        }
    };

    auto& g = r.General;
    num(0, g.IndexDataType);
    num(2, g.IndexReserved);
    num(4, g.IndexPoints);
    txt(material_offset::kGlassName, g.GlassName);
    num(36, g.GlassKind);
    txt(material_offset::kSource, g.Source);
    num(68, g.GlassCode);
    num(72, g.Density);
    num(material_offset::kPolytype, g.Polytype);
    arr(78, g.PolyCoef);
    num(material_offset::kIndexWvMin, g.IndexWvMin);
    num(material_offset::kIndexWvMax, g.IndexWvMax);
    arr(194, g.TransShortWave);
    arr(358, g.TransShortValue);

    auto& d = r.Derived;
    num(522, d.nd);
    num(526, d.vd);
    num(530, d.nF_NC);
    num(534, d.Ne);
    num(538, d.Ve);
    num(542, d.nfd_ncd);
    num(546, d.PCs);
    num(550, d.PdC);
    num(554, d.PgF);
    arr(558, d.DerivedSpare);

    arr(574, r.TransTable);

    auto& o = r.Other;
    txt(738, o.A3070);
    txt(753, o.A20300);
    txt(768, o.Tg);
    txt(783, o.T1013);
    txt(798, o.T1076);
    txt(813, o.Cp);
    txt(828, o.lambda);
    txt(843, o.EMod);
    txt(858, o.Poisson);
    txt(873, o.Torsion);
    txt(888, o.Knoop);
    txt(903, o.CR);
    txt(908, o.FR);
    txt(913, o.SR);
    txt(922, o.AR);
    txt(928, o.PR);
    txt(943, o.REMark);
    txt(1063, o.CC);
    raw(1069, o.OtherSpare);
    txt(1073, o.Bubble);
    txt(1077, o.Status);
    txt(1081, o.Price);

    auto& t = r.Thermal;
    for (size_t i = 0; i < t.TT.size(); ++i) txt(1096 + 120 * i, t.TT[i]);
    num(1816, t.ThermalAux);
    num(1820, t.dndttype);
    num(1822, t.dndt_lin);
    num(1826, t.dndt_D0);
    num(1830, t.dndt_D1);
    num(1834, t.dndt_D2);
    num(1838, t.dndt_E0);
    num(1842, t.dndt_E1);
    num(1846, t.dndt_LamdaTK);
    num(1850, t.dndt_RefTemp);

    auto& m = r.Measured;
    arr(1854, m.IndexWave);
    arr(3054, m.IndexWaveUm);
    arr(4254, m.IndexWeight);
    arr(4854, m.IndexValue);
    arr(6054, m.IndexSquared);
    arr(7254, m.IndexCalc);
    arr(8454, m.IndexError);
    num(9654, m.FitError);
    num(9662, m.TransType);
    num(9664, m.TransPoints);
    num(9666, m.TransWidth);
    arr(9670, m.TransWave);
    arr(10270, m.TransAbsorb);
    arr(10870, m.TransTotal);
    arr(11470, m.TransInternal);

    auto& me = r.Melt;
    num(material_offset::kMeltFlag, me.MeltFlag);
    txt(12072, me.MeltSpareText);
    txt(12102, me.MeltParentName);
    txt(12132, me.MeltParentSource);
    txt(12162, me.MeltCode);
    num(12172, me.MeltIndexPoints);
    arr(12174, me.MeltIndexWave);
    arr(12254, me.MeltIndexValue);
    num(12414, me.MeltTransPoints);
    arr(12416, me.MeltTransPair[0]);
    arr(12576, me.MeltTransPair[1]);
    arr(12736, me.MeltTransThird);

    auto& s = r.Status;
    num(12896, s.StatusECO);
    num(12898, s.StatusMold);
    num(12900, s.StatusILine);
    raw(12902, s.StatusSpare1);
    num(12906, s.StatusMelt);
    num(12908, s.Abrasion);
    raw(12910, s.StatusSpare2);
    num(12928, s.DataDate);

    SectionState* states[] = {&r.GeneralState, &r.IndexState, &r.TransState, &r.ThermalState,
                              &r.OtherState};
    for (size_t i = 0; i < 5; ++i) {
        num(material_offset::kSectionStates + 4 * i, states[i]->Changes);
        num(material_offset::kSectionStates + 2 + 4 * i, states[i]->Ready);
    }
    num(material_offset::kDateChanged, r.DateChanged);
}

}  // namespace

void ToBytes(const MaterialRecord& rec, unsigned char* image) {
    ByteWriter w(image, kMaterialRecordSize);
    WalkLayout(w, const_cast<MaterialRecord&>(rec));  // the writer only reads the record
}

MaterialImage ToBytes(const MaterialRecord& rec) {
    MaterialImage image{};
    ToBytes(rec, image.data());
    return image;
}

void FromBytes(const unsigned char* image, MaterialRecord& rec) {
    ByteReader r(image, kMaterialRecordSize);
    WalkLayout(r, rec);
}

MaterialRecord FromBytes(std::span<const unsigned char, kMaterialRecordSize> image) {
    MaterialRecord rec;
    FromBytes(image.data(), rec);
    return rec;
}

void SummaryFromBytes(const unsigned char* image, MaterialSummary& summary) {
    ByteReader r(image, kMaterialRecordSize);
    r.GetText(material_offset::kGlassName, summary.GlassName);
    r.GetText(material_offset::kSource, summary.Source);
    r.Get(material_offset::kPolytype, summary.Polytype);
    r.Get(material_offset::kIndexWvMin, summary.IndexWvMin);
    r.Get(material_offset::kIndexWvMax, summary.IndexWvMax);
    r.Get(material_offset::kMeltFlag, summary.MeltFlag);
    for (size_t i = 0; i < summary.Ready.size(); ++i) {
        r.Get(material_offset::kSectionStates + 2 + 4 * i, summary.Ready[i]);
    }
    r.Get(material_offset::kDateChanged, summary.DateChanged);
}

}  // namespace ostrel
