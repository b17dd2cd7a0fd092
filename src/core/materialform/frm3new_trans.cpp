// The material form's Trans tab: total and internal transmission and the absorption
// coefficient, each worked out from the kind of data given, and the check of the table.
#include <algorithm>
#include <cmath>
#include <exception>

#include "core/materialform/frm3new.h"
#include "core/optics/index_fit.h"
#include "core/optics/index_from_polynomial.h"
#include "core/optics/trans_calcs.h"
#include "core/platform/number_text.h"

namespace ostrel {

namespace {

constexpr const char* kNeedWaveMsg = "You need to specify a wavelength";
constexpr const char* kIndexNotReadyMsg =
    "The Index Data must be READY\nto get the absorption coeff\nfrom the total Transmission";
constexpr const char* kOutsideBandMsg =
    "Wavelength outside waveband covered by refractive index polynomial";

}  // namespace

bool frm3New::IndexAt(float wave, double& n) const {
    const auto& g = rec_.General;
    if (rec_.IndexState.Ready == 0) return false;
    if (wave < g.IndexWvMin || wave > g.IndexWvMax) return false;
    int16_t ok = 0;
    n = IndexFromPolynomial(g.PolyCoef, wave, g.Polytype, ok);
    return ok != 0;
}

void frm3New::BuildTransColumns() {
    Grid& g = ssTrans;
    g.SetRedraw(false);
    const bool percent = transDisplay_ == 0;
    const int type = rec_.Measured.TransType;
    g.SetColumn(1, {"wave [nm]", CellType::Float, 4, 0, 1e6});
    g.SetColumn(2, {percent ? "Total trans [%]" : "Total trans", CellType::Float, percent ? 2 : 4});
    g.SetColumn(
        3, {percent ? "Internal trans [%]" : "Internal trans", CellType::Float, percent ? 2 : 4});
    g.SetColumn(4, {"Absorption coeff", CellType::Float, 5});
    for (int c = 2; c <= 4; ++c) g.SetColumnLocked(c, type != c - 2);
    g.SetColumnLocked(1, type == 3);
    if (mode_ == kModeReview) {
        for (int c = 1; c <= 4; ++c) g.SetColumnLocked(c, true);
    }
    g.SetRedraw(true);
}

void frm3New::ShowTransRow(int row) {
    if (row < 1 || row > kTransRows) return;
    const auto k = static_cast<size_t>(row - 1);
    const auto& m = rec_.Measured;
    Grid& g = ssTrans;
    if (m.TransWave[k] == 0.0f && m.TransTotal[k] == 0.0f && m.TransInternal[k] == 0.0f &&
        m.TransAbsorb[k] == 0.0f) {
        g.ClearRow(row);
        return;
    }
    const bool percent = transDisplay_ == 0;
    // A cell worked out through the index (total from internal, or internal and absorption
    // from total) that could not be worked out, because the index is not ready or the
    // wavelength lies outside its band, holds 0 and shows "----": no number, not opaque.
    double n = 0;
    const bool index = m.TransWave[k] > 0.0f && IndexAt(m.TransWave[k], n);
    const int type = m.TransType;
    auto missing = [&](int col, float v) {
        const bool viaIndex = col == 2 ? type == 1 || type == 2 : type == 0;
        return v == 0.0f && viaIndex && !index;
    };
    auto trans = [&](int col, float v) {
        if (missing(col, v)) return std::string("----");
        return percent ? FormatNumber(v, "0.00;\\----") : FormatNumber(v / 100.0, "0.0000;\\----");
    };
    g.SetText(1, row, m.TransWave[k] == 0.0f ? std::string() : PlainNumberText(m.TransWave[k]));
    g.SetText(2, row, trans(2, m.TransTotal[k]));
    g.SetText(3, row, trans(3, m.TransInternal[k]));
    g.SetText(4, row,
              missing(4, m.TransAbsorb[k]) ? std::string("----")
                                           : FormatNumber(m.TransAbsorb[k], "0.00000;\\----"));
}

void frm3New::TransDisplayRefresh(bool silent) {
    CheckTransPoints(rec_);
    auto& m = rec_.Measured;
    if (m.TransWidth <= 0.0f) {
        m.TransWidth = 10.0f;
        txtTransGlassWidth.ShowNumber(FormatNumber(m.TransWidth, "0.0"));
        if (!silent) {
            dialogs_.MsgBox("Transmition Data: thickness was zero, set to" +
                                PlainNumberText(m.TransWidth) + "mm",
                            MsgButtons::OK);
        }
    }
    txtTransGlassWidth.ShowNumber(FormatNumber(m.TransWidth, "0.0"));
    ssTrans.SetRedraw(false);
    ssTrans.ClearAll();
    for (int r = 1; r <= std::min<int>(m.TransPoints, kTransRows); ++r) ShowTransRow(r);
    ssTrans.SetRedraw(true);
}

void frm3New::TransEnableByType() {
    const bool data = rec_.Measured.TransType != 3;
    const bool editable = mode_ != kModeReview;
    txtTransGlassWidth.enabled = data && editable;
    ssTrans.SetRedraw(false);
    if (!data) {
        for (int c = 1; c <= 4; ++c) ssTrans.SetColumnLocked(c, true);
    }
    ssTrans.SetRedraw(true);
    comTransSort.enabled = data && editable;
}

void frm3New::RecalcTransRow(int row) {
    if (row < 1 || row > kTransRows) return;
    const auto k = static_cast<size_t>(row - 1);
    auto& m = rec_.Measured;
    const float w = m.TransWave[k];
    double n = 0;
    const bool index = w > 0.0f && IndexAt(w, n);
    const float p = index ? ReflectionFactor(n) : 0.0f;
    switch (m.TransType) {
        case 0:
            m.TransInternal[k] = index ? m.TransTotal[k] / p : 0.0f;
            m.TransAbsorb[k] = index ? AbsorbFromInternal(m.TransWidth, m.TransInternal[k]) : 0.0f;
            break;
        case 1:
            m.TransAbsorb[k] = AbsorbFromInternal(m.TransWidth, m.TransInternal[k]);
            m.TransTotal[k] = index ? m.TransInternal[k] * p : 0.0f;
            break;
        case 2:
            m.TransInternal[k] = InternalFromAbsorb(m.TransWidth, m.TransAbsorb[k]);
            m.TransTotal[k] = index ? m.TransInternal[k] * p : 0.0f;
            break;
        default:
            break;
    }
}

void frm3New::cmbTransTypeClick() {
    if (loading_ || mode_ == kModeReview) return;
    const int index = cmbTransType.listIndex();
    if (index < 0 || index > 3 || index == rec_.Measured.TransType) return;  // no change
    MarkModified();
    rec_.Measured.TransType = static_cast<int16_t>(index);
    BuildTransColumns();
    TransDisplayRefresh(false);
    TransEnableByType();
    RefreshPanels();
}

void frm3New::cmbTransDispClick() {
    if (loading_) return;
    const int index = cmbTransDisp.listIndex();
    if (index < 0 || index > 1 || index == transDisplay_) return;  // no change
    transDisplay_ = static_cast<int16_t>(index);
    BuildTransColumns();
    TransEnableByType();
    TransDisplayRefresh(false);
}

void frm3New::txtTransGlassWidthValidate() {
    if (mode_ == kModeReview) return;
    const std::string text = txtTransGlassWidth.text;
    auto& m = rec_.Measured;
    if (!IsValidNumber(text)) return;  // kept as typed, the stored width stands
    const auto width = static_cast<float>(Val(text));
    if (width > 0.0f && width != m.TransWidth) {
        MarkModified();
        m.TransWidth = width;
        for (int r = 1; r <= kTransRows; ++r) {
            if (m.TransWave[static_cast<size_t>(r - 1)] != 0.0f) RecalcTransRow(r);
        }
        TransDisplayRefresh(false);
        SetSectionReady(rec_.TransState, false);
        RefreshPanels();
    }
    txtTransGlassWidth.ShowNumber(FormatNumber(m.TransWidth, "0.0"));
}

void frm3New::ssTransChange(int col, int row) {
    if (mode_ == kModeReview || row < 1 || row > kTransRows || col < 1 || col > 4) return;
    auto& m = rec_.Measured;
    const auto k = static_cast<size_t>(row - 1);
    double value = CellNumber(ssTrans.Text(col, row));
    if (col == 1) {
        if (value < 1.0 || value >= 100000.0) value = 0;
        m.TransWave[k] = static_cast<float>(value);
        RecalcTransRow(row);
    } else {
        if (m.TransType != col - 2) {
            ShowTransRow(row);
            return;
        }
        if (m.TransWave[k] == 0.0f) {
            dialogs_.MsgBox(kNeedWaveMsg, MsgButtons::OK);
            ShowTransRow(row);
            return;
        }
        if (col != 4 && transDisplay_ == 1) value *= 100.0;
        if (m.TransType == 0) {
            const float w = m.TransWave[k];
            const auto& g = rec_.General;
            if (rec_.IndexState.Ready == 0) {
                dialogs_.MsgBox(kIndexNotReadyMsg, MsgButtons::OK);
                ShowTransRow(row);
                return;
            }
            if (w < g.IndexWvMin || w > g.IndexWvMax) {
                dialogs_.MsgBox(kOutsideBandMsg, MsgButtons::OK);
                ShowTransRow(row);
                return;
            }
            int16_t ok = 0;
            const double n = IndexFromPolynomial(g.PolyCoef, w, g.Polytype, ok);
            const float p = ReflectionFactor(n);
            if (static_cast<float>(value) / p >= 100.0f) {
                dialogs_.MsgBox("Reflection Loss at this wavelength  " +
                                    FormatNumber(1.0 - p, "0.0%") +
                                    "\nTherefore total transmittance must be less than  " +
                                    FormatNumber(p, "0.0%"),
                                MsgButtons::OK);
                ShowTransRow(row);
                return;
            }
        }
        if (col == 4 && (value < 0.0 || value > 1.0)) value = 0;
        const auto v = static_cast<float>(value);
        if (col == 2) m.TransTotal[k] = v;
        if (col == 3) m.TransInternal[k] = v;
        if (col == 4) m.TransAbsorb[k] = v;
        RecalcTransRow(row);
    }
    if (m.TransPoints < row) m.TransPoints = static_cast<int16_t>(row);
    ShowTransRow(row);
    MarkModified();
    ++rec_.TransState.Changes;
    SetSectionReady(rec_.TransState, false);
    RefreshPanels();
}

void frm3New::PasteTrans(int firstRow, int rows) {
    auto& m = rec_.Measured;
    const int type = m.TransType;
    if (rows > 0) MarkModified();
    for (int r = firstRow; r < firstRow + rows && r <= kTransRows; ++r) {
        if (r < 1) continue;
        const auto k = static_cast<size_t>(r - 1);
        double w = CellNumber(ssTrans.Text(1, r));
        if (w < 1.0 || w >= 100000.0) w = 0;
        m.TransWave[k] = static_cast<float>(w);
        if (type >= 0 && type <= 2) {
            double v = CellNumber(ssTrans.Text(type + 2, r));
            if (type != 2 && transDisplay_ == 1) v *= 100.0;
            if (type == 2 && (v < 0.0 || v > 1.0)) v = 0;
            if (type == 0) m.TransTotal[k] = static_cast<float>(v);
            if (type == 1) m.TransInternal[k] = static_cast<float>(v);
            if (type == 2) m.TransAbsorb[k] = static_cast<float>(v);
        }
        RecalcTransRow(r);
        if (m.TransPoints < r) m.TransPoints = static_cast<int16_t>(r);
        ShowTransRow(r);
    }
    SetSectionReady(rec_.TransState, false);
    RefreshPanels();
}

void frm3New::comTransSortClick() {
    if (mode_ == kModeReview || rec_.Measured.TransType == 3) return;
    MarkModified();
    try {
        auto& m = rec_.Measured;
        struct Point {
            float wave, absorb, total, internal;
        };
        std::vector<Point> kept;
        for (size_t k = 0; k < size_t(kTransRows); ++k) {
            if (m.TransWave[k] != 0.0f) {
                kept.push_back(
                    {m.TransWave[k], m.TransAbsorb[k], m.TransTotal[k], m.TransInternal[k]});
            }
        }
        // Exchange sort, longest wavelength first; equal wavelengths keep their order.
        for (size_t i = 0; i + 1 < kept.size(); ++i) {
            for (size_t j = i + 1; j < kept.size(); ++j) {
                if (kept[i].wave < kept[j].wave) std::swap(kept[i], kept[j]);
            }
        }
        m.TransWave.fill(0);
        m.TransAbsorb.fill(0);
        m.TransTotal.fill(0);
        m.TransInternal.fill(0);
        for (size_t i = 0; i < kept.size(); ++i) {
            m.TransWave[i] = kept[i].wave;
            m.TransAbsorb[i] = kept[i].absorb;
            m.TransTotal[i] = kept[i].total;
            m.TransInternal[i] = kept[i].internal;
        }
        m.TransPoints = static_cast<int16_t>(kept.size());
        auto& g = rec_.General;
        for (size_t i = 0; i < size_t(kTransTableSize); ++i) {
            const size_t row = ShortTableRow(i, kept.size());
            g.TransShortWave[i] = i < kept.size() ? kept[row].wave : 0.0f;
            g.TransShortValue[i] = i < kept.size() ? kept[row].absorb : kNoTransData;
        }
        // The display shows exactly the points kept.
        ssTrans.SetRedraw(false);
        ssTrans.ClearAll();
        for (int r = 1; r <= m.TransPoints; ++r) ShowTransRow(r);
        ssTrans.SetRedraw(true);
        txtTransGlassWidth.ShowNumber(FormatNumber(m.TransWidth, "0.0"));

        FillTransTable(rec_.TransTable, m.TransWidth, m.TransWave, m.TransAbsorb);
        SetSectionReady(rec_.TransState, m.TransPoints >= 3);
        ++rec_.TransState.Changes;
        RefreshPanels();
    } catch (const std::exception& e) {
        list_.errors().ErrorDisplay("The transmission table could not be checked.", e.what(), 0);
    }
}

void frm3New::ClearTrans() {
    auto& m = rec_.Measured;
    m.TransWave.fill(0);
    m.TransAbsorb.fill(0);
    m.TransTotal.fill(0);
    m.TransInternal.fill(0);
    m.TransPoints = 0;
    SetSectionReady(rec_.TransState, false);
    ssTrans.ClearAll();
    BuildTransColumns();
    TransEnableByType();
    ssTrans.SetRedraw(false);
    ssTrans.ClearAll();
    ssTrans.SetRedraw(true);
}

std::vector<frm3New::CurvePoint> frm3New::TransCurve() const {
    std::vector<CurvePoint> out;
    const auto& m = rec_.Measured;
    if (m.TransType == 3) return out;
    for (size_t k = 0; k < size_t(kTransRows); ++k) {
        if (m.TransWave[k] <= 0.0f) continue;
        out.push_back({m.TransWave[k], m.TransInternal[k]});
    }
    std::stable_sort(out.begin(), out.end(),
                     [](const CurvePoint& a, const CurvePoint& b) { return a.wave > b.wave; });
    return out;
}

}  // namespace ostrel
