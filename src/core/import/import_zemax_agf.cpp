#include "core/import/import_zemax_agf.h"

#include <algorithm>
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
#include "core/platform/number_text.h"
#include "core/platform/text.h"

namespace ostrel {
namespace {

std::string TokenText(const std::vector<std::string_view>& t, size_t i) {
    return i < t.size() ? std::string(t[i]) : std::string();
}

// The line's first word, its keyword; empty for a blank line.
std::string_view KeyOf(std::string_view line) {
    auto blank = [](char c) { return c == ' ' || c == '\t'; };
    size_t a = 0;
    while (a < line.size() && blank(line[a])) ++a;
    size_t b = a;
    while (b < line.size() && !blank(line[b])) ++b;
    return line.substr(a, b - a);
}

}  // namespace

void CImportZemaxAGF::GlassLines::Reset() {
    for (Keyed* k : {&nm, &ed, &cd, &td, &od, &ld}) {
        k->tokens.clear();
        k->line = 0;
        k->present = false;
    }
    itCount = 0;
    run = {};
}

CImportZemaxAGF::Keyed& CImportZemaxAGF::GlassLines::AddRow(std::string_view raw, size_t line) {
    if (itCount == it.size()) it.emplace_back();
    Keyed& row = it[itCount++];
    row.tokens.clear();
    row.raw = raw;
    row.line = line;
    row.present = true;
    return row;
}

void CImportZemaxAGF::GlassLines::RowsOfRun(std::string_view text, size_t rowSize) {
    for (size_t k = 0; k < run.count; ++k) {
        AddRow(text.substr(run.first + k * run.stride, rowSize), run.line + k);
    }
    run = {};
}

size_t CImportZemaxAGF::TakeLayoutRow(std::string_view text, size_t at, size_t line,
                                      GlassLines& glass) {
    const size_t size = layout_.size();
    if (size == 0 || at + size > text.size()) return 0;
    if (at + size < text.size() && text[at + size] != '\r' && text[at + size] != '\n') return 0;
    const std::string_view row = text.substr(at, size);
    if (!layout_.Fits(row.data())) return 0;
    RowRun& run = glass.run;
    if (run.count == 0 && glass.itCount == 0) {
        run = {at, 0, 1, line};
    } else if (run.count > 0 && line == run.line + run.count &&
               (run.count == 1 || at == run.first + run.count * run.stride)) {
        if (run.count == 1) run.stride = at - run.first;
        ++run.count;
    } else {
        glass.RowsOfRun(text, size);
        glass.AddRow(row, line);
    }
    return NextLineStart(text, at + size);
}

void CImportZemaxAGF::ReadRowWords(const Keyed& row, RowWords& out) {
    // Rows mostly share the layout of the row before; one that does is read by it.
    if (!row.raw.empty() && layout_.Matches(row.raw, out.word, out.count)) {
        ReadRowValues(row.raw.data(), layout_.places(), out.value);
        out.number[0] = out.number[1] = true;
        return;
    }
    std::string_view words[4];
    const std::span<const std::string_view> all =
        row.raw.empty() ? std::span<const std::string_view>(row.tokens)
                        : std::span<const std::string_view>(words, FirstWords(row.raw, words, 4));
    out.count = all.empty() ? 0 : std::min<size_t>(all.size() - 1, 3);
    for (size_t f = 0; f < out.count; ++f) {
        out.word[f] = all[f + 1];
        if (f < 2) out.number[f] = ParseNumber(out.word[f], out.value[f]);
    }
    if (!row.raw.empty()) layout_.Learn(row.raw, all.data(), all.size());
}

bool CImportZemaxAGF::NumberOrBlank(std::string_view text, std::string& out) {
    double v = 0;
    if (text == "-") {
        out.clear();
        return true;
    }
    if (!ParseNumber(text, v)) return false;
    out = v == -1.0 ? std::string() : ShortNumberText(v);
    return true;
}

bool CImportZemaxAGF::TenfoldOrBlank(std::string_view text, std::string& out) {
    double v = 0;
    if (text == "-") {
        out.clear();
        return true;
    }
    if (!ParseNumber(text, v)) return false;
    out = v == -1.0 ? std::string() : ShortNumberText(v * 10.0);
    return true;
}

std::string CImportZemaxAGF::SqueezeBlanks(std::string_view text) {
    return ostrel::SqueezeBlanks(text);
}

bool CImportZemaxAGF::Fail(size_t line, const std::string& why) {
    failLine_ = line;
    failWhy_ = why;
    return false;
}

bool CImportZemaxAGF::ReadRows(const GlassLines& lines, MaterialRecord& rec, bool& caseB) {
    auto& g = rec.General;
    auto& m = rec.Measured;
    // The thickness of the first row gives the width; "-" leaves the default.
    auto width = [&](const RowWords& first, size_t line) {
        m.TransType = 2;
        m.TransWidth = 10.0f;
        if (first.count > 2 && first.word[2] != "-") {
            double value = 0;
            if (!ParseNumber(first.word[2], value))
                return Fail(line, NoNumberReason(first.word[2]));
            if (value > 0) m.TransWidth = static_cast<float>(value);
        }
        return true;
    };
    // Rows taken line after line by their layout as the file was read stay in its text;
    // the staged glass takes them from there (finishGlass in ReadFile).
    if (const RowRun& run = lines.run; run.count > 0) {
        caseB = true;
        if (run.count > static_cast<size_t>(kMaxTransPoints)) {
            return Fail(run.line + kMaxTransPoints, "more than 150 transmission rows");
        }
        RowWords first;
        layout_.Matches(std::string_view(text_->data() + run.first, layout_.size()), first.word,
                        first.count);
        if (!width(first, run.line)) return false;
        m.TransPoints = 0;
        return true;
    }
    // Rows without a wavelength or a transmittance carry nothing and are left out.
    const auto itRows = std::span<const Keyed>(lines.it).first(lines.itCount);
    rowWords_.resize(itRows.size());
    std::vector<size_t>& rowsIn = rowsIn_;
    rowsIn.clear();
    for (size_t r = 0; r < itRows.size(); ++r) {
        RowWords& w = rowWords_[r];
        ReadRowWords(itRows[r], w);
        if (w.count >= 2 && w.word[0] != "-" && w.word[1] != "-") rowsIn.push_back(r);
    }
    caseB = !rowsIn.empty();
    if (!caseB) {
        m.TransPoints = 2;
        m.TransType = 1;
        m.TransWidth = 10.0f;
        m.TransWave[0] = g.IndexWvMax;
        m.TransWave[1] = g.IndexWvMin;
        m.TransInternal[0] = 0;
        m.TransInternal[1] = 0;
        return true;
    }
    if (rowsIn.size() > static_cast<size_t>(kMaxTransPoints)) {
        return Fail(itRows[rowsIn[kMaxTransPoints]].line, "more than 150 transmission rows");
    }
    if (!width(rowWords_[rowsIn.front()], itRows[rowsIn.front()].line)) return false;
    const auto rows = static_cast<int>(rowsIn.size());
    m.TransPoints = static_cast<int16_t>(rows);
    for (int i = 0; i < rows; ++i) {
        const size_t r = rowsIn[static_cast<size_t>(i)];
        const RowWords& w = rowWords_[r];
        for (size_t f = 0; f < 2; ++f) {
            if (!w.number[f]) return Fail(itRows[r].line, NoNumberReason(w.word[f]));
        }
        const auto k = static_cast<size_t>(rows - 1 - i);
        m.TransWave[k] = static_cast<float>(w.value[0] * 1000.0);
        m.TransInternal[k] = static_cast<float>(w.value[1] * 100.0);
    }
    return true;
}

CImportZemaxAGF::Outcome CImportZemaxAGF::ReadRecord(const GlassLines& lines,
                                                     const SourceField& source, int16_t glassKind,
                                                     MaterialRecord& rec, bool& refitted,
                                                     float& meanError, StatedIndex& stated) {
    refitted = false;
    meanError = 0;
    auto& g = rec.General;
    auto& o = rec.Other;
    auto& t = rec.Thermal;
    const auto& nm = lines.nm.tokens;
    // A number token of a line; a missing token is no error where allowMissing is set and
    // then reads `dflt`.
    auto number = [this](const Keyed& k, size_t i, double& v, bool allowMissing,
                         double dflt = 0.0) {
        // "-" stands for a value the maker does not give.
        if (i >= k.tokens.size() || k.tokens[i] == "-") {
            if (allowMissing) {
                v = dflt;
                return true;
            }
            return Fail(k.line, "token " + std::to_string(i) + " is missing");
        }
        if (!ParseNumber(k.tokens[i], v)) {
            return Fail(k.line, NoNumberReason(k.tokens[i]));
        }
        return true;
    };

    if (nm.size() < 3) {
        Fail(lines.nm.line, "the name line has no formula number");
        return Outcome::Failed;
    }
    g.GlassName.SetRaw(VbTrim(nm[1]));
    g.Source = source.field;
    g.GlassKind = glassKind < 9 ? int16_t{8} : glassKind;
    double formulaValue = 0;
    if (!number(lines.nm, 2, formulaValue, false)) return Outcome::Failed;
    const int formula = static_cast<int>(std::lround(formulaValue));
    bool other = false;
    switch (formula) {
        case 1:
            g.Polytype = 1;
            break;
        case 2:
            g.Polytype = 2;
            break;
        case 3:
            g.Polytype = 8;
            break;
        case 5:
            g.Polytype = 7;
            break;
        default:
            if (!(options_.refitOtherFormulas && IsRefittableAgfFormula(formula))) {
                ++skipped_;
                return Outcome::Skipped;
            }
            g.Polytype = 0;
            other = true;
    }
    double code = 0;
    if (!number(lines.nm, 3, code, true)) return Outcome::Failed;
    int32_t code32 = 0;
    if (!ToInt32(code, code32)) {
        Fail(lines.nm.line, "the glass code is out of range");
        return Outcome::Failed;
    }
    g.GlassCode = code32 < 1000 ? MakeGlassCode(TokenText(nm, 4), TokenText(nm, 5)) : code32;
    stated = {};
    if (nm.size() > 4 && ParseNumber(nm[4], stated.nd) && stated.nd > 0) {
        stated.present = true;
        stated.ndDecimals = PrintedDecimals(nm[4]);
        if (nm.size() > 5 && ParseNumber(nm[5], stated.vd)) {
            stated.vdDecimals = PrintedDecimals(nm[5]);
        } else {
            stated.vd = 0;
        }
    }

    // ED: expansion values as text, density.
    if (lines.ed.present) {
        // A missing value or "-" leaves the field blank.
        double v = 0;
        if (!number(lines.ed, 1, v, true, std::nan(""))) return Outcome::Failed;
        if (!std::isnan(v)) o.A3070.SetRaw(ShortNumberText(v));
        if (!number(lines.ed, 2, v, true, std::nan(""))) return Outcome::Failed;
        if (!std::isnan(v)) o.A20300.SetRaw(ShortNumberText(v));
        double density = 0;
        if (!number(lines.ed, 3, density, true)) return Outcome::Failed;
        g.Density = static_cast<float>(density);
    }
    g.IndexDataType = 1;

    // CD: coefficients in file order.
    std::vector<double>& c = coefficients_;
    c.clear();
    for (size_t i = 1; i < lines.cd.tokens.size(); ++i) {
        double v = 0;
        if (!number(lines.cd, i, v, false)) return Outcome::Failed;
        c.push_back(v);
    }
    auto cf = [&c](size_t i) { return i < c.size() ? c[i] : 0.0; };
    g.PolyCoef.fill(0.0);
    switch (formula) {
        case 1:
        case 3:
            for (size_t i = 0; i < 6; ++i) g.PolyCoef[i] = cf(i);
            break;
        case 2:
            // K1 L1 K2 L2 K3 L3 to B1 B2 B3 C1 C2 C3
            for (size_t i = 0; i < 3; ++i) {
                g.PolyCoef[i] = cf(2 * i);
                g.PolyCoef[i + 3] = cf(2 * i + 1);
            }
            break;
        case 5:
            for (size_t i = 0; i < 3; ++i) g.PolyCoef[i] = cf(i);
            break;
        default:
            break;
    }

    // TD: Schott dn/dT constants and reference temperature.
    if (lines.td.present) {
        double d[6];
        for (size_t i = 0; i < 6; ++i) {
            if (!number(lines.td, i + 1, d[i], true)) return Outcome::Failed;
        }
        SetSchottDndt(t, d);
        double ref = 20.0;
        if (!number(lines.td, 7, ref, true, 20.0)) return Outcome::Failed;
        t.dndt_RefTemp = static_cast<float>(ref);
    } else {
        t.dndt_RefTemp = 20.0f;
    }
    const bool allZero = t.dndt_D0 == 0 && t.dndt_D1 == 0 && t.dndt_D2 == 0 && t.dndt_E0 == 0 &&
                         t.dndt_E1 == 0 && t.dndt_LamdaTK == 0;
    t.dndttype = allZero ? 0 : 2;

    // OD: relative price and the five resistance classes.
    if (lines.od.present) {
        const auto& od = lines.od.tokens;
        std::string text;
        if (od.size() > 1) {
            if (!TenfoldOrBlank(od[1], text)) {
                Fail(lines.od.line, NoNumberReason(od[1]));
                return Outcome::Failed;
            }
            o.Price.SetRaw(text);
        }
        for (size_t i = 2; i <= 6 && i < od.size(); ++i) {
            if (!NumberOrBlank(od[i], text)) {
                Fail(lines.od.line, NoNumberReason(od[i]));
                return Outcome::Failed;
            }
            switch (i) {
                case 2:
                    o.CR.SetRaw(text);
                    break;
                case 3:
                    o.FR.SetRaw(text);
                    break;
                case 4:
                    o.SR.SetRaw(text);
                    break;
                case 5:
                    o.AR.SetRaw(text);
                    break;
                default:
                    o.PR.SetRaw(text);
            }
        }
        o.Status.Set("A");
    }

    // LD: the waveband.
    if (lines.ld.present) {
        double low = 0, high = 0;
        if (!number(lines.ld, 1, low, false) || !number(lines.ld, 2, high, false)) {
            return Outcome::Failed;
        }
        g.IndexWvMin = CInt(low * 1000.0);
        const double top = high * 1000.0;
        g.IndexWvMax = top > 32000.0 ? int16_t{32000} : CInt(top);
    }
    if (source.wideBand && g.IndexWvMax < 1020) g.IndexWvMax = 1020;

    // Forms the siblings cannot evaluate go to Schott.
    if (g.Polytype == 7 || g.Polytype == 8 || other) {
        const bool done =
            other ? RefitToSchottFrom(
                        rec,
                        [&c, formula](float w, double& n) {
                            return AgfFormulaIndex(formula, c, static_cast<double>(w) * 0.001, n);
                        },
                        meanError, dialogs_, &stated.noIndexAt)
                  : RefitToSchott(rec, meanError, dialogs_, &stated.noIndexAt);
        if (!done) {
            // A fit that failed has said so; a band without width has not.
            if (!(g.IndexWvMax > g.IndexWvMin)) {
                dialogs_.MsgBox(RefitFailedLine(g.GlassName.Text()) + "\nIts waveband is empty.",
                                MsgButtons::OK, MsgIcon::Exclamation, {});
            }
            return Outcome::Skipped;
        }
        refitted = true;
    }

    // Transmission.
    bool caseB = false;
    if (!ReadRows(lines, rec, caseB)) return Outcome::Failed;
    // The total transmission takes the polynomial as it is stored, so it waits with the rest
    // of the transmission work until the glass leaves staging (FillTransTotals).
    rec.GeneralState.Ready = kTrue;
    rec.IndexState.Ready = kTrue;
    rec.ThermalState.Ready = kTrue;
    rec.TransState.Ready = caseB ? kTrue : kFalse;
    rec.OtherState.Ready = g.Density != 0 ? kTrue : kFalse;
    NormaliseStatus(rec);  // the glass code waits for the leaving of staging
    return Outcome::Added;
}

void CImportZemaxAGF::ReadFile(const std::string& path, const std::string& bareName,
                               std::vector<MaterialRecord>& records, int& count, int& refitCount,
                               std::vector<float>& refitErrors, std::string& errorText,
                               int16_t glassKind, int16_t& ok) {
    std::vector<StagedGlass> staged;
    ReadFile(path, bareName, staged, count, refitCount, refitErrors, errorText, glassKind, ok);
    RecordsAsRead(staged, options_.leaveTransTables, records);
}

void CImportZemaxAGF::ReadFile(const std::string& path, const std::string& bareName,
                               std::vector<StagedGlass>& records, int& count, int& refitCount,
                               std::vector<float>& refitErrors, std::string& errorText,
                               int16_t glassKind, int16_t& ok) {
    ok = kFalse;
    records.clear();
    stated_.clear();
    layout_.Forget();
    skipped_ = 0;
    count = 0;
    refitCount = 0;
    refitErrors.clear();
    errorText.clear();

    // The source is the file's name up to its first point.
    std::string sourceName(VbTrim(bareName.substr(0, bareName.find('.'))));
    if (UpperAscii(sourceName) == "CHENGDU") sourceName = "CDGM";
    // The same for every glass of the file: its source field, and whether the maker's
    // waveband reaches at least 1020 nm.
    SourceField source;
    source.field.Set(sourceName);
    const std::string src(VbTrim(UpperCp1252(source.field.Raw())));
    source.wideBand = src == "CHENGDU" || src == "CDGM";

    std::string bytes;
    FileError error;
    if (!ReadWholeFile(path, bytes, error)) {
        errorText = WithReason("Failure in file read " + path + "!", error.message);
        return;
    }
    // The text stays with the glasses whose rows are left in it, not with the reader.
    struct ReleaseText {
        CImportZemaxAGF& reader;
        ~ReleaseText() { reader.text_.reset(); }
    } releaseText{*this};
    text_ = std::make_shared<const std::string>(DecodeTextFile(std::move(bytes)));
    const std::string& text = *text_;
    if (text.find_first_of("\r\n") == std::string::npos && text.size() >= 201) {
        errorText = kNoCarriageReturnMsg;
        return;
    }

    // Every glass is read into one full record, kept from glass to glass, and staged from
    // there.
    const auto work = std::make_unique<MaterialRecord>();

    GlassLines glass;
    bool inGlass = false;
    Keyed* last = nullptr;
    std::string failedName;
    const size_t total = text.size();
    size_t lastReport = 0;
    bool failed = false;

    auto finishGlass = [&]() {
        if (!inGlass) return true;
        MaterialRecord& rec = *work;
        ClearStagedFields(rec);
        bool refitted = false;
        float meanError = 0;
        StatedIndex stated;
        const Outcome outcome =
            ReadRecord(glass, source, glassKind, rec, refitted, meanError, stated);
        if (outcome == Outcome::Added) {
            records.push_back(StageCatalogueRecord(rec, true));
            if (const RowRun& run = glass.run; run.count > 0) {
                records.back().rowText = {text_, run.first, run.stride, run.count,
                                          layout_.places()};
            }
            refitErrors.push_back(refitted ? meanError : 0.0f);
            stated_.push_back(stated);
            if (refitted) ++refitCount;
            return true;
        }
        if (outcome == Outcome::Failed) failedName = VbTrim(rec.General.GlassName.Raw());
        return outcome != Outcome::Failed;
    };

    // A line is split into words only when its words are used; the keyword is found on its
    // own. A keyword line is split into `tokens`, whose words then change places with the
    // ones its keeper held before, so that no word list is copied. `last` is the line a line
    // of bare numbers continues: a keyed line, or the last row of the run (lastInRun).
    std::vector<std::string_view> tokens;
    bool lastInRun = false;
    auto setLast = [&](Keyed* target) {
        last = target;
        lastInRun = false;
    };
    auto keyed = [&](Keyed& target, std::string_view line, size_t lineNumber) {
        SplitBlanks(line, tokens);
        std::swap(target.tokens, tokens);
        target.line = lineNumber;
        target.present = true;
        setLast(&target);
    };
    size_t at = 0;
    for (size_t ln = 1; at < total && !failed; ++ln) {
        // An IT row of the learned layout is taken whole, its end known from its layout.
        if (inGlass) {
            if (const size_t next = TakeLayoutRow(text, at, ln, glass); next != 0) {
                at = next;
                if (glass.run.count > 0) {
                    lastInRun = true;
                } else {
                    setLast(&glass.it[glass.itCount - 1]);
                }
                continue;
            }
        }
        const size_t end = LineEnd(text, at);
        const std::string_view line(text.data() + at, end - at);
        at = NextLineStart(text, end);
        const std::string_view key = KeyOf(line);
        if (key.empty()) continue;
        if (key == "NM") {
            if (!finishGlass()) {
                failed = true;
                break;
            }
            glass.Reset();
            inGlass = true;
            keyed(glass.nm, line, ln);
            if (options_.progress) {
                const auto done = static_cast<size_t>(line.data() - text.data());
                if (done - lastReport > 65536) {
                    lastReport = done;
                    options_.progress(done, total);
                }
            }
            continue;
        }
        if (!inGlass) continue;
        if (key == "IT") {
            if (glass.run.count > 0) glass.RowsOfRun(text, layout_.size());
            setLast(&glass.AddRow(line, ln));
        } else if (key == "ED") {
            keyed(glass.ed, line, ln);
        } else if (key == "CD") {
            keyed(glass.cd, line, ln);
        } else if (key == "TD") {
            keyed(glass.td, line, ln);
        } else if (key == "OD") {
            keyed(glass.od, line, ln);
        } else if (key == "LD") {
            keyed(glass.ld, line, ln);
        } else if (double v = 0; ParseNumber(key, v)) {
            // A bare number line continues the keyword line before it.
            if (lastInRun) {
                glass.RowsOfRun(text, layout_.size());
                setLast(&glass.it[glass.itCount - 1]);
            }
            if (last) {
                if (!last->raw.empty()) {
                    SplitBlanks(last->raw, last->tokens);
                    last->raw = {};
                }
                SplitBlanks(line, tokens);
                last->tokens.insert(last->tokens.end(), tokens.begin(), tokens.end());
            }
        } else {
            setLast(nullptr);  // GC, MD, BD, comments and anything unknown
        }
    }
    if (!failed && !finishGlass()) failed = true;
    count = static_cast<int>(records.size());
    if (failed) {
        errorText = "Error in file " + path + ", line " + std::to_string(failLine_) + ", glass " +
                    failedName + ": " + failWhy_ + ".\r\nThe " + std::to_string(count) +
                    " glasses read before it have been kept.";
        return;
    }
    if (options_.progress) options_.progress(total, total);
    ok = kTrue;
}

}  // namespace ostrel
