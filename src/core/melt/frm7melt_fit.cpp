// The melt form's calculations: the fit of the melt from the parent and the typed pairs,
// the fitted-minus-parent column, and the constants and comparison reports.
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "core/materialform/verification.h"
#include "core/melt/frm7melt.h"
#include "core/melt/frm7melt_cells.h"
#include "core/optics/derived_data.h"
#include "core/optics/index_from_polynomial.h"
#include "core/platform/number_text.h"

namespace ostrel {

using frm7melt_cells::kColFit;
using frm7melt_cells::TrimText;

// --- the fit ---

void frm7Melt::FitMelt() {
    bool busy = true;
    dialogs_.SetBusy(true);
    Trap("The melt glass could not be fitted.", [&] {
        bool saveOk = true;
        ReadIndexTable();
        if (melt_.Melt.MeltIndexPoints < 4) {
            dialogs_.SetBusy(false);
            busy = false;
            dialogs_.MsgBox(kTooFewPairsMsg, MsgButtons::OK, MsgIcon::Exclamation);
            lblError.caption = "";
            comAdd.enabled = false;
            return;
        }
        changed_ = true;
        const std::vector<double> diff = MeltDifferences(melt_, parent_);
        ResampleMeltIndices(melt_, parent_, diff, dialogs_);

        constantsText_.clear();
        if (RefitMeltIndices(melt_, parent_, constantsText_, dialogs_)) {
            melt_.IndexState.Changes = static_cast<int16_t>(melt_.IndexState.Changes + 1);
            melt_.IndexState.Ready = kTrue;
        } else {
            lblError.caption = "";
            melt_.IndexState.Ready = kFalse;
        }
        const int points = melt_.General.IndexPoints;
        fitRms_ = points > 0 ? std::sqrt(melt_.Measured.FitError / points) : 0.0;

        if (melt_.IndexState.Ready != 0) {
            // The melt's own nd, vd, partial dispersions and glass code, from its new
            // polynomial: nothing derived is left as the parent had it.
            UpdateDerivedData(melt_);
            NormaliseRecord(melt_);
        }
        ShowFitDifferences();

        if (melt_.IndexState.Ready == 0) {
            saveOk = false;
            comIndexFit.enabled = true;
            comShowDispConsts.enabled = false;
            comShowIndex.enabled = false;
            ShowStatus();
        } else {
            comIndexFit.enabled = false;
            comShowDispConsts.enabled = true;
            comShowIndex.enabled = true;
            TrimText(melt_.Melt.MeltCode);
            if (melt_.Melt.MeltCode.Text().empty()) saveOk = false;
            ShowStatus();
        }
        comAdd.enabled = saveOk;
    });
    if (busy) dialogs_.SetBusy(false);
}

void frm7Melt::ShowFitDifferences() {
    const auto& m = melt_.Melt;
    const int16_t type = parent_.General.Polytype;
    double sum = 0;
    for (int i = 0; i < m.MeltIndexPoints; ++i) {
        const float wave = m.MeltIndexWave[static_cast<size_t>(i)];
        int16_t ok = 0;
        const double fitted = IndexFromPolynomial(melt_.General.PolyCoef, wave, type, ok);
        const double parent = IndexFromPolynomial(parent_.General.PolyCoef, wave, type, ok);
        const double d = fitted - parent;
        sum += d;
        ssRefInd.SetText(kColFit, i + 1, FormatNumber(d, "0.000000"));
    }
    const double mean = m.MeltIndexPoints > 0 ? sum / m.MeltIndexPoints : 0.0;
    lblError.caption = std::string(kAverageCaption) + FormatNumber(mean, "0.000000");
    ShowFitColumn(true);
}

// --- reports ---

std::string frm7Melt::ConstantsReport() const {
    return MeltConstantsReport(melt_, parent_);
}

std::string frm7Melt::ComparisonReport() const {
    return MeltComparisonReport(melt_, parent_);
}

void frm7Melt::comShowDispConstsClick() {
    dialogs_.MsgBox(ConstantsReport(), MsgButtons::OK, MsgIcon::None, "");
}

void frm7Melt::comShowIndexClick() {
    dialogs_.MsgBox(ComparisonReport(), MsgButtons::OK, MsgIcon::None, "Melt Maker");
}

}  // namespace ostrel
