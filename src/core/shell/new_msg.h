#pragma once
// One-shot notices: a message the user may decline to see again. The choice is kept in
// the per-user settings, section "CNM_NewUserMsg", under the message's key.
//
// A delayed message waits for the timer handed over by UseThisTimer: the main window runs
// that timer and calls TimerTick when it fires.
#include <string>

#include "core/platform/controls.h"
#include "core/platform/dialogs.h"
#include "core/platform/settings_store.h"

namespace ostrel {

class CNewMsg {
  public:
    static constexpr const char* kSection = "CNM_NewUserMsg";
    static constexpr int kDefaultInterval = 100;

    CNewMsg(Dialogs& dialogs, SettingsStore& settings) : dialogs_(dialogs), settings_(settings) {}

    void UseThisTimer(Timer* tmrToUse) { timer_ = tmrToUse; }

    // Stores the message; with bWithDelay (and a timer) it comes when the timer fires after
    // sWaitInMillSec, otherwise at once.
    void Display(const std::string& szMsg, const std::string& szTitle, bool bWithDelay,
                 int sWaitInMillSec, const std::string& szKey);
    // The timer fired: stops it, puts it back to 100 ms and shows the stored message.
    void TimerTick();

    // True once the user declined the message of this key.
    bool Declined(const std::string& szKey) const;

  private:
    void ShowMessage();

    Dialogs& dialogs_;
    SettingsStore& settings_;
    Timer* timer_ = nullptr;
    std::string msg_, title_, key_;
    bool pending_ = false;
};

}  // namespace ostrel
