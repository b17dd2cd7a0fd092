#include "core/shell/cs_window.h"

#include <gtest/gtest.h>

#include <functional>

#include "support/scripted_dialogs.h"

namespace ostrel {
namespace {

using ostrel::testing::ScriptedDialogs;

enum class Fault { None, Clear, Set, NoClipText, ReadOnly };

// Holds "1.6" unless told it can't be read; Clear or SetText fail when told so.
struct FakeClipboard : ClipboardPort {
    Fault fault = Fault::None;
    std::optional<std::string> text = std::string("1.6");
    bool Clear() override {
        if (fault == Fault::Clear) return false;
        text = std::string();
        return true;
    }
    bool SetText(const std::string& t) override {
        if (fault == Fault::Set) return false;
        text = t;
        return true;
    }
    std::optional<std::string> GetText() override {
        return fault == Fault::NoClipText ? std::nullopt : text;
    }
};

// An entry holding "n=1.5168", with "1.5168" selected.
struct FakeEntry : EditTarget {
    std::string before = "n=", selected = "1.5168";
    bool takesText = true;
    std::string SelectedText() const override { return selected; }
    bool ReplaceSelection(const std::string& t) override {
        if (!takesText) return false;
        before += t;
        selected.clear();
        return true;
    }
    std::string Text() const { return before + selected; }
};

const char* const kSetFailed = "Could not set text from active control to clipboard.";
const char* const kPasteFailed = "Could not paste text from clipboard to active control.";

TEST(CSWindowTest, EditCommandsAndTheirFailureBoxes) {
    const struct {
        const char* label;
        std::function<bool(CSWindow&, FakeEntry&)> command;
        Fault fault;
        const char* failure;         // the box shown, or nullptr
        const char* entryAfter;      // the entry's text afterwards
        const char* clipboardAfter;  // the clipboard's text afterwards
    } cases[] = {
        {"Copy", &CSWindow::EditCopy, Fault::None, nullptr, "n=1.5168", "1.5168"},
        {"CopyClearFails", &CSWindow::EditCopy, Fault::Clear, "Could not clear clipboard.",
         "n=1.5168", "1.6"},
        {"CopySetFails", &CSWindow::EditCopy, Fault::Set, kSetFailed, "n=1.5168", ""},
        {"Cut", &CSWindow::EditCut, Fault::None, nullptr, "n=", "1.5168"},
        {"CutKeepsTextWhenCopyFails", &CSWindow::EditCut, Fault::Set, kSetFailed, "n=1.5168", ""},
        {"Paste", &CSWindow::EditPaste, Fault::None, nullptr, "n=1.6", "1.6"},
        {"PasteUnreadableClipboard", &CSWindow::EditPaste, Fault::NoClipText, kPasteFailed,
         "n=1.5168", "1.6"},
        {"PasteIntoReadOnly", &CSWindow::EditPaste, Fault::ReadOnly, kPasteFailed, "n=1.5168",
         "1.6"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        ScriptedDialogs dialogs;
        FakeClipboard clip;
        clip.fault = c.fault;
        FakeEntry entry;
        entry.takesText = c.fault != Fault::ReadOnly;
        CSWindow w(clip, dialogs);
        EXPECT_EQ(c.command(w, entry), c.failure == nullptr);
        if (c.failure) {
            ASSERT_EQ(dialogs.boxes.size(), 1u);
            EXPECT_EQ(dialogs.boxes[0].text, c.failure);
            EXPECT_EQ(dialogs.boxes[0].title, "CApplication");
        } else {
            EXPECT_TRUE(dialogs.boxes.empty());
        }
        EXPECT_EQ(entry.Text(), c.entryAfter);
        EXPECT_EQ(clip.text.value_or("<none>"), c.clipboardAfter);
    }
}

}  // namespace
}  // namespace ostrel
