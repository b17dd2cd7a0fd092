#include "core/wave/pop_edit_param_wave.h"

#include <cmath>
#include <exception>

#include "core/platform/number_text.h"

namespace ostrel {

namespace {
constexpr const char* kLabelStandard = "Pre-defined spectral && laser wavelengths";
constexpr const char* kLabelTrans = "Typical wavelengths for tranmission";
}  // namespace

popEditParamWave::popEditParamWave(Dialogs& dialogs, CNewMsg& newMsg, std::string dataFolder,
                                   Hooks hooks)
    : ssWavesFraun(3, 0),
      ssWavesLaser(3, 0),
      ssWavesCustom(3, 0),
      dialogs_(dialogs),
      newMsg_(newMsg),
      dataFolder_(std::move(dataFolder)),
      hooks_(std::move(hooks)) {
    for (Grid* g : {&ssWavesFraun, &ssWavesLaser, &ssWavesCustom}) {
        g->SetColumnTitle(1, "Wave [nm]");
        g->SetColumnTitle(2, "Name");
        g->SetColumnTitle(3, "Note");
        for (int c = 1; c <= 3; ++c) g->SetColumnLocked(c, true);
    }
    lblWave.caption = kLabelStandard;
}

Grid& popEditParamWave::GridOf(int tab) {
    switch (tab) {
        case kTabLaser:
            return ssWavesLaser;
        case kTabCustom:
            return ssWavesCustom;
        default:
            return ssWavesFraun;
    }
}

void popEditParamWave::FillGrid(Grid& grid, const std::vector<WaveEntry>& table, bool custom) {
    grid.SetRedraw(false);
    grid.ClearSelection();
    grid.SetMaxRows(0);
    grid.SetMaxRows(static_cast<int>(table.size()));
    std::string clip;
    for (size_t i = 0; i < table.size(); ++i) {
        if (i > 0) clip += "\n";
        WaveEntry shown = table[i];
        if (custom) shown.Name = shown.Name.substr(0, shown.Name.find('|'));
        clip += AlignedWaveText(table[i].Wave) + "\t" + FormatWaveName(shown, true);
    }
    grid.SetClip(1, 1, clip);
    grid.SetActiveCell(1, 1);
    grid.SetRedraw(true);
}

void popEditParamWave::Load(float startWave, int16_t startTab) {
    filling_ = true;
    resultCount_ = 1;
    startWave_ = startWave;
    startTab_ = startTab;
    tables_[kTabGlass] = GetGlassLines();
    tables_[kTabLaser] = GetLaserLines();
    std::vector<WaveEntry> own;
    customLoaded_ = LoadCustomWaves(dataFolder_, own);
    tables_[kTabCustom] = customLoaded_ ? own : GetTransLines();
    customFlag_ = true;

    for (int t = 0; t < 3; ++t)
        FillGrid(GridOf(t), tables_[static_cast<size_t>(t)], t == kTabCustom);

    // The caller's wavelength is marked in every table that holds it.
    if (startWave_ > 0.0f) {
        for (int t = 0; t < 3; ++t) {
            const auto& table = tables_[static_cast<size_t>(t)];
            for (size_t i = 0; i < table.size(); ++i) {
                if (std::fabs(table[i].Wave - startWave_) <= 0.001f) {
                    GridOf(t).SetActiveCell(1, static_cast<int>(i) + 1);
                    break;
                }
            }
        }
    }

    chkMultiWaves.value = multiOn_;
    const int tab = startTab_ >= 0 && startTab_ <= 2 ? startTab_ : 0;
    tabWaveSel.tab = tab;
    tabWaveSelChange(tab);
    filling_ = false;

    if (!loadedOnce_) {
        loadedOnce_ = true;
        newMsg_.Display(kNoticeText, kNoticeTitle, false, 0, kNoticeKey);
    }
}

int16_t popEditParamWave::Display(int16_t& count, float& wave, std::vector<float>& waves,
                                  int16_t startTab) {
    try {
        resultOk_ = 0;
        multiPick_ = false;
        resultWaves_.clear();
        report_.clear();
        Load(wave, startTab);
        visible_ = true;
        if (hooks_.showModal) hooks_.showModal(*this);
        visible_ = false;
        if (resultOk_ != 0) {
            count = resultCount_;
            if (!multiPick_) {
                wave = resultWave_;
            } else {
                waves = resultWaves_;
            }
        }
        return resultOk_;
    } catch (const std::exception&) {
        visible_ = false;
        return 0;
    }
}

void popEditParamWave::tabWaveSelChange(int tab) {
    if (tab < 0 || tab > 2) return;
    tabWaveSel.tab = tab;
    lblWave.caption = tab == kTabCustom ? kLabelTrans : kLabelStandard;
}

void popEditParamWave::ssWavesDblClick(int tab, int row) {
    if (filling_ || multiOn_) return;
    if (tab == kTabCustom && !customFlag_) {
        dialogs_.MsgBox(kNoCustomText, MsgButtons::OK);
        return;
    }
    if (tab < 0 || tab > 2) return;
    const auto& table = tables_[static_cast<size_t>(tab)];
    if (row < 1 || row > static_cast<int>(table.size())) return;
    const float w = table[static_cast<size_t>(row - 1)].Wave;
    if (w > 0.0f) {
        resultCount_ = 1;
        resultWave_ = w;
        multiPick_ = false;
        resultOk_ = -1;
        Hide();
    }
}

void popEditParamWave::chkMultiWavesClick() {
    multiOn_ = chkMultiWaves.value;
    if (!multiOn_) resultCount_ = 1;
}

void popEditParamWave::comOKClick() {
    const int tab = tabWaveSel.tab;
    Grid& grid = GridOf(tab);
    const auto& table = tables_[static_cast<size_t>(tab >= 0 && tab <= 2 ? tab : 0)];
    if (!grid.Selection().empty()) {
        resultWaves_.clear();
        report_.clear();
        int16_t count = 0;
        for (const GridBlock& block : grid.Selection()) {
            for (int r = block.row1; r <= block.row2; ++r) {
                if (r < 1 || r > static_cast<int>(table.size())) continue;
                const float w = table[static_cast<size_t>(r - 1)].Wave;
                resultWaves_.push_back(w);
                ++count;
                report_ += FormatNumber(w, "0.0000") + "\n";
            }
        }
        resultCount_ = count;
        multiPick_ = true;
        resultOk_ = -1;
    }
    Hide();
}

void popEditParamWave::comCancelClick() {
    Hide();
}

}  // namespace ostrel
