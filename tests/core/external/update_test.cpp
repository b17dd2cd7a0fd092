// The custom glass files, the update frame, removal and archive over a demo installation.
#include <filesystem>
#include <functional>

#include "core/external/external_file.h"
#include "core/external/frm2_manage_update.h"
#include "core/external/frm6_archive.h"
#include "core/external/frm_glasses_del_ext.h"
#include "core/platform/sqlite_database.h"
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
    // The stores a test starts from: each file as given (left as it is when empty), the
    // custom rows of the database, and the rows of the ids given moved to Archive.
    void Seed(const std::vector<MaterialRecord>& lumbrak,
              const std::vector<MaterialRecord>& sextane, const std::vector<MaterialRecord>& rows,
              std::initializer_list<int64_t> archived = {}) {
        ASSERT_TRUE(DeleteAllCustomRows(Kelmora(), dialogs));
        WriteFile(Lumbrak(), lumbrak);
        WriteFile(Sextane(), sextane);
        if (!rows.empty()) AddRows(rows);
        for (int64_t id : archived) ToArchive(DbValue{id});
    }

    enum Command { kUpdate, kSynch, kArchive, kRestore, kRemove };
    // Runs a command as its form runs it, its k-th database statement failing (0: none): an
    // update of all materials or a synchronisation through the frame, an archive or restore
    // of the grid rows of `block`, a removal of the first two database entries.
    bool Run(Command command, int k = 0, GridBlock block = {0, -1, 0, -1}) {
        dialogs.answers.clear();
        if (command == kUpdate || command == kSynch) {
            auto frame = Frame();
            FailSqliteStatement(k);
            return command == kUpdate ? frame.comExtAddAllClick() : frame.comExtSynchClick();
        }
        if (command == kRemove) {
            frmGlassesDelExt form(setup, dialogs);
            Choose(form, true, {0, 1});
            FailSqliteStatement(k);  // counting starts with the command
            form.comDelSelClick();
            return form.Result();
        }
        frm6Archive form(setup, dialogs);
        form.Load();
        (command == kArchive ? form.ssGlassCurr : form.ssGlassArchive).SetSelection(block);
        FailSqliteStatement(k);
        return command == kArchive ? form.comArchiveClick() : form.comDeArchiveClick();
    }

    std::vector<MaterialRecord> list{ReadyMaterial("GLASS A", "Lab"),
                                     ReadyMaterial("GLASS B", "Lab"),
                                     ReadyMaterial("GLASS C", "Lab")};
    int first = 1, last = 1;
};

TEST_F(UpdateTest, FileImageIsByteForByteTheBackupOneGenerationAndReadSkipsUnusableNames) {
    WriteFile(Lumbrak(), {list[0]});
    const std::string one = FileAt(Lumbrak());
    ASSERT_EQ(one.size(), 554u);
    EXPECT_EQ(one, Image({list[0]}));
    WriteFile(Lumbrak(), list);
    EXPECT_EQ(FileAt(Lumbrak()), Image(list));
    EXPECT_EQ(FileAt(Lumbrak(), kExternalBackupName), one);
    WriteFile(Lumbrak(), {list[2]});
    EXPECT_EQ(FileAt(Lumbrak(), kExternalBackupName), Image(list));
    // An empty list leaves the file as it is.
    WriteFile(Lumbrak(), {});
    EXPECT_EQ(FileAt(Lumbrak()), Image({list[2]}));
    // Reading skips blank names and names holding a NUL.
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

// Each command ends with one line saying what it did to each target; an update into a
// folder without a file makes the file.
TEST_F(UpdateTest, UpdatesSayWhatTheyDid) {
    enum Command { kSelected, kAll, kSynch };
    // seeded: file and database already hold glass b and OTHER; file: its names, "" for none
    using Case = std::tuple<Command, bool, bool, int, bool, bool, std::string, std::string>;
    const Case cases[] = {
        {kSelected, false, false, 2, false, false, "Lumbrak3D: 2 added. KelmoraTD: 2 added.",
         "GLASS A,GLASS B"},
        {kAll, true, false, 2, false, false,
         "Lumbrak3D: 2 added, 1 replaced. KelmoraTD: 2 added, 1 replaced.",
         "GLASS B,OTHER,GLASS A,GLASS C"},
        {kAll, true, true, 0, false, false, "Lumbrak3D: 2 added, 1 left unchanged.",
         "glass b,OTHER,GLASS A,GLASS C"},
        {kSynch, true, false, 2, false, false,
         "Lumbrak3D: 2 added, 1 replaced, 1 removed. KelmoraTD: 2 added, 1 replaced, 1 removed.",
         "GLASS A,GLASS B,GLASS C"},
        {kAll, false, false, 2, true, false, "Lumbrak3D: not found. KelmoraTD: 3 added.", ""},
        {kAll, true, false, 1, false, true, "KelmoraTD: failed.", "glass b,OTHER"},
        {kSynch, false, false, 2, false, true, "Lumbrak3D: nothing changed. KelmoraTD: failed.",
         ""},
    };
    const std::vector<MaterialRecord> none;
    last = 2;
    for (const auto& [command, seeded, leave, target, absent, failing, summary, file] : cases) {
        fs::remove(Lumbrak() + kExternalFileName);
        ASSERT_TRUE(setup.SetPathLumbrak(dir.path().string() + "/Lumbrak/"));
        // GLASS B under another case: the same material.
        const std::vector<MaterialRecord> old{ReadyMaterial("glass b ", "LAB", 1.5),
                                              ReadyMaterial("OTHER", "Lab")};
        Seed(seeded ? old : none, {}, seeded ? old : none);
        if (absent) setup.SetPathLumbrak(dir.path().string() + "/");
        if (failing) FailDatabaseSteps("add", kTableCurrent);
        auto frame = Frame();
        frame.cmbDataOverWrite.SetListIndex(leave ? 1 : 0);
        frame.cmbUpdateProg.SetListIndex(target);
        dialogs.answers = {MsgAnswer::OK};
        const bool ok = command == kSelected ? frame.comExtAddSelClick()
                        : command == kAll    ? frame.comExtAddAllClick()
                                             : frame.comExtSynchClick();
        SetDatabaseFaultHook(nullptr);
        EXPECT_EQ(ok, !failing) << summary;
        ASSERT_FALSE(dialogs.helpNotes.empty());
        EXPECT_EQ(dialogs.helpNotes.back(), summary);
        EXPECT_EQ(FileNames(dir.path().string() + "/Lumbrak/"), file) << summary;
    }
}

// A material has one database row whatever the case of its name and source: f'2/mylab
// finds the row of F'2/MYLAB in either table, also a row left twice by an older version.
TEST_F(UpdateTest, OneDatabaseRowPerMaterialWhateverTheCase) {
    const int kOverwrite = -1, kLeave = -2;  // an update, or else a command
    // archived: F'2/MYLAB stands in Archive rather than in GlassData; twice: an older version
    // left f'2/mylab in the other table as well; rows: table:name:C1 of the custom rows after
    using Case = std::tuple<const char*, bool, bool, int, std::vector<std::string>>;
    const MaterialRecord upper = ReadyMaterial("F'2", "MYLAB", 1.5);
    const MaterialRecord lower = ReadyMaterial(" f'2", "mylab ", 1.25);
    const Case cases[] = {
        {"update", false, false, kOverwrite, {"GlassData:f'2:1.25"}},
        {"update over archive", true, false, kOverwrite, {"GlassData:f'2:1.25"}},
        {"update over both", false, true, kOverwrite, {"GlassData:f'2:1.25"}},
        {"leave", false, false, kLeave, {"GlassData:F'2:1.5"}},
        {"leave over archive", true, false, kLeave, {"Archive:F'2:1.5"}},
        {"archive", false, true, kArchive, {"Archive:F'2:1.5"}},
        {"restore", true, true, kRestore, {"GlassData:F'2:1.5"}},
        {"remove", false, false, kRemove, {}},
        {"remove one of two", false, true, kRemove, {}},
    };
    for (const auto& [name, archived, twice, action, rows] : cases) {
        Seed({}, {}, {upper});
        DbError error;
        ASSERT_TRUE(!twice || Open()->AddRow(kTableCurrent, WriteGlassRow(100, lower), error));
        if (archived) ToArchive(DbValue{int64_t{5}});
        if (twice && !archived) ToArchive(DbValue{int64_t{100}});
        if (action == kOverwrite || action == kLeave) {
            ASSERT_TRUE(AddGlassesToDatabase(Kelmora(), {lower}, action == kOverwrite, dialogs));
        } else if (action == kRemove) {
            // Removing the entry of either row removes the material.
            frmGlassesDelExt form(setup, dialogs);
            Choose(form, true, {0});
            ASSERT_EQ(form.lstGlasses.List(0), "F'2/MYLAB") << name;
            form.comDelSelClick();
        } else {
            // F'2/MYLAB follows the demo's four glasses, or stands alone in Archive.
            frm6Archive form(setup, dialogs);
            ASSERT_TRUE(form.Load());
            const bool archive = action == kArchive;
            archive ? form.ssGlassCurrClick(1, 5) : form.ssGlassArchiveClick(1, 1);
            EXPECT_TRUE(archive ? form.comArchiveClick() : form.comDeArchiveClick()) << name;
        }
        EXPECT_EQ(CustomRows(), rows) << name;
    }
}

// Leave keeps the old data of a glass but rewrites the file and its backup; the questions
// and refusals of the frame change no store.
TEST_F(UpdateTest, LeaveQuestionsAndRefusals) {
    const std::vector<MaterialRecord> old{ReadyMaterial("GLASS B", "Lab", 1.5)};
    WriteFile(Lumbrak(), old);
    auto frame = Frame();
    frame.cmbDataOverWrite.SetListIndex(1);
    frame.cmbUpdateProg.SetListIndex(0);
    dialogs.answers = {MsgAnswer::OK};
    EXPECT_TRUE(frame.comExtAddAllClick());
    EXPECT_EQ(dialogs.boxes[0].text,
              "Are you sure that you want to export all 3 materials to Lumbrak3D/Sextane");
    const std::string written = FileAt(Lumbrak());
    EXPECT_EQ(written, Image({old[0], list[0], list[2]}));
    EXPECT_EQ(FileAt(Lumbrak(), kExternalBackupName), Image(old));

    auto both = Frame();
    dialogs.answers = {MsgAnswer::No};
    EXPECT_FALSE(both.comExtAddSelClick());
    EXPECT_EQ(dialogs.boxes[1].text,
              "Are you sure that you want to export GLASS A [Lab] to Lumbrak3D/Sextane & Kelmora");
    EXPECT_EQ(dialogs.boxes[1].buttons, MsgButtons::YesNo);
    list[1].TransState.Ready = kFalse;
    EXPECT_FALSE(both.comExtSynchClick());
    EXPECT_EQ(dialogs.boxes[2].text.rfind("The following glass[s] are not ready for export.", 0),
              0u);
    list.clear();
    EXPECT_EQ((std::tuple{both.comExtAddAllClick(), dialogs.boxes.size(), Rows().size(),
                          FileAt(Lumbrak())}),
              std::tuple(false, 3u, 4u, written));
}

// A failure anywhere before the database's commit leaves every store as it was: each
// write of the new files fails in turn, and each statement of every database command
// (update, synchronisation, archive, restore, removal).
TEST_F(UpdateTest, AFailureBeforeTheCommitChangesNoStore) {
    const MaterialRecord b = ReadyMaterial("GLASS B", "Lab", 1.5),
                         other = ReadyMaterial("OTHER", "Lab");
    Seed({b}, {other}, {b, other}, {6});
    const std::string database = GlassDatabasePath(Kelmora());
    const std::string oldL = FileAt(Lumbrak()), oldS = FileAt(Sextane());
    const std::string oldDatabase = ReadFileBytes(database);
    // The stores of the sibling programs as they stand: both files and every database row.
    auto stores = [&] { return std::tuple(FileAt(Lumbrak()), FileAt(Sextane()), Rows()); };
    const auto old = stores();
    auto restore = [&] {
        WriteFileBytes(Lumbrak() + kExternalFileName, oldL);
        WriteFileBytes(Sextane() + kExternalFileName, oldS);
        WriteFileBytes(database, oldDatabase);
    };

    for (int k = 1; k <= 3; ++k) {
        restore();
        int writes = 0;
        SetWriteFaultHook([&](const fs::path&) { return ++writes != k; });
        Run(kUpdate);
        SetWriteFaultHook(nullptr);
        // Two files are written; a third write is not there to fail.
        EXPECT_EQ(stores() == old, k <= 2) << "write " << k;
    }
    for (Command command : {kUpdate, kSynch, kArchive, kRestore, kRemove}) {
        restore();
        Run(command);
        const int statements = SqliteStatementsRun();
        const auto fresh = stores();
        ASSERT_NE(fresh, old) << "command " << command;
        ASSERT_GT(statements, 3) << "command " << command;
        // Old up to the commit; what fails after it (the forms reading the tables again)
        // finds the new content in place.
        bool committed = false;
        for (int k = 1; k <= statements; ++k) {
            restore();
            Run(command, k);
            FailSqliteStatement(0);
            const auto now = stores();
            committed = committed || now != old;
            EXPECT_EQ(now, committed ? fresh : old) << "command " << command << ", statement " << k;
        }
    }
    ExpectNoTempFiles({Lumbrak(), Sextane(), Kelmora()});
}

// A database held by another program: no store changes, and the message names it.
TEST_F(UpdateTest, ABusyDatabaseChangesNothing) {
    Seed({ReadyMaterial("GLASS B", "Lab", 1.5)}, {}, {ReadyMaterial("GLASS B", "Lab", 1.5)});
    const std::string oldL = FileAt(Lumbrak());
    const auto oldRows = Rows();
    frm6Archive archive(setup, dialogs);
    ASSERT_TRUE(archive.Load());
    frmGlassesDelExt removal(setup, dialogs);
    Choose(removal, true, {0});

    DbError dbError;
    auto other = OpenSqliteDatabase(GlassDatabasePath(Kelmora()), false, dbError);
    ASSERT_TRUE(other && other->BeginTrans(dbError));  // another program's write
    const std::pair<std::function<bool()>, std::string> cases[] = {
        {[&] { return Run(kUpdate); },
         "Lumbrak3D: nothing changed. KelmoraTD: in use by another program."},
        {[&] { return archive.ssGlassCurrClick(1, 1), archive.comArchiveClick(); },
         "KelmoraTD: in use by another program."},
        {[&] { return removal.comDelSelClick(), removal.Result(); },
         "KelmoraTD: in use by another program."}};
    for (const auto& [command, summary] : cases) {
        dialogs.answers.clear();
        EXPECT_FALSE(command()) << summary;
        EXPECT_EQ(dialogs.boxes.back().text, kMsgDatabaseBusy);
        EXPECT_EQ(dialogs.helpNotes.back(), summary);
        EXPECT_EQ(FileAt(Lumbrak()), oldL);
    }
    other.reset();
    EXPECT_EQ(Rows(), oldRows);
    ExpectNoTempFiles({Lumbrak(), Sextane()});
}

// Removal asks first naming what goes; No leaves the form open with its choice. The file
// list is read from Lumbrak and written to both programs; the last entries are never removed.
TEST_F(UpdateTest, RemovalAsksFirstNamingWhatGoes) {
    Seed(list, {}, list, {7});  // GLASS C archived: the list takes rows of both tables
    const std::string one = "GLASS B/Lab from Lumbrak3D/Sextane";
    const std::string both = "these 2 materials from Lumbrak3D/Sextane:\nGLASS A/Lab\nGLASS C/Lab";
    const std::string database = "these 2 materials from KelmoraTD:\nGLASS A/Lab\nGLASS C/Lab";
    // Target, entries picked, answer, the question ("" for none), the summary ("" when nothing
    // was done), whether both files hold GLASS A and C alone afterwards, custom rows after.
    using Case =
        std::tuple<int, std::vector<int>, MsgAnswer, std::string, std::string, bool, size_t>;
    const Case cases[] = {
        {0, {}, MsgAnswer::Yes, "", "", false, 3},
        {0, {1}, MsgAnswer::No, one, "", false, 3},
        {0, {1}, MsgAnswer::Yes, one, "Lumbrak3D: 1 removed.", true, 3},
        {1, {0, 2}, MsgAnswer::Yes, database, "KelmoraTD: 2 removed.", true, 1},
        {0, {0, 1}, MsgAnswer::Yes, both, "Lumbrak3D: nothing changed.", true, 1},
    };
    for (const auto& [target, picked, answer, question, summary, file, rows] : cases) {
        frmGlassesDelExt form(setup, dialogs);
        form.Load();
        if (target == 1) {
            form.optUpdateProgClick(1);
            EXPECT_EQ(form.lstGlasses.ItemData(2), 100007);
        }
        for (int i : picked) form.lstGlasses.SetSelected(i, true);
        dialogs.answers = {answer};
        const size_t notes = dialogs.helpNotes.size(), boxes = dialogs.boxes.size();
        form.comDelSelClick();
        ASSERT_EQ(dialogs.boxes.size(), boxes + (question.empty() ? 0 : 1)) << question;
        if (!question.empty()) {
            EXPECT_EQ(dialogs.boxes.back().text,
                      "Are you sure that you want to remove " + question);
            EXPECT_EQ(dialogs.boxes.back().buttons, MsgButtons::YesNo);
        }
        EXPECT_EQ(form.Closed(), answer == MsgAnswer::Yes);
        EXPECT_EQ(form.Result(), !summary.empty());
        if (answer == MsgAnswer::No) {
            EXPECT_EQ(form.lstGlasses.SelectedIndexes(), picked);
        }
        EXPECT_EQ(form.Summary(), summary);
        EXPECT_EQ(dialogs.helpNotes.size(), notes + (summary.empty() ? 0 : 1));
        const std::string kept = Image({list[0], list[2]});
        EXPECT_EQ(FileAt(Lumbrak()), file ? kept : Image(list)) << question;
        EXPECT_EQ(FileAt(Sextane()), file ? kept : "<none>") << question;
        EXPECT_EQ(Rows().size() - 4, rows) << question;
    }
}

// After a move both grids keep their choice on the same glasses: the glass that moved
// leaves nothing chosen behind, so a second press moves nothing more.
TEST_F(UpdateTest, TheChoiceStaysOnTheSameGlassesAfterAMove) {
    frm6Archive form(setup, dialogs);
    ASSERT_TRUE(form.Load());
    auto ids = [](const Grid& g, bool selected) {
        std::string out;
        for (int r = 1; r <= g.MaxRows(); ++r)
            if (!selected || g.IsSelected(2, r)) out += g.Text(1, r);
        return out;
    };
    // Archive or restore, the block chosen ({} for a click on row `click`), the ids of both
    // grids and the chosen ones of GlassData afterwards, the summary.
    using Step =
        std::tuple<bool, GridBlock, int, std::string, std::string, std::string, std::string>;
    const Step steps[] = {
        {true, {}, 1, "234", "1", "", "KelmoraTD: 1 archived."},
        {true, {1, 1, 5, 3}, 0, "23", "14", "23", "KelmoraTD: 1 archived."},
        {false, {}, 2, "234", "1", "23", "KelmoraTD: 1 restored."},
        {false, {}, 2, "234", "1", "23", "KelmoraTD: nothing changed."},
    };
    for (const auto& [archive, block, click, current, archived, chosen, summary] : steps) {
        Grid& grid = archive ? form.ssGlassCurr : form.ssGlassArchive;
        click ? grid.ClearSelection() : grid.SetSelection(block);
        if (click) archive ? form.ssGlassCurrClick(1, click) : form.ssGlassArchiveClick(1, click);
        EXPECT_TRUE(archive ? form.comArchiveClick() : form.comDeArchiveClick());
        EXPECT_EQ(std::tuple(ids(form.ssGlassCurr, false), ids(form.ssGlassArchive, false),
                             ids(form.ssGlassCurr, true), ids(form.ssGlassArchive, true)),
                  std::tuple(current, archived, chosen, ""))
            << summary;
        EXPECT_EQ(form.Summary(), summary);
    }
}

// A database command failing half way leaves both tables as they were and says why.
TEST_F(UpdateTest, AFailingDatabaseCommandRollsBackAndSaysWhy) {
    const std::string back = "\nDatabase has been returned to original state!";
    const std::string injected = "\n-3\tInjected failure of ";
    enum { kAddTwo, kClearAll, kArchiveAll, kRemoveTwo };
    const struct {
        int command;
        size_t added;    // rows of the list added first
        const char* op;  // the failing step; "" for none, the identifiers being used up
        const char* table;
        int from;
        std::string message;
    } cases[] = {
        {kAddTwo, 2, "add", "", 2,
         "Error while adding data to database." + injected + "add on GlassData" + back},
        {kClearAll, 1, "delete", kTableArchive, 1,
         "Error while removed old copeis of user defined glasses from database." + injected +
             "delete on Archive" + back},
        {kArchiveAll, 0, "add", "", 2,
         "Error in archiving glass. Process rolled back." + injected + "add on Archive"},
        {kRemoveTwo, 2, "delete", kTableArchive, 1,
         "Error while removing user glasses from database." + injected + "delete on Archive" +
             back},
        // the row of the highest identifier stays until the end
        {kAddTwo, 0, "", "", 0, "Error while adding data to database.\n6\tOverflow" + back},
    };
    for (const auto& c : cases) {
        ASSERT_TRUE(DeleteAllCustomRows(Kelmora(), dialogs));
        if (c.added) AddRows({list.begin(), list.begin() + static_cast<long>(c.added)});
        if (c.command == kRemoveTwo) ToArchive(DbValue{int64_t{6}});
        if (!*c.op) {
            DbError error;
            ASSERT_TRUE(
                Open()->AddRow(kTableArchive, {{"GlassID", DbValue{int64_t{32767}}}}, error));
        }
        const auto before = Rows();
        const size_t boxes = dialogs.boxes.size();
        frmGlassesDelExt form(setup, dialogs);
        if (c.command == kRemoveTwo) Choose(form, true, {0, 1});
        if (*c.op) FailDatabaseSteps(c.op, c.table, c.from);
        const bool done = c.command == kAddTwo
                              ? AddGlassesToDatabase(Kelmora(),
                                                     {ReadyMaterial("GLASS A", "Lab", 1.1),
                                                      ReadyMaterial("GLASS B", "Lab", 1.1)},
                                                     true, dialogs)
                          : c.command == kClearAll   ? DeleteAllCustomRows(Kelmora(), dialogs)
                          : c.command == kArchiveAll ? Run(kArchive, 0, {0, 1, 0, 4})
                                                     : form.RemoveSelected();
        SetDatabaseFaultHook(nullptr);
        EXPECT_FALSE(done) << c.message;
        EXPECT_EQ(Rows(), before) << c.message;
        ASSERT_EQ(dialogs.boxes.size(), boxes + 1) << c.message;
        EXPECT_EQ(dialogs.boxes.back().text, c.message);
        EXPECT_EQ(dialogs.boxes.back().icon, MsgIcon::Exclamation) << c.message;
    }
}

// The archive form through the tool strip: it opens with the database and closes it again;
// a database that cannot be opened says so and puts the tool button back up. K7 and F2 are
// never archived; all asks first, restoring asks nothing.
TEST_F(UpdateTest, ArchiveFormKeepsTheProtectedPairAndOpensThroughTheToolStrip) {
    ManageForms forms(dialogs, {[] { return true; }, [] { return false; }, [] {}});
    frm6Archive form(setup, dialogs, [&forms] { forms.RibbonClick(kFormArchive, false); });
    forms.RegisterForm(kFormArchive, &form);
    forms.RibbonClick(kFormArchive, true);
    ASSERT_NE(form.database(), nullptr);
    EXPECT_EQ(form.ssGlassCurr.Text(5, 1), "  Recommended");
    form.ssGlassCurrClick(1, 2);  // K7 alone: nothing done, nothing said
    EXPECT_EQ(
        (std::tuple{form.comArchiveClick(), form.ssGlassCurr.MaxRows(), dialogs.boxes.size()}),
        std::tuple(true, 4, 0u));
    dialogs.answers = {MsgAnswer::Cancel};
    form.ssGlassCurr.SetSelection({0, -1, 0, -1});
    EXPECT_EQ((std::tuple{form.comArchiveClick(), form.database()->InTransaction(),
                          Rows()[0].rfind("GlassData", 0)}),
              std::tuple(false, false, 0u));
    dialogs.answers = {MsgAnswer::OK};
    form.ssGlassCurr.SetSelection({0, -1, 0, -1});
    EXPECT_EQ((std::tuple{form.comArchiveClick(), form.ssGlassArchive.Text(3, 1)}),
              std::tuple(true, " Schott"));
    form.ssGlassArchive.SetSelection({0, 1, 0, 2});
    EXPECT_EQ(
        (std::tuple{form.comDeArchiveClick(), dialogs.boxes.size(), form.ssGlassArchive.MaxRows()}),
        std::tuple(true, 2u, 0));
    form.comOKClick();
    EXPECT_EQ(form.database(), nullptr);
    fs::remove(fs::path(Kelmora()) / "FenmarkExA.mdb");
    forms.RibbonClick(kFormArchive, true);
    EXPECT_EQ((std::tuple{form.form.visible.get(), dialogs.boxes.size(), forms.GetCurrentForm(),
                          forms.ribTools[kFormArchive].value.get()}),
              std::tuple(false, 3u, kNoForm, false));
}

}  // namespace
}  // namespace ostrel::testing
