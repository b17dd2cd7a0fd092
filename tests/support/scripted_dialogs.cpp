#include "support/scripted_dialogs.h"

namespace ostrel::testing {

MsgAnswer ScriptedDialogs::MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                                  const std::string& title) {
    boxes.push_back({text, buttons, icon, title});
    if (!answers.empty()) {
        MsgAnswer a = answers.front();
        answers.pop_front();
        return a;
    }
    return (buttons == MsgButtons::YesNo || buttons == MsgButtons::YesNoCancel) ? MsgAnswer::Yes
                                                                                : MsgAnswer::OK;
}

std::optional<std::string> ScriptedDialogs::InputBox(const std::string& prompt, const std::string&,
                                                     const std::string& proposal) {
    prompts.push_back(prompt);
    proposals.push_back(proposal);
    if (inputs.empty()) return std::nullopt;
    auto a = inputs.front();
    inputs.pop_front();
    return a;
}

std::optional<std::string> ScriptedDialogs::FileOpen(const FileDialogSpec& spec) {
    fileDialogs.push_back(spec);
    if (files.empty()) return std::nullopt;
    auto a = files.front();
    files.pop_front();
    return a;
}

std::optional<FileChoice> ScriptedDialogs::FileOpenFiltered(const FileDialogSpec& spec) {
    std::optional<std::string> path = FileOpen(spec);
    int filter = spec.filterIndex;
    if (!filters.empty()) {
        filter = filters.front();
        filters.pop_front();
    }
    if (!path) return std::nullopt;
    return FileChoice{std::move(*path), filter};
}

std::optional<std::string> ScriptedDialogs::FileSave(const FileDialogSpec& spec) {
    return FileOpen(spec);
}

void ScriptedDialogs::SetBusy(bool busy) {
    busyDepth += busy ? 1 : -1;
    everBusy = everBusy || busy;
}

void ScriptedDialogs::HelpNote(const std::string& text, bool) {
    helpNotes.push_back(text);
}

bool ScriptedDialogs::OpenUrl(const std::string& url) {
    urls.push_back(url);
    return openUrlResult;
}

}  // namespace ostrel::testing
