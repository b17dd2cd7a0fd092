#include "core/import/glz_writer.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "core/import/import_text.h"
#include "core/materialform/verification.h"
#include "core/optics/trans_calcs.h"
#include "core/platform/ole_date.h"
#include "core/platform/text.h"

namespace ostrel {
namespace {

constexpr const char* kCrLf = "\r\n";

template <size_t N>
std::string TrimmedField(FixedText<N>& field) {
    std::string t(VbTrim(field.Raw()));
    field.SetRaw(t);
    return t;
}

template <size_t N>
std::string Quoted(FixedText<N>& field) {
    return "\"" + TrimmedField(field) + "\"";
}

std::string Quoted(const char* label) {
    return std::string("\"") + label + "\"";
}

class LineWriter {
  public:
    explicit LineWriter(std::string& out) : out_(out) {}
    LineWriter& operator<<(const std::string& field) {
        if (!first_) out_.push_back(',');
        out_ += field;
        first_ = false;
        return *this;
    }
    ~LineWriter() { out_ += kCrLf; }

  private:
    std::string& out_;
    bool first_ = true;
};

void Line(std::string& out, const char* text) {
    out += text;
    out += kCrLf;
}

}  // namespace

std::string LongDateText(double date) {
    static const char* kDays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                  "Thursday", "Friday", "Saturday"};
    static const char* kMonths[] = {"January",   "February", "March",    "April",
                                    "May",       "June",     "July",     "August",
                                    "September", "October",  "November", "December"};
    const CivilDateTime c = CivilFromOleDate(date);
    // Day 0, 1899-12-30, was a Saturday.
    const auto day = static_cast<long long>(std::floor(date));
    const int weekday = static_cast<int>(((day + 6) % 7 + 7) % 7);
    return std::string(kDays[weekday]) + ", " + kMonths[std::clamp(c.month, 1, 12) - 1] + " " +
           std::to_string(c.day) + ", " + std::to_string(c.year);
}

void WriteGlzRecord(std::string& out, MaterialRecord& rec) {
    Line(out, kGlzBlockStart);
    NormaliseRecord(rec);
    auto& g = rec.General;
    auto& o = rec.Other;
    auto& t = rec.Thermal;
    auto& m = rec.Measured;
    auto& melt = rec.Melt;
    for (auto& tt : t.TT) TrimmedField(tt);
    TrimmedField(melt.MeltSpareText);

    Line(out, kGlzGeneral);
    { LineWriter(out) << Quoted(g.GlassName) << Quoted(g.Source); }
    {
        LineWriter(out) << GlzNumber(g.Polytype) << GlzNumber(g.IndexWvMin)
                        << GlzNumber(g.IndexWvMax) << GlzNumber(g.Density);
    }
    {
        LineWriter w(out);
        for (double c : g.PolyCoef) w << GlzNumber(c);
    }
    {
        LineWriter(out) << GlzNumber(g.IndexPoints) << GlzNumber(g.IndexReserved)
                        << GlzNumber(g.IndexDataType);
    }
    Line(out, kGlzDndt);
    { LineWriter(out) << GlzNumber(t.dndttype) << GlzNumber(t.dndt_lin); }
    {
        LineWriter(out) << GlzNumber(t.dndt_D0) << GlzNumber(t.dndt_D1) << GlzNumber(t.dndt_D2)
                        << GlzNumber(t.dndt_E0) << GlzNumber(t.dndt_E1) << GlzNumber(t.dndt_LamdaTK)
                        << GlzNumber(t.dndt_LamdaTK) << GlzNumber(t.dndt_RefTemp);
    }
    { LineWriter(out) << GlzNumber(t.ThermalAux); }
    Line(out, kGlzOther);
    {
        LineWriter(out) << Quoted("A3070") << Quoted(o.A3070) << Quoted("A20300")
                        << Quoted(o.A20300) << Quoted("Tg") << Quoted(o.Tg) << Quoted("T1013")
                        << Quoted(o.T1013) << Quoted("T1076") << Quoted(o.T1076) << Quoted("Cp")
                        << Quoted(o.Cp) << Quoted("lambda") << Quoted(o.lambda);
    }
    {
        LineWriter(out) << Quoted("EMod") << Quoted(o.EMod) << Quoted("Poisson")
                        << Quoted(o.Poisson) << Quoted("Torsion") << Quoted(o.Torsion)
                        << Quoted("Knoop") << Quoted(o.Knoop);
    }
    {
        LineWriter(out) << Quoted("CR") << Quoted(o.CR) << Quoted("FR") << Quoted(o.FR)
                        << Quoted("SR") << Quoted(o.SR) << Quoted("AR") << Quoted(o.AR)
                        << Quoted("PR") << Quoted(o.PR);
    }
    {
        LineWriter(out) << Quoted("Remark") << Quoted(o.REMark) << Quoted("CC") << Quoted(o.CC)
                        << Quoted("Bubble") << Quoted(o.Bubble) << Quoted("Status")
                        << Quoted(o.Status) << Quoted("RelPrice") << Quoted(o.Price);
    }
    Line(out, kGlzTrans);
    // The rows that hold data, and no more: a count of 150 with empty rows behind the data
    // is written as the data alone, and a glass without rows writes none.
    const int transRows = RealTransRows(m);
    {
        LineWriter(out) << GlzNumber(static_cast<int16_t>(transRows)) << GlzNumber(m.TransWidth)
                        << GlzNumber(m.TransType);
    }
    for (int i = 0; i < transRows; ++i) {
        const auto k = static_cast<size_t>(i);
        LineWriter(out) << GlzNumber(m.TransWave[k]) << GlzNumber(m.TransInternal[k])
                        << GlzNumber(m.TransTotal[k]) << GlzNumber(m.TransAbsorb[k]);
    }
    if (g.IndexPoints >= 1) {
        Line(out, kGlzRefIndex);
        const int rows = std::min<int>(g.IndexPoints, kMaxIndexPoints);
        for (int i = 0; i < rows; ++i) {
            const auto k = static_cast<size_t>(i);
            LineWriter(out) << GlzNumber(m.IndexWave[k]) << GlzNumber(m.IndexValue[k])
                            << GlzNumber(m.IndexWeight[k]);
        }
    }
    if (melt.MeltFlag == kTrue && melt.MeltIndexPoints >= 1) {
        Line(out, kGlzMelt);
        { LineWriter(out) << Quoted(melt.MeltParentName) << Quoted(melt.MeltParentSource); }
        { LineWriter(out) << Quoted(melt.MeltCode) << GlzNumber(melt.MeltIndexPoints); }
        const int rows = std::min<int>(melt.MeltIndexPoints, kMaxMeltPoints);
        for (int i = 0; i < rows; ++i) {
            const auto k = static_cast<size_t>(i);
            LineWriter(out) << GlzNumber(melt.MeltIndexWave[k])
                            << GlzNumber(melt.MeltIndexValue[k]);
        }
        { LineWriter(out) << GlzNumber(melt.MeltTransPoints); }
        const int tRows = std::clamp<int>(melt.MeltTransPoints, 0, kMaxMeltPoints);
        for (int i = 0; i < tRows; ++i) {
            const auto k = static_cast<size_t>(i);
            LineWriter(out) << GlzNumber(melt.MeltTransPair[0][k])
                            << GlzNumber(melt.MeltTransPair[1][k])
                            << GlzNumber(melt.MeltTransThird[k]);
        }
    } else {
        TrimmedField(melt.MeltParentName);
        TrimmedField(melt.MeltParentSource);
        TrimmedField(melt.MeltCode);
    }
    Line(out, kGlzBlockEnd);
    Line(out, " ");
}

std::string GlzFileImage(std::vector<MaterialRecord>& list, int first, int last, double date) {
    std::string out;
    out += kGlzTitle;
    out += " V2, " + LongDateText(date) + kCrLf;
    const int size = static_cast<int>(list.size());
    for (int i = std::max(first, 1); i <= std::min(last, size); ++i) {
        WriteGlzRecord(out, list[static_cast<size_t>(i - 1)]);
    }
    out += kGlzEof;
    out += kCrLf;
    return out;
}

bool WriteGlzFile(const std::string& folder, const std::string& fileName,
                  std::vector<MaterialRecord>& list, int first, int last, double date,
                  FileError& error) {
    const std::filesystem::path path =
        folder.empty() ? std::filesystem::path(fileName) : std::filesystem::path(folder) / fileName;
    return WriteFileAtomic(path, GlzFileImage(list, first, last, date), error);
}

}  // namespace ostrel
