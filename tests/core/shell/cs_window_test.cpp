#include "core/shell/cs_window.h"

#include <gtest/gtest.h>

#include "support/scripted_dialogs.h"

namespace ostrel {
namespace {

using ostrel::testing::ScriptedDialogs;

struct FakeClipboard : ClipboardPort {
    bool clearWorks = true, setWorks = true;
    std::optional<std::string> text = std::string();
    bool Clear() override {
        if (clearWorks) text = std::string();
        return clearWorks;
    }
    bool SetText(const std::string& t) override {
        if (setWorks) text = t;
        return setWorks;
    }
    std::optional<std::string> GetText() override { return text; }
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

enum class Command { Copy, Cut, Paste };

struct EditCase {
    const char* label;
    Command command;
    bool clearWorks, setWorks, clipHasText, entryTakesText;
    const char* failure;         // the box shown, or nullptr
    const char* entryAfter;      // the entry's text afterwards
    const char* clipboardAfter;  // the clipboard's text afterwards
};

class CSWindowTest : public ::testing::TestWithParam<EditCase> {};

TEST_P(CSWindowTest, CommandAndFailureBox) {
    const EditCase& c = GetParam();
    ScriptedDialogs dialogs;
    FakeClipboard clip;
    clip.clearWorks = c.clearWorks;
    clip.setWorks = c.setWorks;
    clip.text = c.clipHasText ? std::optional<std::string>("1.6") : std::nullopt;
    FakeEntry entry;
    entry.takesText = c.entryTakesText;
    CSWindow w(clip, dialogs);

    bool done = false;
    switch (c.command) {
        case Command::Copy:
            done = w.EditCopy(entry);
            break;
        case Command::Cut:
            done = w.EditCut(entry);
            break;
        case Command::Paste:
            done = w.EditPaste(entry);
            break;
    }
    EXPECT_EQ(done, c.failure == nullptr);
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

INSTANTIATE_TEST_SUITE_P(
    Edit, CSWindowTest,
    ::testing::Values(
        EditCase{"Copy", Command::Copy, true, true, true, true, nullptr, "n=1.5168", "1.5168"},
        EditCase{"CopyClearFails", Command::Copy, false, true, true, true,
                 "Could not clear clipboard.", "n=1.5168", "1.6"},
        EditCase{"CopySetFails", Command::Copy, true, false, true, true,
                 "Could not set text from active control to clipboard.", "n=1.5168", ""},
        EditCase{"Cut", Command::Cut, true, true, true, true, nullptr, "n=", "1.5168"},
        EditCase{"CutKeepsTextWhenCopyFails", Command::Cut, true, false, true, true,
                 "Could not set text from active control to clipboard.", "n=1.5168", ""},
        EditCase{"Paste", Command::Paste, true, true, true, true, nullptr, "n=1.6", "1.6"},
        EditCase{"PasteUnreadableClipboard", Command::Paste, true, true, false, true,
                 "Could not paste text from clipboard to active control.", "n=1.5168", "<none>"},
        EditCase{"PasteIntoReadOnly", Command::Paste, true, true, true, false,
                 "Could not paste text from clipboard to active control.", "n=1.5168", "1.6"}),
    [](const auto& info) { return std::string(info.param.label); });

}  // namespace
}  // namespace ostrel
