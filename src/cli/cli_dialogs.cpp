#include <ostream>

#include "cli/cli_context.h"

namespace ostrel::cli {

MsgAnswer CliDialogs::MsgBox(const std::string& text, MsgButtons buttons, MsgIcon,
                             const std::string& title) {
    std::string oneLine;
    for (char c : text) {
        if (c == '\r') continue;
        oneLine += c == '\n' ? ' ' : c;
    }
    if (!title.empty()) err_ << title << ": ";
    err_ << oneLine << '\n';
    switch (buttons) {
        case MsgButtons::OK:
            return MsgAnswer::OK;
        case MsgButtons::OKCancel:
            return answerYes ? MsgAnswer::OK : MsgAnswer::Cancel;
        case MsgButtons::YesNo:
        case MsgButtons::YesNoCancel:
            return answerYes ? MsgAnswer::Yes : MsgAnswer::No;
    }
    return MsgAnswer::OK;
}

std::optional<std::string> CliDialogs::InputBox(const std::string&, const std::string&,
                                                const std::string&) {
    if (nextInput_ < inputAnswers.size()) return inputAnswers[nextInput_++];
    return std::nullopt;
}

MsgAnswer CliNotices::MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                             const std::string& title) {
    if (ctx_.verbose && ctx_.err) {
        // The notice without the windows' closing question.
        const std::string question = "\nDo you want to see this message again?";
        std::string notice = text;
        if (notice.size() >= question.size() &&
            notice.compare(notice.size() - question.size(), question.size(), question) == 0) {
            notice.resize(notice.size() - question.size());
        }
        CliDialogs(*ctx_.err).MsgBox(notice, MsgButtons::OK, icon, title);
    }
    return QuietDialogs::MsgBox(text, buttons, icon, title);
}

}  // namespace ostrel::cli
