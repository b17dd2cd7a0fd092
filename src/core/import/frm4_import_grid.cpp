// The import form's grid: one row per staged glass, and the refit note above it.
#include <algorithm>

#include "core/import/frm4_import.h"
#include "core/materialform/verification.h"
#include "core/platform/number_text.h"

namespace ostrel {

void frm4Import::UpdateTable() {
    auto& g = ssGlasses;
    const bool wasOn = g.Redraw();
    g.SetRedraw(false);
    if (refitCount_ == 0) {
        lblReFit.caption = std::string();
    } else if (refitCount_ == 1) {
        lblReFit.caption = std::string(
            "1 glass has been refited to an index polynomial used in Lumbrak.  The average "
            "error is in the last column.");
    } else {
        lblReFit.caption = std::to_string(refitCount_) +
                           " glasses have been refited to index polynomial[s] used in Lumbrak.  "
                           "The average error is in the last column.";
    }
    lblSkipped.caption = skippedNote_;
    const int rows = std::min<int>(importCount_, static_cast<int>(importList_.size()));
    g.SetMaxRows(0);
    g.SetMaxRows(std::max(rows, 0));
    for (int r = 1; r <= rows; ++r) {
        const auto i = static_cast<size_t>(r - 1);
        const StagedGlass& glass = importList_[i];
        const DispersionForm& form = glass.Form;
        const auto [lo, hi] = glass.IndexRange();
        g.SetText(kColGlass, r, glass.GlassName.Text());
        g.SetText(kColSource, r, glass.Source.Text());
        g.SetText(
            kColWaveband, r,
            FormatNumber(form.IndexWvMin, "0.0") + " - " + FormatNumber(form.IndexWvMax, "0.0"));
        g.SetText(kColIndexRange, r,
                  FormatNumber(lo, "0.0000") + " - " + FormatNumber(hi, "0.0000"));
        const ReadyStatus st = ReadyStatusCell(glass.Ready());
        const bool ready = st.colour == ReadyColour::Green;
        if (i < flagged_.size() && flagged_[i]) {
            g.SetText(kColStatus, r, ready ? std::string("Check") : "Check " + st.text);
            g.SetCellColour(kColStatus, r, ready ? kStatusCheck : kStatusRed);
        } else {
            g.SetText(kColStatus, r, st.text);
            g.SetCellColour(kColStatus, r, ready ? kStatusGreen : kStatusRed);
        }
        const float err = i < refitErrors_.size() ? refitErrors_[i] : 0.0f;
        std::string refit = "not refitted ";
        if (err != 0.0f) {
            refit = FormatNumber(err, "0.000000");
            if (form.Polytype == 1) refit += "-Schott";
            if (form.Polytype == 2) refit += "-Sellmeier";
        }
        g.SetText(kColRefit, r, refit);
        g.SetText(kColCheck, r, i < checkTexts_.size() ? checkTexts_[i] : std::string());
    }
    g.SetColumnHidden(kColRefit, refitCount_ == 0);
    g.SetRedraw(wasOn);
}

}  // namespace ostrel
