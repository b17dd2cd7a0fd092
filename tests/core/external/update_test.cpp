// The custom glass files, the update frame, removal and archive over a demo installation.
#include <filesystem>

#include "core/external/external_file.h"
#include "core/external/frm2_manage_update.h"
#include "core/external/frm6_archive.h"
#include "core/external/frm_glasses_del_ext.h"
#include "external_fixture.h"

namespace ostrel::testing {
namespace {

namespace fs = std::filesystem;

std::string Image(const std::vector<MaterialRecord>& recs) {
    std::vector<ExternalRecord> ext;
    for (const auto& r : recs) {
        ExternalRecord e;
        ToExternalRecord(r.General, e);
        ext.push_back(e);
    }
    return ExternalFileImage(ext);
}

class UpdateTest : public ExternalFixture {
  protected:
    frm2ManageUpdate Frame() {
        frm2ManageUpdate::Source s;
        s.list = [this]() -> const std::vector<MaterialRecord>& { return list; };
        s.selection = [this](int& f, int& l) {
            f = first;
            l = last;
            return true;
        };
        return frm2ManageUpdate(s, setup, dialogs);
    }
    std::string FileAt(const std::string& folder, const char* name = kExternalFileName) {
        return fs::exists(folder + name) ? ReadFileBytes(folder + name) : std::string("<none>");
    }

    std::vector<MaterialRecord> list{ReadyMaterial("GLASS A", "Lab"),
                                     ReadyMaterial("GLASS B", "Lab"),
                                     ReadyMaterial("GLASS C", "Lab")};
    int first = 1, last = 1;
};

TEST_F(UpdateTest, FileImageIsByteForByteAndTheBackupIsOneGeneration) {
    FileError error;
    ASSERT_TRUE(WriteExternalFile(Lumbrak(), {list[0]}, error));
    const std::string one = FileAt(Lumbrak());
    ASSERT_EQ(one.size(), 554u);
    EXPECT_EQ(one.substr(0, 30), "GLASS A" + std::string(23, ' '));
    EXPECT_EQ(one.substr(32, 30), "Lab" + std::string(27, ' '));
    EXPECT_EQ(static_cast<unsigned char>(one[70]), 2);  // Polytype
    EXPECT_EQ(one.substr(516), std::string(38, '\0'));
    EXPECT_EQ(one, Image({list[0]}));
    ASSERT_TRUE(WriteExternalFile(Lumbrak(), list, error));
    EXPECT_EQ(FileAt(Lumbrak()), Image(list));
    EXPECT_EQ(FileAt(Lumbrak(), kExternalBackupName), one);
    ASSERT_TRUE(WriteExternalFile(Lumbrak(), {list[2]}, error));
    EXPECT_EQ(FileAt(Lumbrak(), kExternalBackupName), Image(list));
    // An empty list leaves the file as it is.
    ASSERT_TRUE(WriteExternalFile(Lumbrak(), {}, error));
    EXPECT_EQ(FileAt(Lumbrak()), Image({list[2]}));
}

TEST_F(UpdateTest, ReadSkipsBlankAndNulNames) {
    std::string bytes = Image(list);
    bytes[554 + 3] = '\0';                             // GLASS B holds a NUL
    bytes.replace(2 * 554, 30, std::string(30, ' '));  // GLASS C blank
    WriteFileBytes(Lumbrak() + kExternalFileName, bytes);
    std::vector<MaterialRecord> recs(5);
    FileError error;
    ASSERT_TRUE(ReadExternalFile(Lumbrak(), recs, error));
    ASSERT_EQ(recs.size(), 1u);
    EXPECT_EQ(recs[0].General.GlassName.Text(), "GLASS A");
}

TEST_F(UpdateTest, MergeOverwritesOrLeavesAndAnEmptyListStaysEmpty) {
    std::vector<MaterialRecord> none;
    MergeIntoExternalList(none, list, 1, 3, true);
    EXPECT_TRUE(none.empty());
    std::vector<MaterialRecord> recs{ReadyMaterial("glass b ", "LAB", 1.5)};
    MergeIntoExternalList(recs, list, 1, 3, false);
    ASSERT_EQ(recs.size(), 3u);
    EXPECT_EQ(recs[0].General.PolyCoef[0], 1.5);
    EXPECT_EQ(recs[1].General.GlassName.Text(), "GLASS A");
    recs = {ReadyMaterial("glass b ", "LAB", 1.5)};
    MergeIntoExternalList(recs, list, 2, 2, true);
    ASSERT_EQ(recs.size(), 1u);
    EXPECT_EQ(recs[0].General.GlassName.Text(), "GLASS B");
}

TEST_F(UpdateTest, SynchroniseCreatesTheFirstFileAndAddDoesNot) {
    auto frame = Frame();
    first = 1;
    last = 2;
    dialogs.answers = {MsgAnswer::OK};
    EXPECT_TRUE(frame.comExtAddSelClick());
    EXPECT_EQ(dialogs.boxes[0].text,
              "Are you sure that you want to export the selected material[s] to "
              "Lumbrak3D/Sextane & Kelmora");
    EXPECT_EQ(FileAt(Lumbrak()), "<none>");
    EXPECT_EQ(Rows().size(), 6u);

    dialogs.answers = {MsgAnswer::OK};
    EXPECT_TRUE(frame.comExtSynchClick());
    EXPECT_EQ(dialogs.boxes[1].text,
              "Are you sure that you want to force Lumbrak3D/Sextane & Kelmora to ONLY have "
              "these 3 materials as the custom glasses");
    EXPECT_EQ(FileAt(Lumbrak()), Image(list));
    EXPECT_EQ(FileAt(Sextane()), Image(list));
    EXPECT_EQ(Rows().size(), 7u);
}

TEST_F(UpdateTest, LeaveKeepsOldDataButRewritesFileAndBackup) {
    FileError error;
    const std::vector<MaterialRecord> old{ReadyMaterial("GLASS B", "Lab", 1.5)};
    ASSERT_TRUE(WriteExternalFile(Lumbrak(), old, error));
    auto frame = Frame();
    frame.cmbDataOverWrite.SetListIndex(1);
    frame.cmbUpdateProg.SetListIndex(0);
    dialogs.answers = {MsgAnswer::OK};
    EXPECT_TRUE(frame.comExtAddAllClick());
    EXPECT_EQ(dialogs.boxes[0].text,
              "Are you sure that you want to export all 3 materials to Lumbrak3D/Sextane");
    EXPECT_EQ(FileAt(Lumbrak()), Image({old[0], list[0], list[2]}));
    EXPECT_EQ(FileAt(Sextane()), FileAt(Lumbrak()));
    EXPECT_EQ(FileAt(Lumbrak(), kExternalBackupName), Image(old));
    EXPECT_EQ(Rows().size(), 4u);  // the database was not a target
}

TEST_F(UpdateTest, QuestionsAndRefusals) {
    auto frame = Frame();
    dialogs.answers = {MsgAnswer::No};
    EXPECT_FALSE(frame.comExtAddSelClick());
    EXPECT_EQ(dialogs.boxes[0].text,
              "Are you sure that you want to export GLASS A [Lab] to Lumbrak3D/Sextane & Kelmora");
    EXPECT_EQ(dialogs.boxes[0].buttons, MsgButtons::YesNo);
    list[1].TransState.Ready = kFalse;
    EXPECT_FALSE(frame.comExtSynchClick());
    EXPECT_EQ(dialogs.boxes[1].text.rfind("The following glass[s] are not ready for export.", 0),
              0u);
    list.clear();
    EXPECT_FALSE(frame.comExtAddAllClick());
    EXPECT_EQ(dialogs.boxes.size(), 2u);
    EXPECT_EQ(Rows().size(), 4u);
}

// Every write and every database step of an update fails in turn: each file and the
// database then hold either what they held before or what the update gives them.
TEST_F(UpdateTest, AnUpdateInterruptedAtAnyStepLeavesOldOrNewContent) {
    FileError error;
    ASSERT_TRUE(WriteExternalFile(Lumbrak(), {ReadyMaterial("GLASS B", "Lab", 1.5)}, error));
    ASSERT_TRUE(WriteExternalFile(Sextane(), {ReadyMaterial("OTHER", "Lab")}, error));
    ASSERT_TRUE(
        AddGlassesToDatabase(Kelmora(), {ReadyMaterial("GLASS B", "Lab", 1.5)}, true, dialogs));
    const std::string oldL = FileAt(Lumbrak()), oldS = FileAt(Sextane());
    const auto oldRows = Rows();
    const std::string custom = dir.path().string() + "/custom.dat";
    WriteFileBytes(custom, "custom list");

    auto run = [&] {
        auto frame = Frame();
        dialogs.answers = {MsgAnswer::OK};
        frame.comExtAddAllClick();
    };
    // The new content, from an update that runs through.
    run();
    const std::string newL = FileAt(Lumbrak()), newS = FileAt(Sextane());
    const auto newRows = Rows();
    ASSERT_NE(newL, oldL);
    ASSERT_NE(newRows, oldRows);

    auto restore = [&] {
        WriteFileBytes(Lumbrak() + kExternalFileName, oldL);
        WriteFileBytes(Sextane() + kExternalFileName, oldS);
        ASSERT_TRUE(DeleteAllCustomRows(Kelmora(), dialogs));
        ASSERT_TRUE(
            AddGlassesToDatabase(Kelmora(), {ReadyMaterial("GLASS B", "Lab", 1.5)}, true, dialogs));
        ASSERT_EQ(Rows(), oldRows);
    };
    auto check = [&](const std::string& what) {
        const std::string l = FileAt(Lumbrak()), s = FileAt(Sextane());
        EXPECT_TRUE(l == oldL || l == newL) << what;
        EXPECT_TRUE(s == oldS || s == newS) << what;
        const auto rows = Rows();
        EXPECT_TRUE(rows == oldRows || rows == newRows) << what;
        EXPECT_EQ(ReadFileBytes(custom), "custom list") << what;
    };
    for (int k = 1; k <= 4; ++k) {
        restore();
        int writes = 0;
        SetWriteFaultHook([&](const fs::path&) { return ++writes != k; });
        run();
        SetWriteFaultHook(nullptr);
        check("write " + std::to_string(k));
    }
    for (int k = 1; k <= 12; ++k) {
        restore();
        int steps = 0;
        SetDatabaseFaultHook([&](const std::string&, const std::string&) { return ++steps != k; });
        run();
        SetDatabaseFaultHook(nullptr);
        check("database step " + std::to_string(k));
    }
}

TEST_F(UpdateTest, RemovalFromTheFileLeavesTheLastEntry) {
    FileError error;
    ASSERT_TRUE(WriteExternalFile(Lumbrak(), {list[0], list[1]}, error));
    frmGlassesDelExt form(setup, dialogs);
    form.Load();
    ASSERT_EQ(form.lstGlasses.Items(), (std::vector<std::string>{"GLASS A/Lab", "GLASS B/Lab"}));
    form.comDelSelClick();  // nothing selected
    EXPECT_FALSE(form.Result());
    EXPECT_EQ(FileAt(Sextane()), "<none>");
    form.Load();
    form.lstGlasses.SetSelected(0, true);
    form.comDelSelClick();
    EXPECT_TRUE(form.Result());
    EXPECT_EQ(FileAt(Lumbrak()), Image({list[1]}));
    EXPECT_EQ(FileAt(Sextane()), Image({list[1]}));
    form.Load();
    form.lstGlasses.SetSelected(0, true);
    form.comDelSelClick();
    EXPECT_TRUE(form.Result());
    EXPECT_EQ(FileAt(Lumbrak()), Image({list[1]}));
}

TEST_F(UpdateTest, RemovalFromTheDatabaseListsCustomRowsOfBothTables) {
    ASSERT_TRUE(AddGlassesToDatabase(Kelmora(), {list[0], list[1]}, true, dialogs));
    frm6Archive archive(setup, dialogs);
    ASSERT_TRUE(archive.Load());
    archive.ssGlassCurrClick(1, 6);
    ASSERT_TRUE(archive.comArchiveClick());
    archive.Unload();

    frmGlassesDelExt form(setup, dialogs);
    form.Load();
    form.optUpdateProgClick(1);
    EXPECT_EQ(form.lblProg.caption.get(), "Select materials to remove from KelmoraTD database");
    ASSERT_EQ(form.lstGlasses.Items(), (std::vector<std::string>{"GLASS A/Lab", "GLASS B/Lab"}));
    EXPECT_EQ(form.lstGlasses.ItemData(1), 100006);
    form.lstGlasses.SetSelected(0, true);
    form.lstGlasses.SetSelected(1, true);
    FailDatabaseSteps("delete", kTableArchive);
    const auto before = Rows();
    EXPECT_FALSE(form.RemoveSelected());
    EXPECT_EQ(Rows(), before);
    EXPECT_EQ(dialogs.boxes.back().text,
              "Error while removing user glasses from database.\n-3\tInjected failure of delete on "
              "Archive\nDatabase has been returned to original state!");
    SetDatabaseFaultHook(nullptr);
    form.comDelSelClick();
    EXPECT_TRUE(form.Result());
    EXPECT_EQ(Rows().size(), 4u);
}

TEST_F(UpdateTest, ArchiveAllButK7AndF2AndRestore) {
    frm6Archive form(setup, dialogs);
    ASSERT_TRUE(form.Load());
    EXPECT_EQ(form.ssGlassCurr.Text(2, 1), "  N-BK7");
    EXPECT_EQ(form.ssGlassCurr.Text(5, 1), "  Recommended");
    // Archiving K7 alone does nothing and says nothing.
    form.ssGlassCurrClick(1, 2);
    EXPECT_TRUE(form.comArchiveClick());
    EXPECT_EQ(form.ssGlassCurr.MaxRows(), 4);

    dialogs.answers = {MsgAnswer::Cancel};
    form.ssGlassCurr.SetSelection({0, -1, 0, -1});
    EXPECT_FALSE(form.comArchiveClick());
    EXPECT_EQ(dialogs.boxes.back().text,
              "Are you really sure that you want to archive ALL the glasses in Kelmora?");
    EXPECT_FALSE(form.database()->InTransaction());
    EXPECT_EQ(Rows().size(), 4u);
    EXPECT_EQ(Rows()[0].rfind("GlassData", 0), 0u);

    dialogs.answers = {MsgAnswer::OK};
    form.ssGlassCurr.SetSelection({0, -1, 0, -1});
    EXPECT_TRUE(form.comArchiveClick());
    ASSERT_EQ(form.ssGlassCurr.MaxRows(), 2);
    EXPECT_EQ(form.ssGlassCurr.Text(2, 1), "  K7");
    EXPECT_EQ(form.ssGlassCurr.Text(2, 2), "  F2");
    ASSERT_EQ(form.ssGlassArchive.MaxRows(), 2);
    EXPECT_EQ(form.ssGlassArchive.Text(3, 1), " Schott");

    const size_t boxes = dialogs.boxes.size();
    form.ssGlassArchive.SetSelection({0, 1, 0, 2});
    EXPECT_TRUE(form.comDeArchiveClick());
    EXPECT_EQ(dialogs.boxes.size(), boxes);
    EXPECT_EQ(form.ssGlassCurr.MaxRows(), 4);
    EXPECT_EQ(form.ssGlassArchive.MaxRows(), 0);

    form.cmbSortOrder.SetListIndex(1);
    form.cmbSortOrderClick();
    EXPECT_EQ(form.ssGlassCurr.Text(2, 1), "  F2");
}

TEST_F(UpdateTest, AMoveThatFailsRollsTheCommandBack) {
    frm6Archive form(setup, dialogs);
    ASSERT_TRUE(form.Load());
    const auto before = Rows();
    FailDatabaseSteps("add", "", 2);
    form.ssGlassCurr.SetSelection({0, 1, 0, 4});
    EXPECT_FALSE(form.comArchiveClick());
    SetDatabaseFaultHook(nullptr);
    EXPECT_EQ(Rows(), before);
    EXPECT_EQ(
        dialogs.boxes.back().text,
        "Error in archiving glass. Process rolled back.\n-3\tInjected failure of add on Archive");
}

// The archive form through the tool strip: it opens with the database and closes it again;
// a database that cannot be opened says so and puts the tool button back up.
TEST_F(UpdateTest, ArchiveFormOpensAndClosesThroughTheToolStrip) {
    ManageForms forms(dialogs, {[] { return true; }, [] { return false; }, [] {}});
    frm6Archive form(setup, dialogs, [&forms] { forms.RibbonClick(kFormArchive, false); });
    forms.RegisterForm(kFormArchive, &form);
    EXPECT_FALSE(form.form.visible);

    forms.RibbonClick(kFormArchive, true);
    EXPECT_TRUE(form.form.visible);
    ASSERT_NE(form.database(), nullptr);
    EXPECT_EQ(form.ssGlassCurr.MaxRows(), 4);
    form.comOKClick();
    EXPECT_FALSE(form.form.visible);
    EXPECT_EQ(form.database(), nullptr);
    EXPECT_EQ(forms.GetCurrentForm(), kNoForm);
    EXPECT_FALSE(forms.ribTools[kFormArchive].value);

    fs::remove(fs::path(Kelmora()) / "FenmarkExA.mdb");
    forms.RibbonClick(kFormArchive, true);
    EXPECT_FALSE(form.form.visible);
    EXPECT_FALSE(dialogs.boxes.empty());
    EXPECT_EQ(forms.GetCurrentForm(), kNoForm);
    EXPECT_FALSE(forms.ribTools[kFormArchive].value);
}

}  // namespace
}  // namespace ostrel::testing
