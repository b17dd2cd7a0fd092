#include "core/shell/user_guide.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "core/platform/settings_store.h"
#include "core/shell/list_feedback.h"
#include "core/shell/welcome.h"
#include "support/scripted_dialogs.h"
#include "support/temp_dir.h"

namespace ostrel::testing {
namespace {

namespace fs = std::filesystem;

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
        ASSERT_EQ(dialogs.urls.size(), 1u);
        EXPECT_EQ(dialogs.urls[0], url + page);
    }

    ScriptedDialogs dialogs;
    UserGuide none(dialogs, [] { return std::string("/nonexistent/OstrelTD.html"); });
    EXPECT_FALSE(none.Open(2));
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text, UserGuide::kNotFound);
    dialogs.openUrlResult = false;
    UserGuide guide(dialogs, [&] { return (folder / "OstrelTD.html").string(); });
    EXPECT_FALSE(guide.Open(0));
    ASSERT_EQ(dialogs.boxes.size(), 2u);
    EXPECT_EQ(dialogs.boxes[1].text, "Sorry: cannot launch your browser at this time.");
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
    rec.General.Source.Set("TEST");
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
}  // namespace ostrel::testing
