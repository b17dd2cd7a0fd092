#include "core/import/frm5_export.h"

#include <algorithm>

#include "core/import/glz_writer.h"
#include "core/optics/index_from_polynomial.h"
#include "core/platform/number_text.h"
#include "core/platform/text.h"

namespace ostrel {

frm5Export::frm5Export(GlassesList& list, Dialogs& dialogs, const Clock& clock,
                       std::function<void()> close)
    : list_(list), dialogs_(dialogs), clock_(clock), close_(std::move(close)) {
    form.visible = false;
    auto& g = ssGlassesCurr;
    g.SetMaxCols(kColCount);
    const char* titles[] = {"Glass", "Source", "Waveband [nm]", "Index range"};
    const int widths[] = {12, 16, 16, 14};
    for (int c = 1; c <= kColCount; ++c) {
        g.SetColumnTitle(c, titles[c - 1]);
        g.SetColumnWidth(c, widths[c - 1]);
        g.SetColumnLocked(c, true);
    }
}

void frm5Export::Display() {
    copy_ = list_.CopyListOut();
    FillGrid();
    if (firstFill_) {
        ssGlassesCurr.SetColumnWidth(kColGlass, ssGlassesCurr.Column(kColGlass).width * 2);
        firstFill_ = false;
    }
    form.visible = true;
}

void frm5Export::ForceUnload() {
    form.visible = false;
}
void frm5Export::comOKClick() {
    if (close_) {
        close_();
    } else {
        form.visible = false;
    }
}

void frm5Export::FillGrid() {
    auto& g = ssGlassesCurr;
    const bool wasOn = g.Redraw();
    g.SetRedraw(false);
    g.SetMaxRows(0);
    int row = 0;
    for (const auto& rec : copy_) {
        if (!NameUsable(rec)) continue;
        ++row;
        g.SetMaxRows(row);
        const auto& gen = rec.General;
        double lo = 0, hi = 0;
        const int points = std::clamp<int>(gen.IndexPoints, 0, kMaxIndexPoints);
        if (points > 0) {
            lo = rec.Measured.IndexValue[0];
            hi = rec.Measured.IndexValue[static_cast<size_t>(points - 1)];
        } else {
            int16_t ok = 0;
            if (gen.IndexWvMin > 0) {
                lo = IndexFromPolynomial(gen.PolyCoef, gen.IndexWvMin, gen.Polytype, ok);
            }
            if (gen.IndexWvMax > 0) {
                hi = IndexFromPolynomial(gen.PolyCoef, gen.IndexWvMax, gen.Polytype, ok);
            }
        }
        g.SetText(kColGlass, row, gen.GlassName.Text());
        g.SetText(kColSource, row, gen.Source.Text());
        g.SetText(
            kColWaveband, row,
            FormatNumber(gen.IndexWvMin, "0.0") + " - " + FormatNumber(gen.IndexWvMax, "0.0"));
        g.SetText(kColIndexRange, row,
                  FormatNumber(lo, "0.000") + " - " + FormatNumber(hi, "0.000"));
        g.SetRowColour(row, rec.Melt.MeltFlag != 0 ? Colour{255, 255, 128} : kPanelColour);
    }
    g.SetRedraw(wasOn);
}

void frm5Export::SelectedRange(int& first, int& last) const {
    const auto& g = ssGlassesCurr;
    if (g.IsBlockMode()) {
        const GridBlock b = g.SelBlock();
        first = b.row1;
        last = b.row2;
        if (first < 1) {
            first = 1;
            last = static_cast<int>(copy_.size());
        }
    } else {
        first = last = g.ActiveRow();
    }
}

std::string frm5Export::DefaultFileName(int first, int last) const {
    if (first != last || first < 1 || first > static_cast<int>(copy_.size())) return {};
    std::string name = copy_[static_cast<size_t>(first - 1)].General.GlassName.Text() + ".GLZ";
    std::replace(name.begin(), name.end(), '*', '-');
    return name;
}

void frm5Export::Export(int first, int last, const std::string& title) {
    if (copy_.empty()) {
        dialogs_.MsgBox(kEmptyListMsg, MsgButtons::OK, MsgIcon::None, {});
        return;
    }
    FileDialogSpec spec;
    spec.filter = kFilter;
    spec.filterIndex = 1;
    spec.defaultExt = "GLZ";
    spec.title = title;
    spec.initialPath = DefaultFileName(first, last);
    const auto chosen = dialogs_.FileSave(spec);
    if (!chosen) return;
    FileError error;
    if (!WriteGlzFile({}, VbTrimCopy(*chosen), copy_, first, last, clock_.Now(), error)) {
        dialogs_.MsgBox("File save error: " + error.message, MsgButtons::OK, MsgIcon::Exclamation,
                        {});
        return;
    }
    // The help line says what was written and where.
    const int count = last - first + 1;
    const std::string what = count == 1 && first >= 1 && first <= static_cast<int>(copy_.size())
                                 ? copy_[static_cast<size_t>(first - 1)].General.GlassName.Text()
                                 : std::to_string(count) + " materials";
    dialogs_.HelpNote(what + " backed up to " + VbTrimCopy(*chosen), false);
}

void frm5Export::comExportAllClick() {
    Export(1, static_cast<int>(copy_.size()), "Exporting all glass data to text file");
}

void frm5Export::comExportSelClick() {
    int first = 0, last = 0;
    SelectedRange(first, last);
    Export(first, last, "Exporting selected glass data to text file");
}

}  // namespace ostrel
