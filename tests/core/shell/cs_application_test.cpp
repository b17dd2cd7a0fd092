#include "core/shell/cs_application.h"
#include "core/shell/cs_window.h"
#include "core/shell/ini_file.h"

#include <gtest/gtest.h>

#include <functional>

#include "core/shell/help_notes.h"
#include "support/scripted_dialogs.h"
#include "support/temp_dir.h"

namespace ostrel {
namespace {

using ostrel::testing::ReadFileBytes;
using ostrel::testing::ScriptedDialogs;
using ostrel::testing::ShownBox;
using ostrel::testing::TempDir;
using ostrel::testing::WriteFileBytes;

class CSApplicationTest : public ::testing::Test {
  protected:
    TempDir dir;
    ScriptedDialogs dialogs;
    FixedClock clock{45000.0};
    ErrorDisplayer errors{dir.path().string(), dialogs, clock};
    IniFile ini{dir.path()};
    CSApplication app{dir.path().string(), ini, errors};
    const ScreenSize screen{1920, 1080};
    const FormRect present{5, 5, 400, 300};

    std::string File() const { return ReadFileBytes(dir / "OstrelTD.INI"); }
    void Write(const std::string& bytes) const { WriteFileBytes(dir / "OstrelTD.INI", bytes); }
    // Top, left, width and height as the file's keys name them.
    void Store(const std::string& form, const std::array<const char*, 4>& values) {
        const char* keys[] = {"fTop", "fLeft", "fWidth", "fHeight"};
        for (int i = 0; i < 4; ++i) ini.IniPutText("FormPosNonChild_" + form, keys[i], values[i]);
    }
};

TEST_F(CSApplicationTest, PathEndsInOneSeparatorTitlesCarryTheVersionAndTheGuideIsFound) {
    EXPECT_EQ(app.Path(), dir.path().string() + "/");
    CSApplication again(dir.path().string() + "/", ini, errors);
    EXPECT_EQ(again.Path(), dir.path().string() + "/");
    EXPECT_EQ(std::tuple(app.HelpFile(), app.TitleVer(), app.TitleVerShort(), app.Version()),
              std::tuple(app.Path() + "OstrelTD.chm", "OstrelTD 3.0.1", "OstrelTD 3.0",
                         "Version: 3.0.1"));

    // The html guide is found in any case of its name.
    const std::string before = app.HelpFile();
    EXPECT_FALSE(SetHelpFile(app, dir.path().string()));
    EXPECT_EQ(app.HelpFile(), before);

    WriteFileBytes(dir / "ostreltd.HTML", "<html></html>");
    EXPECT_TRUE(SetHelpFile(app, dir.path().string()));
    EXPECT_EQ(app.HelpFile(), (dir / "ostreltd.HTML").string());
}

TEST_F(CSApplicationTest, SaveSwapsWidthAndHeightKeys) {
    app.ThisFormPosnSave("frm4Import", FormRect{30, 40, 800, 600});
    EXPECT_EQ(
        File(),
        "[FormPosNonChild_frm4Import]\r\nfTop=40\r\nfLeft=30\r\nfWidth=600\r\nfHeight=800\r\n");
    EXPECT_EQ(app.ThisFormPosnGet("frm4Import", false, false, present, screen),
              (FormRect{30, 40, 800, 600}));
}

// Stored positions (top, left, height, width as the file keeps them) against the screen.
TEST_F(CSApplicationTest, PositionGetKeepsTheFormOnTheScreen) {
    const struct {
        const char* name;
        const char* top;  // nullptr: no section stored
        const char *left, *fWidth, *fHeight;
        bool mainForm, posnOnly;
        FormRect expected;
    } cases[] = {
        {"NoSectionCentred", nullptr, "", "", "", false, false, {760, 390, 400, 300}},
        {"AsStored", "100", "200", "500", "700", false, false, {200, 100, 700, 500}},
        {"BlankTopIsNoPosition", " ", "10", "10", "10", false, false, {760, 390, 400, 300}},
        {"NegativeTopLeft", "-40", "-3", "500", "700", false, false, {0, 0, 700, 500}},
        {"TooWideMain", "10", "100", "500", "3000", true, false, {100, 10, 1728, 500}},
        {"TooTallMain", "10", "100", "2000", "700", true, false, {100, 10, 700, 972}},
        {"TooWidePulledBack", "10", "1500", "500", "3000", false, false, {960, 10, 960, 500}},
        {"PastTheBottom", "900", "0", "500", "700", false, false, {0, 580, 700, 500}},
        {"PositionOnly", "900", "1500", "500", "700", false, true, {1220, 580, 400, 300}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string form = std::string("frm") + c.name;
        if (c.top) Store(form, {c.top, c.left, c.fWidth, c.fHeight});
        EXPECT_EQ(app.HasFormPosn(form), c.top && *c.top != ' ');
        EXPECT_EQ(app.ThisFormPosnGet(form, c.mainForm, c.posnOnly, present, screen), c.expected);
    }
}

TEST_F(CSApplicationTest, ErrorDisplayGoesToTheLogAndABox) {
    app.ErrorDisplay("Could not save", "disk full", 61);
    EXPECT_EQ(
        dialogs.boxes,
        (std::vector<ShownBox>{{"Could not save", MsgButtons::OK, MsgIcon::Exclamation, ""}}));
    EXPECT_NE(ReadFileBytes(dir / "ERROR.LOG").find("  Error: [61]: disk full"), std::string::npos);
}

// The settings file of window positions.
TEST_F(CSApplicationTest, IniWritesSectionsAndKeysAsWindowsTextAndAddsKeysAtTheirSectionsEnd) {
    EXPECT_TRUE(ini.IniPutText("FormPosNonChild_frm2Manage", "fTop", "10"));
    EXPECT_TRUE(ini.IniPutText("FormPosNonChild_frm2Manage", "fLeft", "20"));
    EXPECT_TRUE(ini.IniPutText("FormPosNonChild_frmMainMDI", "fTop", "0"));
    EXPECT_TRUE(ini.IniPutText("formposnonchild_FRM2MANAGE", "FTOP", "15"));  // any case
    EXPECT_EQ(File(),
              "[FormPosNonChild_frm2Manage]\r\nfTop=15\r\nfLeft=20\r\n\r\n"
              "[FormPosNonChild_frmMainMDI]\r\nfTop=0\r\n");
    // A key new to a section of a written file goes at the end of that section.
    Write("; positions\r\n[A]\r\nx=1\r\n\r\n[B]\r\ny=2\r\n");
    ASSERT_TRUE(ini.IniPutText("A", "z", "3"));
    EXPECT_EQ(File(), "; positions\r\n[A]\r\nx=1\r\nz=3\r\n\r\n[B]\r\ny=2\r\n");
}

TEST_F(CSApplicationTest, IniReadsValuesOfAHandWrittenFileAndNoFileAsEmpty) {
    std::string content =
        "[Pos]\nfTop = -12px\nfLeft=abc\nName=  two words  \nQuoted=\" q \"\n[Other]\nfTop=99\n"
        "long=" +
        std::string(250, 'x') + "\nnul=ab";
    content += std::string("\0c\0\0", 4);
    Write(content + "\n");
    EXPECT_EQ((std::vector<int>{ini.IniGetInt("Pos", "fTop"), ini.IniGetInt("pos", "FLEFT"),
                                ini.IniGetInt("Pos", "missing"), ini.IniGetInt("Other", "fTop")}),
              (std::vector<int>{-12, 0, 0, 99}));
    // Text is cut at 200 characters and NULs become blanks.
    EXPECT_EQ((std::vector<std::string>{
                  ini.IniGetText("Pos", "Name"), ini.IniGetText("Pos", "Quoted"),
                  ini.IniGetText("Pos", "missing"), ini.IniGetText("Missing", "fTop"),
                  ini.IniGetText("Other", "long"), ini.IniGetText("Other", "nul")}),
              (std::vector<std::string>{"two words", "q", "", "", std::string(200, 'x'), "ab c"}));

    IniFile absent(dir.path() / "absent");
    EXPECT_EQ(absent.IniGetText("S", "k"), "");
    EXPECT_EQ(absent.IniGetInt("S", "k"), 0);
    EXPECT_FALSE(absent.IniPutText("S", "k", "v"));  // its folder does not exist
}

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
        {"CutKeepsTextWhenCopyFails", &CSWindow::EditCut, Fault::Set, kSetFailed, "n=1.5168", ""},
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
        std::vector<ShownBox> boxes;
        if (c.failure)
            boxes.push_back({c.failure, MsgButtons::OK, MsgIcon::Exclamation, "CApplication"});
        EXPECT_EQ(dialogs.boxes, boxes);
        EXPECT_EQ(entry.Text(), c.entryAfter);
        EXPECT_EQ(clip.text.value_or("<none>"), c.clipboardAfter);
    }
}

}  // namespace
}  // namespace ostrel
