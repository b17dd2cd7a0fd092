#include "core/shell/new_msg.h"

#include "core/shell/setting_flag.h"

namespace ostrel {

bool CNewMsg::Declined(const std::string& szKey) const {
    return SettingFlag(settings_.GetSetting(kSection, szKey, "False"), false);
}

void CNewMsg::Display(const std::string& szMsg, const std::string& szTitle, bool bWithDelay,
                      int sWaitInMillSec, const std::string& szKey) {
    msg_ = szMsg;
    title_ = szTitle;
    key_ = szKey;
    pending_ = true;
    if (bWithDelay && timer_) {
        timer_->interval = sWaitInMillSec;
        timer_->enabled = true;
    } else {
        ShowMessage();
    }
}

void CNewMsg::TimerTick() {
    if (timer_) {
        timer_->enabled = false;
        timer_->interval = kDefaultInterval;
    }
    ShowMessage();
}

void CNewMsg::ShowMessage() {
    if (!pending_) return;
    pending_ = false;
    if (Declined(key_)) return;
    MsgAnswer a = dialogs_.MsgBox(msg_ + "\nDo you want to see this message again?",
                                  MsgButtons::YesNo, MsgIcon::Question, title_);
    if (a == MsgAnswer::No) settings_.SaveSetting(kSection, key_, FlagText(true));
}

}  // namespace ostrel
