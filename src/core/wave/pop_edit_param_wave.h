#pragma once
// The wavelength picker: three tabs of standard wavelengths (glass catalogue lines, laser
// lines, and the transmission wavelengths or the user's own list), from which the user
// picks one wavelength by a double click, or several by selecting blocks and pressing OK.
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/platform/controls.h"
#include "core/platform/dialogs.h"
#include "core/platform/grid.h"
#include "core/shell/new_msg.h"
#include "core/wave/wave_names.h"

namespace ostrel {

class popEditParamWave {
  public:
    enum Tab { kTabGlass = 0, kTabLaser = 1, kTabCustom = 2 };

    struct Hooks {
        // Shows the form modally and returns when it has been hidden (by a pick, OK or
        // Cancel). The window forwards the user's events to the methods below meanwhile.
        std::function<void(popEditParamWave&)> showModal;
    };

    // dataFolder: where "UserData/WaveLen.lst" is looked for.
    popEditParamWave(Dialogs& dialogs, CNewMsg& newMsg, std::string dataFolder, Hooks hooks);

    // Opens on startTab (0 for the first tab) with `wave` (the caller's cell) preselected
    // wherever a table holds it. Returns -1 when something was picked, 0 when cancelled;
    // only then are count, wave (single pick) and waves (multiple pick, in order) set.
    int16_t Display(int16_t& count, float& wave, std::vector<float>& waves, int16_t startTab);

    // The steps of Display before the form is shown: tables, grids, preselection and, the
    // first time, the one-time notice.
    void Load(float startWave, int16_t startTab);

    // --- events ---
    void tabWaveSelChange(int tab);
    // A double click on `row` (from 1) of the grid of tab `tab`.
    void ssWavesDblClick(int tab, int row);
    void chkMultiWavesClick();
    void comOKClick();
    void comCancelClick();

    // --- state ---
    int16_t ResultOk() const { return resultOk_; }
    int16_t ResultCount() const { return resultCount_; }
    float ResultWave() const { return resultWave_; }
    const std::vector<float>& ResultWaves() const { return resultWaves_; }
    // True when the last pick was by blocks (ResultWaves), false for a double click.
    bool MultiPick() const { return multiPick_; }
    // "0.0000" and a line break for each wavelength of the last multiple pick.
    const std::string& ReportText() const { return report_; }
    bool MultiOn() const { return multiOn_; }
    bool Visible() const { return visible_; }
    // True when the third tab shows the user's own list.
    bool CustomLoaded() const { return customLoaded_; }
    const std::vector<WaveEntry>& Table(int tab) const { return tables_[static_cast<size_t>(tab)]; }
    Grid& GridOf(int tab);

    static constexpr const char* kNoticeKey = "WaveSelector";
    static constexpr const char* kNoticeTitle = "Standard wavelengths";
    static constexpr const char* kNoticeText =
        "By ticking the check box at the bottom of this form, you can select multople "
        "wavelengths for insertion.\nUse the mouse to select a block\nIf you want to select "
        "non-adjacent wavelengths, then hold down the CTRL key";
    static constexpr const char* kNoCustomText = "No custom wavelengths have been found.";

    Control form{"Wavelengths [nm]"};
    TabStrip tabWaveSel;
    std::array<std::string, 3> tabCaptions{"&Glass catalog lines", "&Laser lines", "&Trans"};
    Label lblWave;
    CheckBox chkMultiWaves{"Select multiple wavelengths"};
    Button comOK{"&OK"};
    Button comCancel{"&Cancel"};
    Grid ssWavesFraun;
    Grid ssWavesLaser;
    Grid ssWavesCustom;

  private:
    void FillGrid(Grid& grid, const std::vector<WaveEntry>& table, bool custom);
    void Hide() { visible_ = false; }

    Dialogs& dialogs_;
    CNewMsg& newMsg_;
    std::string dataFolder_;
    Hooks hooks_;
    std::array<std::vector<WaveEntry>, 3> tables_;
    int16_t resultOk_ = 0;
    int16_t resultCount_ = 1;
    float resultWave_ = 0.0f;
    std::vector<float> resultWaves_;
    std::string report_;
    float startWave_ = 0.0f;
    int16_t startTab_ = 0;
    bool multiOn_ = false;
    bool multiPick_ = false;
    bool filling_ = false;
    bool loadedOnce_ = false;
    bool customFlag_ = false;
    bool customLoaded_ = false;
    bool visible_ = false;
};

}  // namespace ostrel
