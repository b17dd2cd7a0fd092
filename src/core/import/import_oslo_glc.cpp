#include "core/import/import_oslo_glc.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <memory>
#include <span>

#include "core/import/refit_to_schott.h"
#include "core/materialform/verification.h"
#include "core/optics/glass_code.h"
#include "core/optics/index_from_polynomial.h"
#include "core/optics/trans_calcs.h"
#include "core/platform/file_io.h"
#include "core/platform/text.h"

namespace ostrel {
namespace {

// The fields of a glass line after its name: runs of blanks and tabs separate them, and a
// line that starts with a blank has an empty field 0 before it.
void SplitFields(std::string_view s, std::vector<std::string_view>& out) {
    SplitBlanks(s, out);
    if (s.empty() || s[0] == ' ' || s[0] == '\t') out.insert(out.begin(), std::string_view{});
}

// A day-month-year date written with the month's name: "24-Jul-15", "1/MAR/2004".
bool IsNamedMonthDate(std::string_view w) {
    static const char* const kMonths[] = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                          "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
    std::vector<std::string> parts(1);
    for (const char c : w) {
        if (c == '-' || c == '/' || c == '.') {
            parts.emplace_back();
        } else {
            parts.back() += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        }
    }
    if (parts.size() != 3) return false;
    const auto digits = [](const std::string& p) {
        return !p.empty() && std::all_of(p.begin(), p.end(), [](char c) {
            return std::isdigit(static_cast<unsigned char>(c));
        });
    };
    const std::string month = parts[1].substr(0, 3);
    return digits(parts[0]) && digits(parts[2]) &&
           std::find_if(std::begin(kMonths), std::end(kMonths),
                        [&month](const char* m) { return month == m; }) != std::end(kMonths);
}

// A glass line starts with its name in the first ten characters.
bool HasName(std::string_view line) {
    return !VbTrim(line.substr(0, 10)).empty();
}

}  // namespace

bool CImportOsloGLC::IsMakerWord(std::string_view word) {
    const bool letter = std::any_of(word.begin(), word.end(), [](char c) {
        return std::isalpha(static_cast<unsigned char>(c)) != 0;
    });
    return letter && !IsNamedMonthDate(word);
}

std::string CImportOsloGLC::SourceFromFileName(const std::string& path) {
    const std::string name = std::filesystem::path(path).filename().string();
    return std::string(VbTrim(name.substr(0, name.find('.'))));
}

void CImportOsloGLC::SplitResistances(OtherData& other, const std::string& text) {
    if (text == "0") {
        other.CR.Blank();
        other.FR.Blank();
        other.SR.Blank();
        other.AR.Blank();
        other.PR.Blank();
        return;
    }
    auto ch = [&text](size_t i) { return i < text.size() ? text.substr(i, 1) : std::string(); };
    other.CR.SetRaw(ch(0));
    other.FR.SetRaw(ch(1));
    other.SR.SetRaw(ch(2));
    other.AR.SetRaw(ch(3));
    other.PR.SetRaw(ch(4));
}

std::string CImportOsloGLC::SqueezeBlanks(std::string_view text) {
    return ostrel::SqueezeBlanks(text);
}

bool CImportOsloGLC::ReadRecord(std::string_view line, const std::string& source,
                                MaterialRecord& rec, bool& refitted, float& meanError,
                                StatedIndex& stated) {
    refitted = false;
    meanError = 0;
    why_ = kUnreadable;
    const std::string name(VbTrim(line.substr(0, 10)));
    if (name.empty()) return false;
    auto& g = rec.General;
    auto& o = rec.Other;
    auto& t = rec.Thermal;
    auto& m = rec.Measured;
    g.GlassName.SetRaw(name);
    g.Source.SetRaw(source);
    g.GlassKind = 8;
    g.IndexDataType = 1;

    std::vector<std::string_view>& tok = fields_;
    SplitFields(line.size() > 10 ? line.substr(10) : std::string_view{}, tok);
    auto text = [&tok](size_t i, std::string& out) {
        if (i >= tok.size()) return false;
        out.assign(tok[i]);
        return true;
    };
    auto number = [&tok](size_t i, double& v) { return i < tok.size() && ParseNumber(tok[i], v); };

    double nd = 0, vd = 0, v = 0;
    if (!number(1, nd) || !number(2, vd)) return false;
    stated = StatedIndex{};
    stated.present = nd > 0;
    stated.nd = nd;
    stated.vd = vd;
    stated.ndDecimals = PrintedDecimals(tok[1]);
    stated.vdDecimals = PrintedDecimals(tok[2]);
    g.GlassCode = MakeGlassCode(std::string(tok[1]), std::string(tok[2]));
    if (!number(3, v)) return false;
    g.Density = static_cast<float>(v);
    if (!number(4, v)) return false;
    t.dndt_lin = static_cast<float>(v);
    if (!number(5, v)) return false;
    t.ThermalAux = static_cast<float>(v / 10.0);
    o.A3070.SetRaw(ShortNumberText(v / 10.0));
    if (!number(7, v)) return false;
    o.Price.SetRaw(ShortNumberText(v * 10.0));
    if (!number(8, v)) return false;
    o.Knoop.SetRaw(ShortNumberText(v));
    std::string word;
    if (!text(9, word)) return false;
    SplitResistances(o, word);
    if (!text(10, word)) return false;
    o.Bubble.SetRaw(word == "?" ? " " : word);
    if (!text(11, word)) return false;
    if (word == "?") {
        o.Status.SetRaw(" ");
    } else {
        const std::string status = UpperCp1252(VbTrim(word));
        if (status == "V") {
            o.Status.SetRaw(name.size() > 1 && name[1] == '-' ? "E" : "R");
        } else if (status == "A") {
            o.Status.SetRaw("O");
        } else {
            o.Status.SetRaw("A");
        }
    }
    double formulaValue = 0;
    if (!number(12, formulaValue)) return false;
    const long formula = std::lround(formulaValue);
    size_t p = 0;
    size_t coefficients = 0;
    if (formula == 1) {
        g.Polytype = 1;
        coefficients = 6;
    } else if (formula == 2) {
        g.Polytype = 2;
        coefficients = 6;
    } else if (formula == 3) {
        g.Polytype = 7;
        coefficients = 3;
    } else {
        why_ = "formula " + std::string(tok[12]) + " has no stored form";
        return false;
    }
    for (size_t i = 0; i < coefficients; ++i) {
        if (!number(14 + i, g.PolyCoef[i])) return false;
    }
    p = 13 + coefficients;

    // The dn/dt part: its kind, the number of values that follow, and the values. Kind 1
    // holds the six Schott constants; kinds 0 and 2 hold values that are not kept.
    t.dndt_RefTemp = 20.0f;
    double flagValue = 0, countValue = 0;
    if (!number(p + 1, flagValue) || !number(p + 2, countValue)) return false;
    const long thermalFlag = std::lround(flagValue);
    const long thermalCount = std::lround(countValue);
    if (thermalCount < 0 || thermalCount > 64) return false;
    const size_t q = p + 2 + static_cast<size_t>(thermalCount);
    if (thermalFlag == 0) {
        t.dndttype = 0;
    } else if (thermalFlag == 1 && thermalCount >= 6) {
        t.dndttype = 2;
        double d[6];
        for (size_t i = 0; i < 6; ++i) {
            if (!number(p + 3 + i, d[i])) return false;
        }
        if (SetSchottDndt(t, d)) t.dndttype = 0;
    } else if (thermalFlag == 2) {
        t.dndttype = 0;
        t.dndt_lin = 0;
    } else {
        why_ = "its dn/dt part is of a kind not known";
        return false;
    }

    if (!number(q + 1, v)) return false;
    const long transFlag = std::lround(v);
    rec.TransState.Ready = transFlag == 0 ? kFalse : kTrue;
    double smallest = 0, largest = 0;
    long rows = 0;
    if (transFlag != 0) {
        if (!number(q + 2, v)) return false;
        rows = std::lround(v);
        if (rows < 0) return false;
    }
    // A transmission part that announces no rows ("1 0") is a glass without rows, like one
    // whose flag is 0: it is kept, with no waveband.
    if (rows > 0) {
        if (rows > kMaxTransPoints) {
            why_ = "it has more than 150 transmission rows";
            return false;
        }
        m.TransPoints = static_cast<int16_t>(rows);
        m.TransType = 1;
        m.TransWidth = 5.0f;
        smallest = 1.0e9;
        largest = 0;
        for (long i = 0; i < rows; ++i) {
            double wave = 0, fraction = 0;
            const auto at = q + 3 + 2 * static_cast<size_t>(i);
            if (!number(at, wave) || !number(at + 1, fraction)) return false;
            const auto k = static_cast<size_t>(rows - 1 - i);
            m.TransWave[k] = static_cast<float>(wave * 1000.0);
            m.TransInternal[k] = static_cast<float>(fraction * 100.0);
            smallest = std::min<double>(smallest, m.TransWave[k]);
            largest = std::max<double>(largest, m.TransWave[k]);
        }
    } else {
        m.TransPoints = 0;
    }
    // The index range is taken from the transmission rows.
    if (!ToInt16(largest, g.IndexWvMax) || !ToInt16(smallest, g.IndexWvMin)) return false;
    rec.ThermalState.Ready = kTrue;

    // The total transmission takes the polynomial before any refit: a glass refitted has it
    // now, the others when they leave staging (FillTransTotals), from the same polynomial.
    if (g.Polytype == 7) {
        FillTransTotals(rec);
        if (!(largest > smallest)) {
            why_ = "it has no transmission rows to give the waveband of its refit";
            return false;
        }
        if (!RefitToSchott(rec, meanError, dialogs_, &stated.noIndexAt)) {
            why_ = "the refit to the Schott form failed";
            return false;
        }
        refitted = true;
    }
    rec.GeneralState.Ready = kTrue;
    rec.IndexState.Ready = smallest > 0 && largest > 0 ? kTrue : kFalse;
    rec.TransState.Ready = m.TransPoints >= 1 ? kTrue : kFalse;
    rec.OtherState.Ready = kTrue;
    NormaliseStatus(rec);  // the glass code waits for the leaving of staging
    return true;
}

void CImportOsloGLC::ReadFile(const std::string& path, std::vector<MaterialRecord>& records,
                              int& count, int& refitCount, std::vector<float>& refitErrors,
                              int16_t& ok) {
    std::vector<StagedGlass> staged;
    ReadFile(path, staged, count, refitCount, refitErrors, ok);
    RecordsAsRead(staged, options_.leaveTransTables, records);
}

void CImportOsloGLC::ReadFile(const std::string& path, std::vector<StagedGlass>& records,
                              int& count, int& refitCount, std::vector<float>& refitErrors,
                              int16_t& ok) {
    ok = kFalse;
    count = 0;
    refitCount = 0;
    records.clear();
    refitErrors.clear();
    stated_.clear();
    passedOver_.clear();
    failure_.clear();
    std::string bytes;
    FileError error;
    if (!ReadWholeFile(path, bytes, error)) {
        failure_ = error.message;
        return;
    }
    const std::string text = DecodeTextFile(std::move(bytes));
    const auto lines = SplitTextLines(text);
    if (lines.empty()) {
        failure_ = "the file is empty";
        return;
    }
    const auto header = SplitBlanks(lines[0]);
    const std::string last = header.empty() ? std::string() : std::string(header.back());
    const std::string source = IsMakerWord(last) ? last : SourceFromFileName(path);
    // Every glass is read into one full record, kept from line to line, and staged from
    // there; room for all of them is made at once.
    size_t named = 0;
    for (size_t i = 1; i < lines.size(); ++i) {
        if (HasName(lines[i])) ++named;
    }
    records.reserve(named);
    const auto work = std::make_unique<MaterialRecord>();
    size_t lastReport = 0;
    for (size_t i = 1; i < lines.size(); ++i) {
        if (HasName(lines[i])) {
            ClearStagedFields(*work);
            bool refitted = false;
            float meanError = 0;
            StatedIndex stated;
            if (ReadRecord(lines[i], source, *work, refitted, meanError, stated)) {
                records.push_back(StageCatalogueRecord(*work, !refitted));
                refitErrors.push_back(refitted ? meanError : 0.0f);
                stated_.push_back(stated);
                if (refitted) ++refitCount;
            } else {
                passedOver_.push_back({std::string(VbTrim(lines[i].substr(0, 10))), why_});
            }
        }
        if (options_.progress && i - lastReport >= 200) {
            lastReport = i;
            options_.progress(i, lines.size());
        }
    }
    if (options_.progress) options_.progress(lines.size(), lines.size());
    count = static_cast<int>(records.size());
    ok = kTrue;
}

}  // namespace ostrel
