// The material form's commands shared by its tabs: what each tab offers, and paste, clear
// and the wavelength picker on the tab shown.
#include <charconv>
#include <exception>

#include "core/materialform/frm3new.h"

namespace ostrel {

// ---------------------------------------------------------------------------------------
// Tabs and the commands shared by them

void frm3New::tabPropertiesChange(int tab) {
    if (tab < kTabGeneral || tab > kTabOther) return;
    // What the paste, clear and wavelength commands offer on each tab, in tab order.
    struct TabCommands {
        const char* paste;
        bool pasteOn;
        const char* clear;
        bool clearOn;
        bool waveOn;
    };
    static constexpr TabCommands kCommands[] = {
        // The Alt letters are unique in the form: Clear takes L, Close keeps C.
        {"&Paste", false, "C&lear", false, false},
        {"&Paste index", true, "C&lear index", true, true},
        {"&Paste trans", true, "C&lear trans", true, true},
        {"&Paste", false, "C&lear dndt", true, false},
        {"&Paste", false, "C&lear other", true, false},
    };
    tabProperties.tab = tab;
    const bool editable = mode_ != kModeReview;
    const TabCommands& c = kCommands[tab];
    comClipPaste.caption = c.paste;
    comClipPaste.enabled = c.pasteOn && editable;
    comClear.caption = c.clear;
    comClear.enabled = c.clearOn && editable;
    comWaveSelRefInd.enabled =
        c.waveOn && editable && (tab != kTabIndex || rec_.General.IndexDataType == 0);
    if (tab == kTabIndex) FillIndexGrid();
}

void frm3New::comClipPasteClick(const std::string& clipText) {
    if (mode_ == kModeReview) return;
    try {
        if (tabProperties.tab == kTabIndex) {
            const int first = ssRefInd.ActiveRow();
            const int rows = ssRefInd.Paste(clipText);
            if (rows > 0 && rec_.General.IndexDataType == 0) {
                // Pasted rows without a weight get one as typed rows do; a weight pasted
                // as 0 stays 0.
                for (int r = first; r < first + rows && r <= ssRefInd.MaxRows(); ++r) {
                    if (ssRefInd.Text(3, r).empty()) ssRefIndChange(1, r);
                }
            }
            if (rows > 0) {
                MarkModified();
                if (rec_.General.IndexDataType == 0) HideFitColumns(true);
                comIndexFit.enabled = true;
                comIndexShow.enabled = false;
                SetSectionReady(rec_.IndexState, false);
                RefreshPanels();
            }
        } else if (tabProperties.tab == kTabTrans) {
            const int first = ssTrans.ActiveRow();
            const int rows = ssTrans.Paste(clipText);
            PasteTrans(first, rows);
        }
    } catch (const std::exception& e) {
        list_.errors().ErrorDisplay("The clipboard text could not be pasted.", e.what(), 0);
    }
}

void frm3New::comClearClick() {
    if (mode_ == kModeReview) return;
    switch (tabProperties.tab) {
        case kTabIndex:
            ClearIndex();
            break;
        case kTabTrans:
            ClearTrans();
            break;
        case kTabDndt: {
            ShowThermal();
            auto& t = rec_.Thermal;
            t.dndt_lin = t.dndt_D0 = t.dndt_D1 = t.dndt_D2 = 0;
            t.dndt_E0 = t.dndt_E1 = t.dndt_LamdaTK = t.dndt_RefTemp = 0;
            ShowThermal();
            break;
        }
        case kTabOther:
            ClearOther();
            break;
        default:
            return;
    }
    MarkModified();
    RefreshPanels();
}

void frm3New::comWaveSelRefIndClick() {
    if (mode_ == kModeReview || !hooks_.pickWaves) return;
    const int tab = tabProperties.tab;
    const bool index = tab == kTabIndex && rec_.General.IndexDataType == 0;
    if (!index && tab != kTabTrans) return;
    try {
        Grid& grid = index ? ssRefInd : ssTrans;
        // The grid goes to the top of its active block.
        if (grid.IsBlockMode()) {
            const GridBlock b = grid.SelBlock();
            grid.ClearSelection();
            if (b.row1 >= 1) grid.SetActiveCell(1, b.row1);
        }
        const int row = grid.ActiveRow();
        if (row < 1 || row > grid.MaxRows()) return;
        float wave = static_cast<float>(CellNumber(grid.Text(1, row)));
        int16_t count = 0;
        std::vector<float> waves;
        const int16_t startTab = index ? 0 : 2;
        if (hooks_.pickWaves(count, wave, waves, startTab) == 0) return;
        std::vector<float> picked;
        if (waves.empty()) {
            picked.push_back(wave);
        } else {
            picked = waves;
        }
        for (size_t i = 0; i < picked.size(); ++i) {
            const int r = row + static_cast<int>(i);
            if (r > grid.MaxRows()) break;
            char buf[32];  // the wavelength as picked, not as its nearest double
            const auto res = std::to_chars(buf, buf + sizeof buf, picked[i]);
            grid.SetText(1, r, std::string(buf, res.ptr));
            if (index) {
                ssRefIndChange(1, r);
            } else {
                ssTransChange(1, r);
            }
        }
    } catch (const std::exception&) {
        // a failed pick leaves the grid as it was
    }
}

}  // namespace ostrel
