#pragma once
// A Dialogs that records every box and answers from queues, for tests.
#include <deque>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "core/platform/dialogs.h"

namespace ostrel::testing {

struct ShownBox {
    std::string text;
    MsgButtons buttons = MsgButtons::OK;
    MsgIcon icon = MsgIcon::None;
    std::string title;
    bool operator==(const ShownBox&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const ShownBox& b) {
        return out << "box \"" << b.text << "\" buttons " << int(b.buttons) << " icon "
                   << int(b.icon) << " title \"" << b.title << "\"";
    }
};

class ScriptedDialogs : public Dialogs {
  public:
    MsgAnswer MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                     const std::string& title) override;
    std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                        const std::string& proposal) override;
    std::optional<std::string> FileOpen(const FileDialogSpec& spec) override;
    std::optional<std::string> FileSave(const FileDialogSpec& spec) override {
        return FileOpen(spec);
    }
    // Ends on the next of `filters` (1-based), or on the filter it opened with when none is
    // queued.
    std::optional<FileChoice> FileOpenFiltered(const FileDialogSpec& spec) override;
    void SetBusy(bool busy) override {
        busyDepth += busy ? 1 : -1;
        everBusy = everBusy || busy;
    }
    void HelpNote(const std::string& text, bool) override { helpNotes.push_back(text); }
    bool OpenUrl(const std::string& url) override {
        urls.push_back(url);
        return openUrlResult;
    }

    // Answers given in order; with none queued a box gets its first button (OK or Yes),
    // an input box is cancelled and a file dialog is cancelled.
    std::deque<MsgAnswer> answers;
    std::deque<std::optional<std::string>> inputs;
    std::deque<std::optional<std::string>> files;
    std::deque<int> filters;
    bool openUrlResult = true;

    std::vector<ShownBox> boxes;
    std::vector<std::string> prompts;    // input box prompts, in order
    std::vector<std::string> proposals;  // what each input box proposed
    std::vector<std::string> helpNotes;
    std::vector<std::string> urls;
    std::vector<FileDialogSpec> fileDialogs;
    int busyDepth = 0;
    bool everBusy = false;
};

}  // namespace ostrel::testing
