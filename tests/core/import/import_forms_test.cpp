// The import and backup forms: grid texts, refit labels, the add checks, rename, settings,
// the notice, and the backup file name and messages.
#include <gtest/gtest.h>

#include "core/import/frm5_export.h"
#include "core/import/import_fixture.h"
#include "core/material/material_record_codec.h"
#include "core/optics/derived_data.h"
#include "core/optics/glass_code.h"

namespace ostrel::testing {
namespace {

// A GLC read fills the grid and the settings. The dialog opens with the filter of the last
// read, and the filter the user ends with decides how the file is read, whatever its name.
TEST_F(ImportForm, ReadFillsGridAndSettingsAndTheFilterDecides) {
    const struct {
        std::string file;
        int filter;     // chosen by the user
        int opensWith;  // the filter the dialog opened with
        int staged;
    } steps[] = {
        {Data("sample.glc"), frm4Import::kGLC, frm4Import::kGLZ, 2},
        {Data("chengdu.agf"), frm4Import::kAGF, frm4Import::kGLC, 1},
        {Data("chengdu.agf"), 0, frm4Import::kAGF, 1},  // kept as it opened
        {Data("sample.glc"), frm4Import::kAGF, frm4Import::kAGF, 0},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.file + " " + std::to_string(step.filter));
        dialogs.files.push_back(step.file);
        if (step.filter != 0) dialogs.filters.push_back(step.filter);
        form.comImportClick();
        EXPECT_EQ(dialogs.fileDialogs.back().filterIndex, step.opensWith);
        EXPECT_EQ(form.ImportCount(), step.staged);
        if (dialogs.fileDialogs.size() > 1) continue;
        EXPECT_EQ(dialogs.fileDialogs[0].initialPath, "/app/");
        EXPECT_TRUE(form.ssGlasses.Column(frm4Import::kColRefit).hidden);  // nothing refitted
        EXPECT_TRUE(dialogs.boxes.empty());                                // and no notice
        EXPECT_EQ(settings.GetSetting("B4Import", "B4ImportLastType", ""), "4");
        EXPECT_EQ(settings.GetSetting("B4Import", "B4ImpPathOslo_GLC", ""),
                  std::filesystem::path(Data("sample.glc")).parent_path().string());
        EXPECT_EQ(form.form.caption.get(), "Import material data from text file: sample.glc");
    }
    EXPECT_EQ(settings.GetSetting("B4Import", "B4ImportLastType", ""), "5");
}

TEST_F(ImportForm, RefitLabelsAndNotice) {
    TempDir files;
    WriteFileBytes(files / "two.agf",
                   "NM H1 3 0 1.5 60 0 1\nCD 1.5 0.004 0 0.0001 0 0\nLD 0.4 1.0\n"
                   "NM H2 3 0 1.5 60 0 1\nCD 1.5 0.004 0 0.0001 0 0\nLD 0.4 1.0\n"
                   "NM S 1 0 1.5 60 0 1\nCD 2.27 -0.0101 0.0106 0.00017 -2e-6 1e-6\n"
                   "LD 0.4 1.0\n");
    form.ImportFile((files / "two.agf").string(), frm4Import::kAGF);
    EXPECT_EQ(form.lblReFit.caption.get(),
              "2 glasses have been refited to index polynomial[s] used in Lumbrak.  The average "
              "error is in the last column.");
    EXPECT_FALSE(form.ssGlasses.Column(frm4Import::kColRefit).hidden);
    ASSERT_EQ(dialogs.boxes.size(), 1u);  // the notice, at once without a timer
    EXPECT_EQ(dialogs.boxes[0].text.substr(0, 20), frm4Import::kRefitNotice.substr(0, 20));
}

// SF5 of the sample disagrees with its file: the add commands ask first. Yes adds it with
// the others, No leaves it out, Cancel adds nothing.
TEST_F(ImportForm, CheckGlassesAreAddedOnlyWhenTheUserSaysSo) {
    const struct {
        MsgAnswer answer;
        int added;
    } cases[] = {{MsgAnswer::Yes, 2}, {MsgAnswer::No, 1}, {MsgAnswer::Cancel, 0}};
    for (const auto& c : cases) {
        TempDir own;
        GlassesList fresh{own.path().string(), errors};
        frm4Import f{fresh, dialogs, settings, newMsg, "/app/"};
        f.ImportFile(Data("sample.glc"), frm4Import::kGLC);
        dialogs.boxes.clear();
        dialogs.answers.push_back(c.answer);
        f.comAddAllClick();
        ASSERT_FALSE(dialogs.boxes.empty());
        EXPECT_NE(dialogs.boxes[0].text.find("\n\nSF5/SCHOTT\n\n"), std::string::npos);
        EXPECT_EQ(dialogs.boxes[0].buttons, MsgButtons::YesNoCancel);
        EXPECT_EQ(fresh.CustomCount(), c.added);
    }
}

TEST_F(ImportForm, CatalogueNameBlocksEverythingAndRenameFreesIt) {
    form.ImportFile(Data("sample.glc"), frm4Import::kGLC);
    // One staged glass already in the list: answering No adds nothing.
    ASSERT_TRUE(list.ListAdd(form.ImportList()[0], false));
    dialogs.answers.push_back(MsgAnswer::Yes);  // SF5 is marked Check: add it as well
    dialogs.answers.push_back(MsgAnswer::No);
    EXPECT_FALSE(form.AddRange(1, 2));
    EXPECT_EQ(list.CustomCount(), 1);
    EXPECT_EQ(dialogs.boxes.back().text,
              "The following materials are already in your collection:\n\nN-BK7/SCHOTT\n\n"
              "Do you want to overwrite the existing data?");
    // A source the files cannot hold as typed is refused and leaves the staged sources.
    dialogs.boxes.clear();
    dialogs.inputs = {"Lab Ω", "  Mine é "};
    form.comRenameSourceClick();
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].title, "Invalid Source");
    EXPECT_EQ(form.ImportList()[0].General.Source.Text(), "SCHOTT");
    form.comRenameSourceClick();
    EXPECT_EQ(form.ssGlasses.Text(2, 2), "Mine é");
    EXPECT_EQ(form.ImportList()[1].General.Source.Text(), "Mine é");
    form.comAddAllClick();
    EXPECT_EQ(list.CustomCount(), 3);
}

// A file that cannot be read says where and why, and one whose glasses are all passed over
// says why, GLC as AGF; a GLA file says it in its own words. A damaged field is shown cut,
// its control characters as "?". Nothing is staged.
TEST_F(ImportForm, FailedReadMessagesSayWhereAndWhy) {
    const std::string failed = "Failure in file read ",
                      none = "Unable to import any glasses from file ";
    const struct {
        std::string file;     // in the test's folder, or of the shared data with "shared:"
        std::string content;  // none: no such file
        int type;
        std::string box;  // the start of the message, its file name and "!\r\n" follow
        std::string why;  // empty: no such file; of a shared file, shown below the grid too
    } cases[] = {
        {"missing.glz", "", frm4Import::kGLZ, failed, ""},
        {"bad.glz",
         "Harvenz Photonics - Ostrel  - text file V2\r\n#-- Material Data Start --\r\n"
         "#     -- General --\r\n\"X\",\"S\"\r\n2,3x0,2500,3.5\r\n",
         frm4Import::kGLZ, failed, "Line 5: \"3x0\" is no number."},
        {"empty.glc", "", frm4Import::kGLC, failed, "The file is empty."},
        {"long.gla", "\"Z\",8,\"S\",0,0\r\n0,\x01" + std::string(60, 'x') + "\r\n",
         frm4Import::kGLA, none, "Line 2: \"?" + std::string(29, 'x') + "...\" is no number."},
        {"notrans.gla",
         "\"Z\",8,\"S\",0,0\r\n0,0\r\n400,700,1\r\n1,0,0,0,0,0,0,0,0,0,0,0,0,0\r\n0,1,10\r\n",
         frm4Import::kGLA, none, "Transmission row count 0 out of range."},
        {"shared:glc/hikari.glc", "-", frm4Import::kGLC, none,
         "150 glasses were passed over (J-BAF10, J-BAF11, J-BAF12, ...): formula 6 has no "
         "stored form."},
        {"shared:agf/2020/NIKON.agf", "-", frm4Import::kAGF, none,
         "12 glasses were skipped: their AGF formula is not supported."},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        const bool shared = c.file.rfind("shared:", 0) == 0;
        if (shared && !std::filesystem::exists(Shared(c.file.substr(7)))) continue;
        const std::string path = shared ? Shared(c.file.substr(7)) : (dir / c.file).string();
        if (!shared && !c.why.empty()) WriteFileBytes(dir / c.file, c.content);
        dialogs.boxes.clear();
        form.ImportFile(path, c.type);
        ASSERT_EQ(dialogs.boxes.size(), 1u);
        EXPECT_EQ(dialogs.boxes.back().text,
                  c.box + path + "!\r\n" +
                      (c.why.empty() ? "No such file or directory: " + path + "." : c.why));
        EXPECT_EQ(form.ImportCount(), 0);
        if (shared) {
            EXPECT_EQ(form.lblSkipped.caption.get(), c.why);
        }
    }
    // With nothing staged, adding asks to open a file.
    dialogs.boxes.clear();
    dialogs.answers.push_back(MsgAnswer::No);
    form.comAddAllClick();
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes.back().text,
              "No materials have been imported, so none can be added to the main list!\n\n"
              "Do you wish to open a material text file now?");
    EXPECT_EQ(dialogs.boxes.back().buttons, MsgButtons::YesNo);
}

// The form stages glasses with their transmission tables left for later; a glass reviewed
// from the grid is the record a complete read gives.
TEST_F(ImportForm, ReviewedGlassLeavesStagingComplete) {
    const std::string file = Data("chengdu.agf");
    std::vector<MaterialRecord> whole = ReadCatalogue(file).recs;
    ASSERT_EQ(whole.size(), 1u);
    ASSERT_FALSE(whole[0].Other.CC.Text().empty());  // four rows: the colour code is set
    // It leaves with the numbers derived from its polynomial.
    UpdateDerivedData(whole[0]);
    UpdateGlassCode(whole[0]);
    const MaterialImage want = ToBytes(whole[0]);

    std::vector<MaterialImage> reviewed;
    frm4Import f(list, dialogs, settings, newMsg, "/app/",
                 {[&](const MaterialRecord& r) { reviewed.push_back(ToBytes(r)); }, nullptr,
                  nullptr, nullptr});
    f.ImportFile(file, frm4Import::kAGF);
    f.ssGlassesDblClick(1, 1);
    ASSERT_EQ(reviewed.size(), 1u);
    EXPECT_EQ(reviewed[0], want);
    // A double click reviews the glass of its row.
    f.ImportFile(Data("sample.glc"), frm4Import::kGLC);
    f.ssGlassesDblClick(1, 2);
    EXPECT_EQ(reviewed.back(), ToBytes(f.ImportList()[1]));
    EXPECT_EQ(f.SelectedRow(), 2);
}

TEST(Bas4ImportKeys, PathKeys) {
    EXPECT_EQ((Strings{Bas4Import::PathKey(1), Bas4Import::PathKey(5), Bas4Import::PathKey(6)}),
              (Strings{"B4ImpPathOstrelNew_GLZ", "B4ImpPathZemax_AGF", ""}));
}

class ExportForm : public ImportForm {
  protected:
    frm5Export backup{list, dialogs, clock};
};

TEST_F(ExportForm, EmptyListMessageThenDefaultNameAndWrite) {
    backup.Display();
    backup.comExportAllClick();
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text, "There are no glasses to backup!");
    EXPECT_TRUE(dialogs.fileDialogs.empty());
    MaterialRecord a = ClearedMaterialRecord();
    a.General.GlassName.Set("A*B");
    a.General.Source.Set("S");
    MaterialRecord b = a;
    b.General.GlassName.Set("C");
    b.Melt.MeltFlag = -1;
    list.ListAdd(a, false);
    list.ListAdd(b, false);
    backup.Display();
    EXPECT_EQ(backup.DefaultFileName(1, 1), "A-B.GLZ");
    EXPECT_EQ(backup.DefaultFileName(1, 2), "");
    const std::string out = (dir / "out.glz").string();
    dialogs.files.push_back(out);
    backup.ssGlassesCurr.SetActiveCell(1, 1);
    backup.comExportSelClick();
    EXPECT_EQ(dialogs.fileDialogs.back().initialPath, "A-B.GLZ");
    EXPECT_EQ(dialogs.fileDialogs.back().title, "Exporting selected glass data to text file");
    const std::string image = ReadFileBytes(out);
    EXPECT_NE(image.find("\"A*B\",\"S\""), std::string::npos);
    EXPECT_EQ(image.find("\"C\""), std::string::npos);
    EXPECT_EQ(dialogs.helpNotes.back(), "A*B backed up to " + out);
}

TEST(ImportFileType, FollowsTheExtensionInAnyCase) {
    const std::tuple<const char*, int, int> cases[] = {
        {"/x/nikon.agf ", 1, frm4Import::kAGF}, {"a.Glc", 1, frm4Import::kGLC},
        {"a.gls", 1, frm4Import::kGLS},         {"a.GLA", 5, frm4Import::kGLA},
        {"a.glz", 5, frm4Import::kGLZ},         {"AGF", 3, 3}};
    for (const auto& [file, before, type] : cases) {
        EXPECT_EQ(frm4Import::FileTypeOf(file, before), type) << file;
    }
}

}  // namespace
}  // namespace ostrel::testing
