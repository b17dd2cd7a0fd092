// Help notes, one-shot notices, the contact box, number entry, the trace log, the user guide,
// the demonstration notice and the help line after a change of the list.
#include <gtest/gtest.h>

#include "core/platform/controls.h"
#include "core/platform/settings_store.h"
#include "core/shell/contacts.h"
#include "core/shell/data_entry.h"
#include "core/shell/help_notes.h"
#include "core/shell/list_feedback.h"
#include "core/shell/log.h"
#include "core/shell/new_msg.h"
#include "core/shell/user_guide.h"
#include "core/shell/welcome.h"
#include "support/scripted_dialogs.h"
#include "support/temp_dir.h"

namespace ostrel {
namespace {

using ostrel::testing::ReadFileBytes;
using ostrel::testing::ScriptedDialogs;
using ostrel::testing::ShownBox;
using ostrel::testing::TempDir;
using ostrel::testing::WriteFileBytes;
namespace fs = std::filesystem;

TEST(HelpNotes, ShowEachNoteOnceAndOnlyTheMakerWhileAFormIsOpenInTheirWording) {
    ScriptedDialogs d;
    int form = 0;
    HelpNotes notes(d, [&] { return form; });
    for (int n : {1, 1, 1, 0, -1}) notes.ShowHelpNote(n);
    form = 2;
    for (int n : {3, 0}) notes.ShowHelpNote(n);
    EXPECT_EQ(d.helpNotes, (std::vector<std::string>{
                               "Select paths to Lumbrak3D and to Kelmora for updating glass files "
                               "with new user defined materials",
                               "Ostrel Utility from Harvenz Photonics.", "",
                               "Ostrel Utility from Harvenz Photonics",
                               "Ostrel Utility from Harvenz Photonics"}));
    EXPECT_EQ(
        std::tuple(notes.LastHelpNote(), HelpNotes::NoteText(2).find('\n'), HelpNotes::NoteText(8)),
        std::tuple(0, 96u, ""));
}

TEST(CNewMsg, OnlyADeclinedMessageNeverComesAgainAndADelayedOneWaitsForTheTimer) {
    ScriptedDialogs d;
    MemorySettingsStore settings;
    CNewMsg msg(d, settings);
    const char* text = "Polynomials will be refitted.";
    msg.Display(text, "Import", false, 0, "ImportPolyRefit");  // Yes: nothing stored
    EXPECT_EQ(settings.GetSetting("CNM_NewUserMsg", "ImportPolyRefit", "unset"), "unset");
    d.answers = {MsgAnswer::No};
    msg.Display(text, "Import", false, 0, "ImportPolyRefit");
    ASSERT_EQ(d.boxes.size(), 2u);
    EXPECT_EQ(d.boxes[1], (ShownBox{text + std::string("\nDo you want to see this message again?"),
                                    MsgButtons::YesNo, MsgIcon::Question, "Import"}));
    EXPECT_EQ(settings.GetSetting("CNM_NewUserMsg", "ImportPolyRefit", ""), "True");

    // A later start reads the same settings, and so does the -1 older versions stored.
    CNewMsg later(d, settings);
    later.Display(text, "Import", false, 0, "ImportPolyRefit");
    settings.SaveSetting("CNM_NewUserMsg", "popMeltSchott", "-1");
    later.Display("m", "t", false, 0, "popMeltSchott");
    EXPECT_EQ(d.boxes.size(), 2u);

    d.boxes.clear();
    Timer tmrNewMsg{100};
    msg.UseThisTimer(&tmrNewMsg);
    // The boxes shown, the timer on and its interval.
    auto state = [&] {
        return std::tuple(d.boxes.size(), tmrNewMsg.enabled.get(), tmrNewMsg.interval.get());
    };
    msg.Display("m", "t", true, 1500, "MeltMaker");
    EXPECT_EQ(state(), std::tuple(0u, true, 1500));
    msg.TimerTick();
    EXPECT_EQ(state(), std::tuple(1u, false, 100));
    msg.TimerTick();  // a stray tick shows nothing more
    EXPECT_EQ(d.boxes.size(), 1u);
}

TEST(Contacts, ListsTheDetailsAndOpensTheChosenSite) {
    const std::string t = ContactsText();
    EXPECT_EQ(t.rfind("Harvenz Photonics Ltd\n", 0), 0u);
    EXPECT_TRUE(
        t.ends_with("Click YES to visit the Harvenz Photonics website NOW\n"
                    "Click NO to visit the Lumbrak website NOW"));

    const struct {
        MsgAnswer answer;
        bool browserStarts;
        std::vector<std::string> urls;
        size_t boxes;
    } cases[] = {{MsgAnswer::Yes, true, {"https://www.harvenz.example.com/"}, 1},
                 {MsgAnswer::No, true, {"https://www.lumbrak.example.org/"}, 1},
                 {MsgAnswer::Cancel, true, {}, 1},
                 {MsgAnswer::Yes, false, {"https://www.harvenz.example.com/"}, 2}};
    for (const auto& c : cases) {
        ScriptedDialogs d;
        d.answers = {c.answer};
        d.openUrlResult = c.browserStarts;
        ShowContacts(d);
        EXPECT_EQ(d.urls, c.urls);
        std::vector<ShownBox> boxes{
            {t, MsgButtons::YesNoCancel, MsgIcon::Question, "Harvenz Photonics"}};
        if (c.boxes == 2)
            boxes.push_back({"Sorry: cannot launch your browser at this time.", MsgButtons::OK,
                             MsgIcon::Exclamation, "Harvenz Photonics"});
        EXPECT_EQ(d.boxes, boxes);
    }
}

TEST(DataEntry, RejectedNumberShowsTheInvalidNumberBox) {
    ScriptedDialogs d;
    DataEntry entry(d);
    EXPECT_TRUE(entry.IsValidNumber(" 1.5e-3 "));
    EXPECT_FALSE(entry.IsValidNumber("1.5.2"));
    EXPECT_FALSE(entry.IsValidInteger("40000"));
    EXPECT_TRUE(entry.IsValidLong("40000"));
    const auto box = [](const char* n) {
        return ShownBox{"    '" + std::string(n) + "\nThis is not a valid number: try again.",
                        MsgButtons::OK, MsgIcon::Exclamation, "Invalid Number"};
    };
    EXPECT_EQ(d.boxes, (std::vector<ShownBox>{box("1.5.2"), box("40000")}));
}

TEST(cLog, WritesNothingUntilSwitchedOn) {
    TempDir dir;
    FixedClock clock(45000.0 + (13 * 3600 + 5 * 60 + 9) / 86400.0);
    cLog log(dir.path(), clock);
    log.LogOpen();
    log.LogWrite("x");
    EXPECT_FALSE(std::filesystem::exists(dir / "Lumbrak.Log"));

    WriteFileBytes(dir / "Lumbrak.Log", "old run\n");
    log.SetEnabled(true);
    log.LogOpen();
    log.LogWrite("fit done");
    log.LogClose();
    EXPECT_EQ(ReadFileBytes(dir / "Lumbrak.Log"),
              "Log Opened 13:05:09\nfit done\nLog Closed 13:05:09\n");
}

// A guide with the contents page and the material form's page only (a folder name with a
// blank, as installations have): a form's page when it is there, else the contents. A missing
// guide or browser is said.
TEST(UserGuideTest, FormOpensItsPageOrTheContents) {
    TempDir tmp;
    const fs::path folder = tmp.path() / "doc dir";
    fs::create_directories(folder);
    WriteFileBytes(folder / "OstrelTD.html", "<html/>");
    WriteFileBytes(folder / "material.html", "<html/>");
    std::string url = "file://" + fs::absolute(folder).generic_string() + "/";
    url.replace(url.find("doc dir"), 7, "doc%20dir");
    const std::pair<int, const char*> cases[] = {
        {0, "OstrelTD.html"}, {3, "material.html"}, {7, "OstrelTD.html"}};
    for (const auto& [form, page] : cases) {
        ScriptedDialogs dialogs;
        UserGuide guide(dialogs, [&] { return (folder / "OstrelTD.html").string(); });
        EXPECT_TRUE(guide.Open(form));
        EXPECT_EQ(dialogs.urls, std::vector<std::string>{url + page});
    }

    ScriptedDialogs dialogs;
    UserGuide none(dialogs, [] { return std::string("/nonexistent/OstrelTD.html"); });
    EXPECT_FALSE(none.Open(2));
    dialogs.openUrlResult = false;
    UserGuide guide(dialogs, [&] { return (folder / "OstrelTD.html").string(); });
    EXPECT_FALSE(guide.Open(0));
    ASSERT_EQ(dialogs.boxes.size(), 2u);
    EXPECT_EQ(std::pair(dialogs.boxes[0].text, dialogs.boxes[1].text),
              std::pair(std::string(UserGuide::kNotFound),
                        std::string("Sorry: cannot launch your browser at this time.")));
}

// A demonstration installation (empty stand-in programs) is named once per folder; a real
// one never.
TEST(WelcomeDemoNoticeTest, SaidOnceForADemoInstallationOnly) {
    TempDir tmp;
    for (const char* p : {"Lumbrak", "Sextane", "Kelmora"})
        fs::create_directories(tmp.path() / "demo" / p);
    WriteFileBytes(tmp.path() / "demo" / "Lumbrak" / "Lumbrak3D.EXE", "");
    fs::create_directories(tmp.path() / "real" / "Lumbrak");
    WriteFileBytes(tmp.path() / "real" / "Lumbrak" / "Lumbrak3D.EXE", "MZ");
    ScriptedDialogs dialogs;
    MemorySettingsStore settings;
    ManageForms forms(dialogs, {});
    Welcome welcome(forms, dialogs, settings, [] { return 0; });
    EXPECT_FALSE(welcome.ShowDemoNotice((tmp.path() / "real" / "Lumbrak").string() + "/"));
    EXPECT_FALSE(welcome.ShowDemoNotice(""));
    const std::string demoLumbrak = (tmp.path() / "demo" / "Lumbrak").string() + "/";
    EXPECT_TRUE(welcome.ShowDemoNotice(demoLumbrak));
    EXPECT_FALSE(welcome.ShowDemoNotice(demoLumbrak));
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_NE(dialogs.boxes[0].text.find((tmp.path() / "demo").string()), std::string::npos);
    EXPECT_TRUE(welcome.pnlWelcome.visible);
}

MaterialRecord Named(const char* name, double date) {
    MaterialRecord rec;
    rec.General.GlassName.Set(name);
    rec.DateChanged = date;
    return rec;
}

// The help line after a change of the list: what was added, saved again or deleted.
TEST(ListFeedbackTest, SaysWhatTheChangeDid) {
    ListFeedback feedback;
    std::vector<MaterialRecord> list{Named("F2", 1)};
    EXPECT_EQ(feedback.Update(list), "") << "the first list is taken as it is";
    list.push_back(Named("N-BK7", 2));
    EXPECT_EQ(feedback.Update(list), "N-BK7 added: 2 materials in the list");
    EXPECT_EQ(feedback.Update(list), "");
    list[0].DateChanged = 3;
    EXPECT_EQ(feedback.Update(list), "F2 changed: 2 materials in the list");
    list.push_back(Named("A", 4));
    list.push_back(Named("B", 4));
    EXPECT_EQ(feedback.Update(list), "2 materials added: 4 materials in the list");
    list = {Named("N-BK7", 2)};
    EXPECT_EQ(feedback.Update(list), "3 materials deleted: 1 material in the list");
}

}  // namespace
}  // namespace ostrel
