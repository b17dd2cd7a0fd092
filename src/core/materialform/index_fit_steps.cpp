#include "core/materialform/index_fit_steps.h"

#include <cmath>

#include "core/optics/derived_data.h"
#include "core/optics/glass_code.h"
#include "core/optics/index_fit.h"
#include "core/optics/index_from_polynomial.h"
#include "core/platform/number_text.h"

namespace ostrel {

double CellNumber(std::string_view text) {
    return IsValidNumber(text) ? Val(text) : 0.0;
}

void CompleteWeight(IndexRow& row) {
    if (row.wave > 0.0f && row.index > 1.0 && row.weight <= 0.0f) row.weight = 1.0f;
}

int ReadIndexRows(const std::vector<IndexRow>& rows, MaterialRecord& rec) {
    std::vector<IndexRow> kept;
    for (size_t i = 0; i < rows.size() && i < size_t(kMaxIndexPoints); ++i) {
        if (rows[i].wave != 0.0f && rows[i].index != 0.0) kept.push_back(rows[i]);
    }
    if (kept.empty()) return 0;

    // Exchange sort, descending; only a strictly smaller earlier wave is exchanged, so
    // rows of equal wavelength stay in the order they were entered.
    for (size_t i = 0; i + 1 < kept.size(); ++i) {
        for (size_t j = i + 1; j < kept.size(); ++j) {
            if (kept[i].wave < kept[j].wave) std::swap(kept[i], kept[j]);
        }
    }

    auto& g = rec.General;
    auto& m = rec.Measured;
    g.IndexPoints = static_cast<int16_t>(kept.size());
    for (size_t i = 0; i < kept.size(); ++i) {
        m.IndexWave[i] = kept[i].wave;
        m.IndexValue[i] = kept[i].index;
        m.IndexWeight[i] = kept[i].weight;
        m.IndexWaveUm[i] = static_cast<double>(kept[i].wave) * 0.001;
        m.IndexSquared[i] = std::pow(kept[i].index, 2.0);
    }
    g.IndexWvMax = CInt(kept.front().wave);
    g.IndexWvMin = CInt(kept.back().wave);
    return static_cast<int>(kept.size());
}

std::string PoorFitQuestion(double averageError) {
    return "The fit does not represent the data: average error " +
           FormatNumber(averageError, "0.0000000") + ". Keep this fit?";
}

IndexFitOutcome IndexFitSteps(const std::vector<IndexRow>& rows, MaterialRecord& rec,
                              std::string& constantsText, Dialogs& dialogs) {
    IndexFitOutcome out;
    const int points = ReadIndexRows(rows, rec);
    const int16_t type = rec.General.Polytype;
    const int16_t minimum = PolyMinPoints(type);
    if (points < minimum || points == 0) {
        dialogs.MsgBox("You need at least " + std::to_string(minimum) +
                           " full data points to fit a " + PolyTypeName(type) + " polynomial.",
                       MsgButtons::OK, MsgIcon::Exclamation);
        return out;
    }

    BusyPointer busy(dialogs);
    out.fitted = true;
    const auto count = static_cast<int16_t>(points);
    auto& coef = rec.General.PolyCoef;
    const PolyCoefBlock before = coef;
    int16_t coefficientCount = 0;
    int16_t result = 0;
    switch (type) {
        case 1:
            result = FitSchott(coefficientCount, count, constantsText, coef, rec.Measured, dialogs);
            break;
        case 2:
            result = FitSellmeier(count, 3, constantsText, coef, rec.Measured, PolyCoefBlock{}, 0,
                                  -1, dialogs);
            break;
        case 3:
            result =
                FitSchottPlus(coefficientCount, count, constantsText, coef, rec.Measured, dialogs);
            break;
        case 4:
            result = FitCauchy(coefficientCount, count, constantsText, coef, rec.Measured, dialogs);
            break;
        case 6:
            result = FitSellmeier(count, 5, constantsText, coef, rec.Measured, PolyCoefBlock{}, 0,
                                  -1, dialogs);
            break;
        default:  // forms that are only evaluated cannot be fitted
            break;
    }

    out.ready = result != 0;
    if (out.ready) {
        out.errorLabel = AverageErrorLabel(type, rec.Measured.FitError, points);
        const double average = std::sqrt(rec.Measured.FitError / points);
        out.poor = !(average <= kPoorFitError);
        if (out.poor && dialogs.MsgBox(PoorFitQuestion(average), MsgButtons::YesNo,
                                       MsgIcon::Question) != MsgAnswer::Yes) {
            out.ready = false;
            out.declined = true;
            coef = before;
            constantsText.clear();
        }
    }
    if (out.ready) {
        ++rec.IndexState.Changes;
        rec.IndexState.Ready = kTrue;
    } else {
        rec.IndexState.Ready = kFalse;
    }
    rec.General.IndexReserved = coefficientCount;

    for (int i = 0; i < points; ++i) {
        out.calcTexts.push_back(FormatNumber(rec.Measured.IndexCalc[i], "0.0000000"));
        out.errorTexts.push_back(FormatNumber(rec.Measured.IndexError[i], "0.0000000"));
    }
    if (out.ready) {
        UpdateDerivedData(rec);
        UpdateGlassCode(rec);
    }
    return out;
}

}  // namespace ostrel
