// The material form's Index tab: the grid of index points or of coefficients, the fit and
// the check of typed coefficients, and the curves the window plots.
#include <cmath>
#include <exception>

#include "core/materialform/frm3new.h"
#include "core/optics/derived_data.h"
#include "core/optics/glass_code.h"
#include "core/optics/index_fit.h"
#include "core/optics/index_from_polynomial.h"
#include "core/platform/number_text.h"

namespace ostrel {

namespace {

constexpr const char* kCoefFormat = "+0.00000000e+00;-0.00000000e+00";

// Where the coefficient grid shows each stored coefficient: (column, row) of its value,
// and its label; column 0 for an unused entry.
struct CoefCell {
    int col = 0;
    int row = 0;
    const char* label = "";
};

std::array<CoefCell, kPolyCoefCount> CoefLayout(int16_t type) {
    std::array<CoefCell, kPolyCoefCount> cells{};
    switch (type) {
        case 1: {
            static const char* a[] = {"A0 ", "A1 ", "A2 ", "A3 ", "A4 ", "A5 "};
            for (int i = 0; i < 6; ++i) cells[i] = {2, i + 1, a[i]};
            break;
        }
        case 4: {
            static const char* a[] = {"A0 ", "A1 ", "A2 "};
            for (int i = 0; i < 3; ++i) cells[i] = {2, i + 1, a[i]};
            break;
        }
        case 2:
        case 6: {
            static const char* b[] = {"B1 ", "B2 ", "B3 ", "B4 ", "B5 "};
            static const char* c[] = {"C1 ", "C2 ", "C3 ", "C4 ", "C5 "};
            const int terms = type == 2 ? 3 : 5;
            for (int i = 0; i < terms; ++i) {
                cells[i] = {2, i + 1, b[i]};
                cells[terms + i] = {4, i + 1, c[i]};
            }
            break;
        }
        case 3:
            // Stored entry 6 is A0; entries 5..1 are A5..A9; entries 7..10 are A1..A4.
            cells[5] = {2, 1, "A0 "};
            cells[4] = {2, 2, "A5 "};
            cells[3] = {2, 3, "A6 "};
            cells[2] = {2, 4, "A7 "};
            cells[1] = {2, 5, "A8 "};
            cells[0] = {2, 6, "A9 "};
            cells[6] = {4, 2, "A1 "};
            cells[7] = {4, 3, "A2 "};
            cells[8] = {4, 4, "A3 "};
            cells[9] = {4, 5, "A4 "};
            break;
        default:
            break;
    }
    return cells;
}

std::string ReportTitle(int16_t type) {
    switch (type) {
        case 1:
            return "Schott Polynomial";
        case 2:
            return "SellMeier Polynomial";
        case 3:
            return "Extend Schott Polynomial";
        case 4:
            return "Cauchy Polynomial";
        case 6:
            return "Extend SellMeier Polynomial";
        default:
            return "";
    }
}

std::string ReportLine(const PolyCoefBlock& coef, float wave, int16_t type, int16_t& ok) {
    const double n = IndexFromPolynomial(coef, wave, type, ok);
    const std::string w = FormatNumber(wave, "0.0") + std::string(11, ' ');
    return w + (ok != 0 ? FormatNumber(n, "0.000000") : std::string("index < 1 !!")) + "\n";
}

}  // namespace

// ---------------------------------------------------------------------------------------
// Grid

void frm3New::BuildIndexColumns() {
    Grid& g = ssRefInd;
    g.SetRedraw(false);
    g.ClearSelection();
    if (rec_.General.IndexDataType == 1) {
        g.SetMaxCols(0);
        g.SetMaxRows(0);
        g.SetMaxCols(4);
        g.SetMaxRows(kCoefRows);
        const char* titles[] = {"Constant", "Value", "Constant", "Value"};
        for (int c = 1; c <= 4; ++c) {
            GridColumn col;
            col.title = titles[c - 1];
            if (c % 2 == 0) {
                col.type = CellType::Float;
                col.decimals = 8;
            } else {
                col.locked = true;
            }
            g.SetColumn(c, col);
        }
    } else {
        g.SetMaxCols(0);
        g.SetMaxRows(0);
        g.SetMaxCols(5);
        g.SetMaxRows(kIndexRows);
        g.SetColumn(1, {"wave [nm]", CellType::Float, 4, 10, 30000});
        g.SetColumn(2, {"index ", CellType::Float, 7, 1, 9});
        g.SetColumn(3, {"weight [0-1]", CellType::Float, 2, 0, 1});
        GridColumn calc{"index calc"};
        calc.locked = true;
        calc.hidden = true;
        g.SetColumn(4, calc);
        GridColumn err{"error"};
        err.locked = true;
        err.hidden = true;
        g.SetColumn(5, err);
    }
    if (mode_ == kModeReview) {
        for (int c = 1; c <= g.MaxCols(); ++c) g.SetColumnLocked(c, true);
    }
    g.SetActiveCell(1, 1);
    g.SetRedraw(true);
}

void frm3New::FillIndexGrid() {
    Grid& g = ssRefInd;
    g.SetRedraw(false);
    g.ClearAll();
    const auto& gen = rec_.General;
    if (gen.IndexDataType == 1) {
        const auto layout = CoefLayout(gen.Polytype);
        for (size_t i = 0; i < layout.size(); ++i) {
            const CoefCell& cell = layout[i];
            if (cell.col == 0) continue;
            g.SetText(cell.col - 1, cell.row, cell.label);
            g.SetText(cell.col, cell.row, FormatNumber(gen.PolyCoef[i], kCoefFormat));
        }
        g.SetText(1, kCoefRows, "WavLn Min");
        g.SetText(2, kCoefRows, std::to_string(gen.IndexWvMin) + "nm");
        g.SetText(3, kCoefRows, "WavLn Max");
        g.SetText(4, kCoefRows, std::to_string(gen.IndexWvMax) + "nm");
    } else {
        const auto& m = rec_.Measured;
        const int points = std::min<int>(gen.IndexPoints, kIndexRows);
        for (int i = 0; i < points; ++i) {
            const double w = m.IndexWave[static_cast<size_t>(i)];
            const double n = m.IndexValue[static_cast<size_t>(i)];
            // The cells hold what the fit reads back: the wave and the weight at the
            // 32-bit width they are read at, the index in full.
            if (w != 0) g.SetText(1, i + 1, PlainNumberText(static_cast<float>(w)));
            if (n != 0) g.SetValue(2, i + 1, n);
            if (w != 0 || n != 0)
                g.SetText(3, i + 1, PlainNumberText(m.IndexWeight[static_cast<size_t>(i)]));
            // After a fit the calculated column and the errors stay on show.
            if (!g.Column(4).hidden) {
                g.SetText(4, i + 1, FormatNumber(m.IndexCalc[static_cast<size_t>(i)], "0.0000000"));
                g.SetText(5, i + 1,
                          FormatNumber(m.IndexError[static_cast<size_t>(i)], "0.0000000"));
            }
        }
    }
    g.SetRedraw(true);
}

void frm3New::SetErrorLabel(const std::string& text, bool warning) {
    lblError.caption = text;
    lblError.bold = warning;
    lblError.toolTip = warning ? std::string(kPoorFitTip) : std::string();
}

void frm3New::HideFitColumns(bool hidden) {
    if (ssRefInd.MaxCols() < 5) return;
    ssRefInd.SetColumnHidden(4, hidden);
    ssRefInd.SetColumnHidden(5, hidden);
}

void frm3New::SetMinPointsLabel() {
    lblIndexMinDataPoints.caption =
        rec_.General.IndexDataType == 1
            ? std::string()
            : "Min: " + std::to_string(PolyMinPoints(rec_.General.Polytype)) + " points";
}

std::vector<IndexRow> frm3New::GridIndexRows() const {
    std::vector<IndexRow> rows;
    if (rec_.General.IndexDataType != 0) return rows;
    for (int r = 1; r <= ssRefInd.MaxRows() && r <= kIndexRows; ++r) {
        IndexRow row;
        row.wave = static_cast<float>(CellNumber(ssRefInd.Text(1, r)));
        row.index = CellNumber(ssRefInd.Text(2, r));
        row.weight = static_cast<float>(CellNumber(ssRefInd.Text(3, r)));
        rows.push_back(row);
    }
    return rows;
}

bool frm3New::ReadIndexGrid() {
    if (ReadIndexRows(GridIndexRows(), rec_) == 0) return false;
    ssRefInd.SetActiveCell(1, 1);
    FillIndexGrid();
    return true;
}

// ---------------------------------------------------------------------------------------
// Events

void frm3New::cmbIndexDataTypeClick() {
    if (loading_ || mode_ == kModeReview) return;
    const int index = cmbIndexDataType.listIndex();
    // Only a change counts: choosing the shown item again would refill the grid from the
    // record and drop rows typed since the last reading of the grid.
    if (index < 0 || index == rec_.General.IndexDataType) return;
    MarkModified();
    rec_.General.IndexDataType = static_cast<int16_t>(index);
    BuildIndexColumns();
    FillIndexGrid();
    if (index == 1) {
        comIndexFit.caption = "Check coeffs";
        comIndexFit.enabled = true;
        comIndexShow.enabled = false;
        comWaveSelRefInd.enabled = false;
    } else {
        comIndexFit.caption = "Fit Polynomial";
        comIndexShow.enabled = rec_.IndexState.Ready != 0;
        comWaveSelRefInd.enabled = tabProperties.tab == kTabIndex;
    }
    SetMinPointsLabel();
    comIndexSort.enabled = index == 0;
}

void frm3New::cmbIndexPolyTypeClick() {
    if (loading_ || mode_ == kModeReview) return;
    const int index = cmbIndexPolyType.listIndex();
    // Only a change counts: the shown polynomial chosen again would zero typed coefficients
    // or refill the grid over typed rows.
    if (index < 0 || cmbIndexPolyType.ItemData(index) == rec_.General.Polytype) return;
    MarkModified();
    // The coefficients held belong to the form left, so Index is not ready in either mode
    // until the new form is fitted or checked: a record never leaves the form with the
    // coefficients of one form under the type code of another.
    if (rec_.General.IndexDataType == 1) {
        rec_.General.PolyCoef.fill(0.0);
    } else {
        HideFitColumns(true);
        comIndexShow.enabled = false;
    }
    SetSectionReady(rec_.IndexState, false);
    comIndexFit.enabled = true;
    rec_.General.Polytype = static_cast<int16_t>(cmbIndexPolyType.ItemData(index));
    constantsText_.clear();
    SetErrorLabel("", false);
    SetMinPointsLabel();
    FillIndexGrid();
    RefreshPanels();
}

void frm3New::ssRefIndChange(int col, int row) {
    (void)col;
    if (mode_ == kModeReview) return;
    MarkModified();
    if (rec_.General.IndexDataType == 0) {
        if (row >= 1 && row <= ssRefInd.MaxRows()) {
            IndexRow r;
            r.wave = static_cast<float>(CellNumber(ssRefInd.Text(1, row)));
            r.index = CellNumber(ssRefInd.Text(2, row));
            r.weight = static_cast<float>(CellNumber(ssRefInd.Text(3, row)));
            const float typed = r.weight;
            CompleteWeight(r);
            if (r.weight != typed) ssRefInd.SetText(3, row, "1");
        }
        HideFitColumns(true);
    }
    comIndexFit.enabled = true;
    comIndexShow.enabled = false;
    SetSectionReady(rec_.IndexState, false);
    RefreshPanels();
}

void frm3New::comIndexSortClick() {
    if (mode_ == kModeReview || rec_.General.IndexDataType != 0) return;
    if (ReadIndexGrid()) MarkModified();
}

void frm3New::comIndexFitClick() {
    if (mode_ == kModeReview) return;
    MarkModified();
    try {
        if (rec_.General.IndexDataType == 1) {
            CheckCoefficients();
            RefreshPanels();
            return;
        }
        const std::vector<IndexRow> rows = GridIndexRows();
        ReadIndexGrid();
        constantsText_.clear();
        const IndexFitOutcome out = IndexFitSteps(rows, rec_, constantsText_, dialogs_);
        SetErrorLabel(out.errorLabel, out.poor);
        if (out.fitted) {
            for (size_t i = 0; i < out.calcTexts.size(); ++i) {
                ssRefInd.SetText(4, static_cast<int>(i) + 1, out.calcTexts[i]);
                ssRefInd.SetText(5, static_cast<int>(i) + 1, out.errorTexts[i]);
            }
            HideFitColumns(false);
            if (out.ready) {
                comIndexFit.enabled = false;
                comIndexShow.enabled = true;
            } else {
                comIndexShow.enabled = false;
            }
        }
        RefreshPanels();
    } catch (const std::exception& e) {
        SetSectionReady(rec_.IndexState, false);
        RefreshPanels();
        list_.errors().ErrorDisplay("The fit could not be completed.", e.what(), 0);
    }
}

void frm3New::CheckCoefficients() {
    std::array<double, kCoefRows + 1> col2{}, col4{};
    for (int r = 1; r <= kCoefRows; ++r) {
        col2[static_cast<size_t>(r)] = ssRefInd.Value(2, r);
        col4[static_cast<size_t>(r)] = ssRefInd.Value(4, r);
    }
    GeneralData copy = rec_.General;
    copy.IndexWvMin = CInt(col2[kCoefRows]);
    copy.IndexWvMax = CInt(col4[kCoefRows]);
    copy.PolyCoef.fill(0.0);
    const auto layout = CoefLayout(copy.Polytype);
    for (size_t i = 0; i < layout.size(); ++i) {
        const CoefCell& cell = layout[i];
        if (cell.col == 2) copy.PolyCoef[i] = col2[static_cast<size_t>(cell.row)];
        if (cell.col == 4) copy.PolyCoef[i] = col4[static_cast<size_t>(cell.row)];
    }
    const double step = (copy.IndexWvMax - copy.IndexWvMin) / 10.0;
    if (step <= 0.0) {
        dialogs_.MsgBox(
            "No waveband specified.  Plese enter maximum and minimum wavelengths [in nm].",
            MsgButtons::OK);
        return;
    }
    std::string report = ReportTitle(copy.Polytype) + "\n\nWavLn[nm]     Index\n";
    static const float kFixed[] = {435.8f, 480.0f, 486.1f, 546.1f, 587.6f, 589.0f, 643.8f, 656.3f};
    int16_t ok = 0;
    for (float w : kFixed) report += ReportLine(copy.PolyCoef, w, copy.Polytype, ok);
    report += "\n";
    bool result = true;
    for (int i = 0; i <= 10; ++i) {
        const auto w = static_cast<float>(copy.IndexWvMin + step * i);
        report += ReportLine(copy.PolyCoef, w, copy.Polytype, ok);
        result = result && ok != 0;
    }
    rec_.General = copy;
    SetSectionReady(rec_.IndexState, result);
    if (result) {
        UpdateDerivedData(rec_);
        UpdateGlassCode(rec_);
    }
    dialogs_.MsgBox(report, MsgButtons::OK);
}

void frm3New::comIndexShowClick() {
    const auto& g = rec_.General;
    if (constantsText_.empty()) {
        switch (g.Polytype) {
            case 1:
                SchottConstantsText(constantsText_, g.PolyCoef);
                break;
            case 2:
                SellmeierConstantsText(constantsText_, g.PolyCoef);
                break;
            case 3:
                SchottPlusConstantsText(constantsText_, g.PolyCoef);
                break;
            case 4:
                CauchyConstantsText(constantsText_, g.PolyCoef);
                break;
            default:  // no constants text is made for the other forms
                break;
        }
    }
    dialogs_.MsgBox(constantsText_ + "\n\nWaveLen Min:   " + std::to_string(g.IndexWvMin) +
                        "nm\nWaveLen Max:   " + std::to_string(g.IndexWvMax) + "nm",
                    MsgButtons::OK);
}

void frm3New::ClearIndex() {
    auto& m = rec_.Measured;
    m.IndexWave.fill(0);
    m.IndexWaveUm.fill(0);
    m.IndexValue.fill(0);
    m.IndexSquared.fill(0);
    m.IndexWeight.fill(0);
    m.IndexCalc.fill(0);
    m.IndexError.fill(0);
    rec_.General.PolyCoef.fill(0);
    rec_.General.IndexPoints = 0;
    rec_.General.IndexWvMin = 0;
    rec_.General.IndexWvMax = 0;
    rec_.General.GlassCode = 0;
    SetSectionReady(rec_.IndexState, false);
    ssRefInd.ClearAll();
    BuildIndexColumns();
    FillIndexGrid();
    SetErrorLabel("", false);
    comIndexFit.enabled = true;
    comIndexShow.enabled = false;
}

// ---------------------------------------------------------------------------------------
// Plots

std::vector<frm3New::CurvePoint> frm3New::IndexCurve(int nSamples) const {
    std::vector<CurvePoint> out;
    const auto& g = rec_.General;
    if (rec_.IndexState.Ready == 0 || nSamples < 2 || g.IndexWvMax <= g.IndexWvMin) return out;
    const double step = double(g.IndexWvMax - g.IndexWvMin) / (nSamples - 1);
    for (int i = 0; i < nSamples; ++i) {
        const auto w = static_cast<float>(g.IndexWvMin + step * i);
        int16_t ok = 0;
        const double n = IndexFromPolynomial(g.PolyCoef, w, g.Polytype, ok);
        if (ok != 0) out.push_back({w, n});
    }
    return out;
}

std::vector<frm3New::Residual> frm3New::IndexResiduals() const {
    std::vector<Residual> out;
    if (rec_.IndexState.Ready == 0) return out;
    const auto& m = rec_.Measured;
    const int points = std::min<int>(rec_.General.IndexPoints, kMaxIndexPoints);
    for (int i = 0; i < points; ++i) {
        const auto k = static_cast<size_t>(i);
        int16_t ok = 0;
        const double calc = IndexFromPolynomial(
            rec_.General.PolyCoef, static_cast<float>(m.IndexWave[k]), rec_.General.Polytype, ok);
        if (ok == 0) continue;
        out.push_back(
            {m.IndexWave[k], m.IndexValue[k], calc, m.IndexValue[k] - calc, m.IndexWeight[k]});
    }
    return out;
}

}  // namespace ostrel
