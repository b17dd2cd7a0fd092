#include "support/scripted_dialogs.h"

namespace ostrel::testing {
namespace {

// The front of the queue, taken off it, or the fallback when it is empty.
template <typename T, typename F>
T Next(std::deque<T>& queue, F fallback) {
    if (queue.empty()) return T(fallback);
    T front = std::move(queue.front());
    queue.pop_front();
    return front;
}

}  // namespace

MsgAnswer ScriptedDialogs::MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                                  const std::string& title) {
    boxes.push_back({text, buttons, icon, title});
    const bool yes = buttons == MsgButtons::YesNo || buttons == MsgButtons::YesNoCancel;
    return Next(answers, yes ? MsgAnswer::Yes : MsgAnswer::OK);
}

std::optional<std::string> ScriptedDialogs::InputBox(const std::string& prompt, const std::string&,
                                                     const std::string& proposal) {
    prompts.push_back(prompt);
    proposals.push_back(proposal);
    return Next(inputs, std::nullopt);
}

std::optional<std::string> ScriptedDialogs::FileOpen(const FileDialogSpec& spec) {
    fileDialogs.push_back(spec);
    return Next(files, std::nullopt);
}

std::optional<FileChoice> ScriptedDialogs::FileOpenFiltered(const FileDialogSpec& spec) {
    std::optional<std::string> path = FileOpen(spec);
    const int filter = Next(filters, spec.filterIndex);
    if (!path) return std::nullopt;
    return FileChoice{std::move(*path), filter};
}

}  // namespace ostrel::testing
