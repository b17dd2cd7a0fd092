#include "core/wave/wave_names.h"

#include <gtest/gtest.h>

#include <tuple>

#include "core/platform/settings_store.h"
#include "core/shell/new_msg.h"
#include "core/wave/pop_edit_param_wave.h"
#include "support/scripted_dialogs.h"
#include "support/temp_dir.h"

namespace ostrel::testing {
namespace {

TEST(WaveNames, TablesHaveTheirRowsInOrder) {
    const auto laser = GetLaserLines();
    const auto trans = GetTransLines();
    ASSERT_EQ(std::tuple(GetGlassLines().size(), laser.size(), trans.size()),
              std::tuple(22u, 81u, 30u));
    EXPECT_EQ(std::tuple(laser[0], laser[33], laser.back()),
              std::tuple((WaveEntry{"Er:YAG", 2940.0f}), (WaveEntry{"HeNe |main", 632.8f}),
                         (WaveEntry{"Nd:YAG |5th", 213.0f})));
    for (size_t i = 1; i < laser.size(); ++i) EXPECT_LE(laser[i].Wave, laser[i - 1].Wave);
    EXPECT_EQ(trans[4], (WaveEntry{"1060.0", 1060.0f}));
}

TEST(WaveNames, StandardMarkNamesAndAlignedWaves) {
    const std::tuple<float, int16_t, const char*> cases[] = {{587.56f, -1, "d   |He]"},
                                                             {587.5f, 0, " * "},
                                                             {312.5663f, -1, ""},
                                                             {1064.04f, -1, "Nd:YAG, Nd:YVO4 |]"},
                                                             {694.3f, -1, "Ruby  |main]"}};
    for (auto [wave, hit, expected] : cases) {
        std::string mark = "old";
        EXPECT_EQ(StandardWaveMark(wave, mark), hit) << wave;
        EXPECT_EQ(mark, expected) << wave;
    }
    // Names and aligned waves.
    EXPECT_EQ(
        std::tuple(FormatWaveName({"e  |Hg", 546.074f}, true),
                   FormatWaveName({"e  |Hg", 546.074f}, false), FormatWaveName({"", 1.0f}, true)),
        std::tuple("e  \tHg", "e   |Hg]", ""));
    EXPECT_TRUE(WaveNear(500.0f, 500.05f) && !WaveNear(500.0f, 500.06f));
    EXPECT_EQ(std::tuple(AlignedWaveText(10600.0f), AlignedWaveText(2325.42f),
                         AlignedWaveText(587.5618f)),
              std::tuple(" 10600.0", "  2325.42", "    587.5618"));
}

class Picker : public ::testing::Test {
  protected:
    Picker() : newMsg(dialogs, settings) {
        popEditParamWave::Hooks hooks;
        hooks.showModal = [this](popEditParamWave& p) {
            if (script) script(p);
        };
        picker = std::make_unique<popEditParamWave>(dialogs, newMsg, dir.path().string(), hooks);
    }
    int16_t Show(int16_t tab) { return picker->Display(count, wave, waves, tab); }

    TempDir dir;
    ScriptedDialogs dialogs;
    MemorySettingsStore settings;
    CNewMsg newMsg;
    std::function<void(popEditParamWave&)> script;
    std::unique_ptr<popEditParamWave> picker;
    // What Display hands back.
    int16_t count = 0;
    float wave = 0;
    std::vector<float> waves;
};

TEST_F(Picker, StartWaveIsMarkedInEveryTableThatHoldsIt) {
    wave = 632.8f;
    script = [](popEditParamWave& f) {
        EXPECT_EQ(std::tuple(f.ssWavesFraun.ActiveRow(), f.ssWavesLaser.ActiveRow(),
                             f.ssWavesFraun.ClipText({1, 11, 3, 11}), f.tabWaveSel.tab.get(),
                             f.lblWave.caption.get()),
                  std::tuple(11, 34, "    632.8\t  \tHeNe laser", 2,
                             "Typical wavelengths for tranmission"));
        f.comCancelClick();
    };
    // Cancelled: the caller's value stays. The notice shows the first time only.
    EXPECT_EQ(Show(2), 0);
    EXPECT_EQ(wave, 632.8f);
    script = nullptr;
    Show(0);
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(std::tuple(dialogs.boxes[0].title,
                         dialogs.boxes[0].text.rfind(popEditParamWave::kNoticeText, 0)),
              std::tuple("Standard wavelengths", 0u));
}

TEST_F(Picker, DoubleClickPicksOneUnlessMultipleIsTicked) {
    script = [](popEditParamWave& f) {
        f.chkMultiWaves.value = true;
        f.chkMultiWavesClick();
        f.ssWavesDblClick(0, 13);
        EXPECT_TRUE(f.Visible());  // nothing picked
        f.chkMultiWaves.value = false;
        f.chkMultiWavesClick();
        f.ssWavesDblClick(0, 13);
    };
    EXPECT_EQ(Show(0), -1);
    EXPECT_EQ(std::tuple(count, wave, waves.size()), std::tuple(1, 587.5618f, 0u));
}

TEST_F(Picker, OkTakesTheBlocksOfTheActiveTabInOrder) {
    script = [](popEditParamWave& f) {
        f.chkMultiWaves.value = true;
        f.chkMultiWavesClick();
        f.tabWaveSelChange(1);
        EXPECT_EQ(f.lblWave.caption, "Pre-defined spectral && laser wavelengths");
        f.ssWavesLaser.SetSelection({-1, 1, -1, 2});
        f.ssWavesLaser.AddSelection({-1, 34, -1, 34});
        f.comOKClick();
    };
    const int shown = Show(0);  // before the reads below: argument order is not fixed
    EXPECT_EQ(std::tuple(shown, count, waves, picker->ReportText()),
              std::tuple(-1, 3, (std::vector<float>{2940.0f, 2127.0f, 632.8f}),
                         "2940.0000\n2127.0000\n632.8000\n"));
    EXPECT_TRUE(picker->MultiOn());  // kept for the next showing
}

TEST_F(Picker, OwnWavelengthFileReplacesTheThirdTab) {
    Show(2);
    EXPECT_EQ(std::tuple(picker->CustomLoaded(), picker->ssWavesCustom.MaxRows(),
                         std::filesystem::is_directory(dir / "UserData")),
              std::tuple(false, 30, true));

    WriteFileBytes(dir / "UserData" / "WaveLen.lst", "Laser A|1550.5\nnot a line\n|800\r\n");
    script = [](popEditParamWave& f) { f.ssWavesDblClick(2, 1); };
    EXPECT_EQ(Show(2), -1);
    EXPECT_EQ(std::tuple(picker->CustomLoaded(), picker->ssWavesCustom.MaxRows(),
                         picker->ssWavesCustom.ClipText({2, 1, 2, 2}), wave),
              std::tuple(true, 2, "Laser A\n800", 1550.5f));
}

}  // namespace
}  // namespace ostrel::testing
