#include "core/material/catalogue_record.h"

#include "core/platform/byte_codec.h"

namespace ostrel {
namespace {

template <typename Io>
constexpr bool kWriting = std::is_same_v<Io, ByteWriter>;

template <typename Io, typename T>
void Num(Io& io, size_t off, T& v) {
    if constexpr (kWriting<Io>) {
        io.Put(off, v);
    } else {
        io.Get(off, v);
    }
}

template <typename Io, typename T, size_t K>
void Arr(Io& io, size_t off, std::array<T, K>& a) {
    if constexpr (std::is_same_v<T, unsigned char>) {
        if constexpr (kWriting<Io>) {
            io.PutBytes(off, a.data(), K);
        } else {
            io.GetBytes(off, a.data(), K);
        }
    } else {
        for (size_t i = 0; i < K; ++i) Num(io, off + i * sizeof(T), a[i]);
    }
}

template <typename Io, size_t N>
void Txt(Io& io, size_t off, FixedText<N>& t) {
    if constexpr (kWriting<Io>) {
        io.PutText(off, t);
    } else {
        io.GetText(off, t);
    }
}

template <typename Io>
void Walk(Io& io, CatalogueRecord& r) {
    Txt(io, 0, r.GlassName);
    Num(io, 30, r.Field30);
    Txt(io, 32, r.Source);
    Arr(io, 62, r.Block62);
    Arr(io, 72, r.Block72);
    Arr(io, 362, r.Block362);
    Arr(io, 410, r.Block410);
    for (size_t i = 0; i < r.Texts466.size(); ++i) Txt(io, 466 + 4 * i, r.Texts466[i]);
    Arr(io, 486, r.Block486);
    Txt(io, 490, r.Text490);
}

template <typename Io>
void Walk(Io& io, ExternalRecord& r) {
    Txt(io, 0, r.GlassName);
    Num(io, 30, r.GlassKind);
    Txt(io, 32, r.Source);
    Num(io, 62, r.GlassCode);
    Num(io, 66, r.Density);
    Num(io, 70, r.Polytype);
    Arr(io, 72, r.PolyCoef);
    Num(io, 184, r.IndexWvMin);
    Num(io, 186, r.IndexWvMax);
    Arr(io, 188, r.TransShortWave);
    Arr(io, 352, r.TransShortValue);
    Arr(io, 516, r.Reserved);
}

}  // namespace

void ClearCatalogueRecord(CatalogueRecord& rec) {
    unsigned char zeros[kCatalogueRecordSize] = {};
    FromBytes(zeros, rec);
    rec.GlassName.Blank();
    rec.Source.Blank();
}

void ClearGenericRecord(ExternalRecord& rec) {
    unsigned char zeros[kExternalRecordSize] = {};
    FromBytes(zeros, rec);
    rec.GlassName.Blank();
    rec.Source.Blank();
}

void ToBytes(const CatalogueRecord& rec, unsigned char* image) {
    ByteWriter w(image, kCatalogueRecordSize);
    Walk(w, const_cast<CatalogueRecord&>(rec));  // the writer only reads the record
}

void FromBytes(const unsigned char* image, CatalogueRecord& rec) {
    ByteReader r(image, kCatalogueRecordSize);
    Walk(r, rec);
}

void ToBytes(const ExternalRecord& rec, unsigned char* image) {
    ByteWriter w(image, kExternalRecordSize);
    Walk(w, const_cast<ExternalRecord&>(rec));
}

void FromBytes(const unsigned char* image, ExternalRecord& rec) {
    ByteReader r(image, kExternalRecordSize);
    Walk(r, rec);
}

void ToExternalRecord(const GeneralData& g, ExternalRecord& e) {
    e.GlassName = g.GlassName;
    e.Source = g.Source;
    e.GlassKind = g.GlassKind;
    e.GlassCode = g.GlassCode;
    e.Density = g.Density;
    e.Polytype = g.Polytype;
    e.IndexWvMin = g.IndexWvMin;
    e.IndexWvMax = g.IndexWvMax;
    e.PolyCoef = g.PolyCoef;
    e.TransShortWave = g.TransShortWave;
    e.TransShortValue = g.TransShortValue;
}

void FromExternalRecord(const ExternalRecord& e, GeneralData& g) {
    g.GlassName = e.GlassName;
    g.Source = e.Source;
    g.GlassKind = e.GlassKind;
    g.GlassCode = e.GlassCode;
    g.Density = e.Density;
    g.Polytype = e.Polytype;
    g.IndexWvMin = e.IndexWvMin;
    g.IndexWvMax = e.IndexWvMax;
    g.PolyCoef = e.PolyCoef;
    g.TransShortWave = e.TransShortWave;
    g.TransShortValue = e.TransShortValue;
}

}  // namespace ostrel
