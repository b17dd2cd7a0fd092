#include "core/materialform/frm2_manage.h"

#include <algorithm>
#include <exception>

#include "core/material/list_operations.h"
#include "core/materialform/verification.h"
#include "core/optics/index_from_polynomial.h"
#include "core/platform/number_text.h"
#include "core/platform/ole_date.h"

namespace ostrel {

// ---------------------------------------------------------------------------------------
// frmGlassesDel

frmGlassesDel::frmGlassesDel(std::vector<MaterialRecord>& list) : list_(list) {}

void frmGlassesDel::Load() {
    lstGlasses.Clear();
    for (size_t i = 0; i < list_.size(); ++i) {
        lstGlasses.AddItem(list_[i].General.GlassName.Text() + "/" + list_[i].General.Source.Text(),
                           static_cast<int64_t>(i));
    }
}

void frmGlassesDel::comDelSelClick() {
    std::vector<MaterialRecord> keep;
    keep.reserve(list_.size());
    for (int i = 0; i < lstGlasses.ListCount(); ++i) {
        if (!lstGlasses.Selected(i))
            keep.push_back(list_[static_cast<size_t>(lstGlasses.ItemData(i))]);
    }
    result_ = keep.size() < list_.size();
    if (result_) list_ = std::move(keep);
    closed_ = true;
    form.visible = false;
}

void frmGlassesDel::comCancelClick() {
    result_ = false;
    closed_ = true;
    form.visible = false;
}

// ---------------------------------------------------------------------------------------
// Grid texts

std::string WavebandText(const MaterialRecord& rec) {
    double lo, hi;
    const int points = std::clamp<int>(rec.General.IndexPoints, 0, kMaxIndexPoints);
    if (points > 0) {
        // Points are stored longest wavelength first; show the shorter end first.
        const double first = rec.Measured.IndexWave[0];
        const double last = rec.Measured.IndexWave[static_cast<size_t>(points - 1)];
        lo = std::min(first, last);
        hi = std::max(first, last);
    } else {
        lo = rec.General.IndexWvMin;
        hi = rec.General.IndexWvMax;
    }
    return FormatNumber(lo, "0.0") + " - " + FormatNumber(hi, "0.0");
}

std::string IndexRangeText(const MaterialRecord& rec) {
    auto at = [&rec](int16_t wave) {
        if (wave <= 0) return 0.0;
        int16_t ok = 0;
        const double n = IndexFromPolynomial(rec.General.PolyCoef, static_cast<float>(wave),
                                             rec.General.Polytype, ok);
        return ok ? n : 0.0;
    };
    return FormatNumber(at(rec.General.IndexWvMin), "0.000") + " - " +
           FormatNumber(at(rec.General.IndexWvMax), "0.000");
}

// ---------------------------------------------------------------------------------------
// frm2Manage

frm2Manage::frm2Manage(GlassesList& list, Dialogs& dialogs, Hooks hooks)
    : list_(list), dialogs_(dialogs), hooks_(std::move(hooks)) {
    form.visible = false;
    auto& g = ssGlassesCurr;
    g.SetMaxCols(kColCount);
    const char* titles[] = {"Glass",  "Source", "Waveband [nm]", "Index range", "Date defined",
                            "Status", ""};
    const int widths[] = {16, 16, 16, 14, 12, 22, 4};
    for (int c = 1; c <= kColCount; ++c) {
        g.SetColumnTitle(c, titles[c - 1]);
        g.SetColumnWidth(c, widths[c - 1]);
        g.SetColumnLocked(c, true);
    }
    g.SetColumnHidden(kColIndex, true);
}

void frm2Manage::Trap(const char* command, const std::function<void()>& body) {
    try {
        body();
    } catch (const std::exception& e) {
        list_.errors().ErrorDisplay(
            std::string("The command '") + command + "' could not be completed.", e.what(), 0);
        copy_ = list_.CopyListOut();
        FillGrid();
    }
}

void frm2Manage::Display() {
    BusyPointer busy(dialogs_);
    copy_ = list_.CopyListOut();
    FillGrid();
    form.visible = true;
}

void frm2Manage::ForceUnload() {
    copy_.clear();
    ssGlassesCurr.SetMaxRows(0);
    form.visible = false;
}

void frm2Manage::UpdatesGlasssAftEdit() {
    copy_ = list_.CopyListOut();
    FillGrid();
}

void frm2Manage::FillGrid() {
    auto& g = ssGlassesCurr;
    const bool wasOn = g.Redraw();
    g.SetRedraw(false);
    g.ClearSelection();

    std::string clip;
    std::vector<int> indexes;
    std::vector<ReadyStatus> status;
    for (size_t i = 0; i < copy_.size(); ++i) {
        const MaterialRecord& rec = copy_[i];
        if (!NameUsable(rec)) continue;
        ReadyStatus st = ReadyStatusCell(rec);
        if (!indexes.empty()) clip += '\n';
        clip += rec.General.GlassName.Text() + '\t' + rec.General.Source.Text() + '\t' +
                WavebandText(rec) + '\t' + IndexRangeText(rec) + '\t' +
                FormatShortDate(rec.DateChanged) + '\t' + st.text + '\t' + std::to_string(i + 1);
        indexes.push_back(static_cast<int>(i));
        status.push_back(std::move(st));
    }
    g.SetMaxRows(0);  // drops the colours of the previous fill
    g.SetMaxRows(static_cast<int>(indexes.size()));
    g.SetClip(1, 1, clip);
    for (size_t r = 0; r < indexes.size(); ++r) {
        const int row = static_cast<int>(r) + 1;
        const bool melt = copy_[static_cast<size_t>(indexes[r])].Melt.MeltFlag != 0;
        g.SetRowColour(row, melt ? std::optional<Colour>(kMeltRowColour) : std::nullopt);
        g.SetCellColour(kColStatus, row,
                        status[r].colour == ReadyColour::Green ? kStatusGreen : kStatusRed);
    }
    if (g.ActiveRow() > g.MaxRows() || g.ActiveRow() < 1) g.SetActiveCell(1, 1);
    g.SetRedraw(wasOn);
}

int frm2Manage::SelectedIndex() const {
    const auto& g = ssGlassesCurr;
    if (g.MaxRows() < 1) return 0;
    int row = g.IsBlockMode() ? g.SelBlock().row1 : g.ActiveRow();
    row = std::clamp(row, 1, g.MaxRows());
    return static_cast<int>(g.Value(kColIndex, row));
}

void frm2Manage::comOKClick() {
    if (hooks_.close) hooks_.close();
}

void frm2Manage::comEditClick() {
    Trap("Edit", [this] {
        const int index = SelectedIndex();
        if (index < 1 || index > static_cast<int>(copy_.size())) return;
        const MaterialRecord& rec = copy_[static_cast<size_t>(index - 1)];
        if (rec.Melt.MeltFlag != 0) {
            if (hooks_.editInMeltForm) hooks_.editInMeltForm(index, rec);
        } else if (hooks_.editInNewForm) {
            hooks_.editInNewForm(index, rec);
        }
    });
}

void frm2Manage::CommitCopy() {
    // Saving replaces the list and refreshes the floating list.
    if (!list_.CommitList(copy_)) copy_ = list_.CopyListOut();
    FillGrid();
}

void frm2Manage::comDeleteClick() {
    Trap("Delete", [this] {
        if (!hooks_.showGlassesDel) return;
        std::vector<MaterialRecord> work = copy_;
        frmGlassesDel del(work);
        del.Load();
        hooks_.showGlassesDel(del);
        if (!del.Result()) return;
        copy_ = std::move(work);
        CommitCopy();
        if (ssGlassesCurr.MaxRows() > 0) {
            ssGlassesCurr.ClearSelection();
            ssGlassesCurr.SetActiveCell(1, 1);
        }
    });
}

void frm2Manage::comDuplicateClick() {
    Trap("Duplicate", [this] {
        const int index = SelectedIndex();
        if (index < 1) return;
        if (DuplicateMaterial(list_, dialogs_, index)) {
            copy_ = list_.CopyListOut();
            FillGrid();
        }
    });
}

void frm2Manage::comSortClick() {
    Trap("Sort", [this] {
        const MsgAnswer answer =
            dialogs_.MsgBox(kSortQuestion, MsgButtons::YesNoCancel, MsgIcon::None, "");
        if (answer == MsgAnswer::Cancel) return;
        auto& g = ssGlassesCurr;
        if (answer == MsgAnswer::Yes) {
            g.Sort(1, g.MaxRows(), {{kColGlass, true}});
        } else {
            g.Sort(1, g.MaxRows(), {{kColSource, true}, {kColGlass, true}});
        }
        std::vector<MaterialRecord> sorted;
        std::vector<bool> taken(copy_.size(), false);
        sorted.reserve(copy_.size());
        for (int row = 1; row <= g.MaxRows(); ++row) {
            const int old = static_cast<int>(g.Value(kColIndex, row));
            if (old < 1 || old > static_cast<int>(copy_.size()) || taken[old - 1]) continue;
            taken[old - 1] = true;
            sorted.push_back(copy_[static_cast<size_t>(old - 1)]);
        }
        // Materials that had no row (unusable names) keep their data, behind the others.
        for (size_t i = 0; i < copy_.size(); ++i) {
            if (!taken[i]) sorted.push_back(copy_[i]);
        }
        copy_ = std::move(sorted);
        CommitCopy();
    });
}

}  // namespace ostrel
