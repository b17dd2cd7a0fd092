// The melt form's index grid: its columns, the parent's index and the differences shown
// beside each typed pair, the pairs read back sorted, and the commands that fill or clear it
// (paste, wavelength picker, melt sheet, stored wavebands).
#include <cstdint>
#include <exception>
#include <utility>

#include "core/melt/frm7melt.h"
#include "core/melt/frm7melt_cells.h"
#include "core/optics/index_from_polynomial.h"
#include "core/platform/number_text.h"

namespace ostrel {

using frm7melt_cells::kColDiff;
using frm7melt_cells::kColFit;
using frm7melt_cells::kColIndex;
using frm7melt_cells::kColLetter;
using frm7melt_cells::kColParent;
using frm7melt_cells::kColWave;

namespace {

// A cell read through a 32-bit float, 0 when it is not a number.
float CellFloat(const Grid& grid, int col, int row) {
    const std::string text = grid.Text(col, row);
    return IsValidNumber(text) ? static_cast<float>(Val(text)) : 0.0f;
}

// Bubble sort into descending wavelength; equal wavelengths keep their order.
template <class T, class Wave>
void SortDescending(std::vector<T>& items, Wave wave) {
    for (size_t pass = 1; pass < items.size(); ++pass) {
        for (size_t j = 0; j + pass < items.size(); ++j) {
            if (wave(items[j]) < wave(items[j + 1])) std::swap(items[j], items[j + 1]);
        }
    }
}

}  // namespace

void frm7Melt::InitGrid() {
    Grid& g = ssRefInd;
    g.SetMaxCols(kCols);
    g.SetMaxRows(kRows);
    g.SetColumn(kColLetter, {" ", CellType::Text});
    g.SetColumnLocked(kColLetter, true);
    g.SetColumn(kColWave, {"wave [nm]", CellType::Float, 4, 10, 30000});
    g.SetColumn(kColIndex, {"melt glass index [user data]", CellType::Float, 7, 1, 9});
    g.SetColumn(kColParent, {"parent glass index [cat data]", CellType::Text});
    g.SetColumn(kColDiff, {"difference [user-cat]", CellType::Text});
    g.SetColumn(kColFit, {"difference [fit-cat]", CellType::Text});
    for (int c = kColParent; c <= kColFit; ++c) g.SetColumnLocked(c, true);
    g.SetColumnHidden(kColFit, true);
    g.ClearAll();
}

void frm7Melt::FillWaveBandList() {
    waveBandFilling_ = true;
    lstWaveBand.Clear();
    for (size_t i = 0; i < waveBands_.size(); ++i) {
        lstWaveBand.AddItem(waveBands_[i].Name, static_cast<int64_t>(i + 1));
    }
    waveBandFilling_ = false;
}

// --- the grid ---

double frm7Melt::ParentIndex(float wave, bool& ok) const {
    int16_t flag = 0;
    const double n =
        IndexFromPolynomial(parent_.General.PolyCoef, wave, parent_.General.Polytype, flag);
    ok = flag != 0;
    return n;
}

void frm7Melt::SetLetter(int row, float wave) {
    ssRefInd.SetText(kColLetter, row, SpectralLetter(wave));
}

void frm7Melt::AfterGridChange() {
    changed_ = true;
    ShowFitColumn(false);
    comIndexFit.enabled = true;
    comShowDispConsts.enabled = false;
    comShowIndex.enabled = false;
    melt_.IndexState.Ready = kFalse;
}

void frm7Melt::ssRefIndChange(int col, int row) {
    if (loading_) return;
    if (col == kColWave || col == kColIndex) UpdateIndexRow(row);
}

void frm7Melt::UpdateIndexRow(int row) {
    if (row < 1 || row > kRows) return;
    AfterGridChange();
    UpdateMeltDisplay();
    // A number typed or pasted is shown as the form writes its own, with its column's
    // decimals; the value the form reads from it stays the same.
    for (const int col : {kColWave, kColIndex}) {
        const std::string text = ssRefInd.Text(col, row);
        if (!text.empty() && IsValidNumber(text)) {
            ssRefInd.SetText(col, row, ssRefInd.FloatText(col, static_cast<float>(Val(text))));
        }
    }
    const float wave = CellFloat(ssRefInd, kColWave, row);
    double parent = 0;
    if (wave != 0.0f) {
        bool ok = false;
        parent = ParentIndex(wave, ok);
        SetLetter(row, wave);
    } else {
        ssRefInd.SetText(kColLetter, row, "");
    }
    const double user = CellFloat(ssRefInd, kColIndex, row);
    ssRefInd.SetText(kColParent, row, parent > 0 ? FormatNumber(parent, "0.0000000") : "  ");
    ssRefInd.SetText(kColDiff, row,
                     parent > 0 && user > 0 ? FormatNumber(user - parent, "0.000000") : "  ");
}

void frm7Melt::ReadIndexTable() {
    struct Pair {
        float wave;
        double value;
    };
    std::vector<Pair> pairs;
    for (int row = 1; row <= kRows; ++row) {
        const float wave = CellFloat(ssRefInd, kColWave, row);
        const double value = CellFloat(ssRefInd, kColIndex, row);
        if (wave != 0.0f && value != 0.0) pairs.push_back({wave, value});
    }
    auto& m = melt_.Melt;
    m.MeltIndexPoints = static_cast<int16_t>(pairs.size());
    if (pairs.empty()) return;
    SortDescending(pairs, [](const Pair& p) { return p.wave; });
    m.MeltIndexWave.fill(0);
    m.MeltIndexValue.fill(0);
    for (size_t i = 0; i < pairs.size(); ++i) {
        m.MeltIndexWave[i] = pairs[i].wave;
        m.MeltIndexValue[i] = pairs[i].value;
    }
    ssRefInd.ClearAll();
    WriteIndexTable();
}

void frm7Melt::WriteIndexTable() {
    const auto& m = melt_.Melt;
    std::string clip;
    for (int i = 0; i < m.MeltIndexPoints && i < kMaxMeltPoints; ++i) {
        const float wave = m.MeltIndexWave[static_cast<size_t>(i)];
        const double value = m.MeltIndexValue[static_cast<size_t>(i)];
        bool ok = false;
        const double parent = ParentIndex(wave, ok);
        if (i > 0) clip += "\n";
        clip += SpectralLetter(wave) + "\t" + ssRefInd.FloatText(kColWave, wave) + "\t" +
                ssRefInd.FloatText(kColIndex, static_cast<float>(value)) + "\t" +
                (parent > 0 ? FormatNumber(parent, "0.0000000") : "  ") + "\t" +
                (parent > 0 && value > 0 ? FormatNumber(value - parent, "0.000000") : "  ");
    }
    if (!clip.empty()) ssRefInd.SetClip(1, 1, clip);
}

std::vector<float> frm7Melt::ReadWavelengths() const {
    std::vector<float> waves;
    for (int row = 1; row <= kRows && waves.size() < size_t(kMaxMeltPoints); ++row) {
        const float wave = CellFloat(ssRefInd, kColWave, row);
        if (wave != 0.0f) waves.push_back(wave);
    }
    SortDescending(waves, [](float w) { return w; });
    return waves;
}

// --- grid commands ---

void frm7Melt::comClipPasteClick(const std::string& clipText) {
    Trap("The clipboard text could not be pasted.", [&] {
        const int first = ssRefInd.ActiveRow();
        const int rows = ssRefInd.Paste(clipText);
        for (int r = first; r < first + rows; ++r) UpdateIndexRow(r);
        lblError.caption = "";
    });
}

void frm7Melt::comClearClick() {
    ssRefInd.ClearAll();
    auto& m = melt_.Melt;
    m.MeltFlag = kFalse;
    m.MeltTransPoints = 0;
    m.MeltIndexPoints = 0;
    m.MeltIndexValue.fill(0);
    m.MeltTransThird.fill(0);
    m.MeltIndexWave.fill(0);
    for (auto& half : m.MeltTransPair) half.fill(0);
    melt_.IndexState.Ready = kFalse;
    changed_ = true;
    UpdateMeltDisplay();
}

void frm7Melt::comWaveSelRefIndClick() {
    try {
        if (ssRefInd.IsBlockMode()) ssRefInd.ClearSelection();
        const int row = ssRefInd.ActiveRow();
        if (row < 1 || !hooks_.pickWaves) return;
        int16_t count = 1;
        float wave = CellFloat(ssRefInd, kColWave, row);
        std::vector<float> waves;
        if (hooks_.pickWaves(count, wave, waves, 0) == -1) {
            if (count <= 1) {
                ssRefInd.SetText(kColWave, row, ssRefInd.FloatText(kColWave, wave));
                UpdateIndexRow(row);
            } else {
                for (size_t k = 0; k < waves.size(); ++k) {
                    const int r = row + static_cast<int>(k);
                    if (r > kRows) break;
                    ssRefInd.SetText(kColWave, r, ssRefInd.FloatText(kColWave, waves[k]));
                    UpdateIndexRow(r);
                }
            }
        }
        comIndexFit.enabled = true;
        comShowDispConsts.enabled = false;
        comShowIndex.enabled = false;
        lblError.caption = "";
        ShowFitColumn(false);
    } catch (const std::exception&) {
        // A failed pick leaves the grid as it is.
    }
}

void frm7Melt::comMeltSchottClick() {
    Trap("The melt sheet could not be used.", [&] {
        if (!hooks_.enterSheet) return;
        if (!hooks_.enterSheet(melt_)) return;
        ssRefInd.ClearAll();
        WriteIndexTable();
        AfterGridChange();
        lblError.caption = "";
        UpdateMeltDisplay();
    });
}

void frm7Melt::comWaveBandClick() {
    Trap("The waveband could not be stored.", [&] {
        const auto name =
            dialogs_.InputBox("Enter a name for this waveband", "Default wavebands for melts", "");
        if (!name || name->empty()) return;
        const std::vector<float> waves = ReadWavelengths();
        if (waves.size() < 3) return;
        waveBands_.push_back({*name, static_cast<int16_t>(waves.size()), waves});
        FillWaveBandList();
        SaveWaveBands(list_.dataFolder(), waveBands_);
    });
}

void frm7Melt::lstWaveBandClick() {
    if (waveBandFilling_ || loading_) return;
    const int index = lstWaveBand.listIndex();
    if (index < 0) return;
    const int64_t entry = lstWaveBand.ItemData(index);
    if (entry < 1 || entry > static_cast<int64_t>(waveBands_.size())) return;
    const MeltWaveBand& band = waveBands_[static_cast<size_t>(entry - 1)];
    ssRefInd.ClearAll();
    for (int i = 0; i < band.Count && i < kRows && i < static_cast<int>(band.Waves.size()); ++i) {
        ssRefInd.SetText(kColWave, i + 1,
                         ssRefInd.FloatText(kColWave, band.Waves[static_cast<size_t>(i)]));
        UpdateIndexRow(i + 1);
    }
    AfterGridChange();
    lblError.caption = "";
    UpdateMeltDisplay();
}

}  // namespace ostrel
