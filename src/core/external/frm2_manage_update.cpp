#include "core/external/frm2_manage_update.h"

#include <algorithm>
#include <set>

#include "core/external/external_file.h"
#include "core/external/kelmora_database.h"
#include "core/material/glasses_list.h"
#include "core/materialform/frm2_manage.h"
#include "core/materialform/verification.h"
#include "core/platform/file_io.h"

namespace ostrel {

frm2ManageUpdate::frm2ManageUpdate(Source source, Bas1Setup& setup, Dialogs& dialogs,
                                   ShowRemoval showRemoval)
    : source_(std::move(source)),
      setup_(setup),
      dialogs_(dialogs),
      showRemoval_(std::move(showRemoval)) {
    cmbUpdateProg.SetItems(
        {"Lumbrak3D/Sextane only", "KelmoraTD only", "Lumbrak3D/Sextane & KelmoraTD!"});
    cmbUpdateProg.SetListIndex(kTargetBoth);
    cmbDataOverWrite.SetItems({"Overwrite existing materials", "Leave existing materials!"});
    cmbDataOverWrite.SetListIndex(0);
}

frm2ManageUpdate::Source frm2ManageUpdate::SourceOf(frm2Manage& form) {
    Source s;
    s.list = [&form]() -> const std::vector<MaterialRecord>& { return form.Copy(); };
    s.selection = [&form](int& first, int& last) {
        const Grid& g = form.ssGlassesCurr;
        if (g.MaxRows() < 1) return false;
        int row1 = g.ActiveRow(), row2 = g.ActiveRow();
        if (g.IsBlockMode()) {
            row1 = g.SelBlock().row1;
            row2 = g.SelBlock().row2;
            if (row1 < 1) row1 = 1;
            if (row2 < 1) row2 = g.MaxRows();
        }
        row1 = std::clamp(row1, 1, g.MaxRows());
        row2 = std::clamp(row2, 1, g.MaxRows());
        const int a = static_cast<int>(g.Value(frm2Manage::kColIndex, row1));
        const int b = static_cast<int>(g.Value(frm2Manage::kColIndex, row2));
        first = std::min(a, b);
        last = std::max(a, b);
        return first >= 1;
    };
    return s;
}

int frm2ManageUpdate::Target() const {
    const int t = cmbUpdateProg.listIndex();
    return t < 0 || t > 2 ? kTargetBoth : t;
}

std::string frm2ManageUpdate::TargetName() const {
    switch (Target()) {
        case kTargetFiles:
            return "Lumbrak3D/Sextane";
        case kTargetDatabase:
            return "Kelmora only";
        default:
            return "Lumbrak3D/Sextane & Kelmora";
    }
}

namespace {

// A synchronisation measured against what the target held before: the materials of the
// list that were there count as replaced, the others as added, and what the target held
// beyond the list as removed.
UpdateCounts SynchCounts(const std::set<std::string>& before,
                         const std::vector<MaterialRecord>& list) {
    UpdateCounts counts;
    std::set<std::string> listed;
    for (const auto& rec : list) {
        const std::string key = MaterialKey(rec);
        if (!listed.insert(key).second) continue;
        ++(before.count(key) ? counts.replaced : counts.added);
    }
    for (const auto& key : before) counts.removed += listed.count(key) ? 0 : 1;
    return counts;
}

constexpr const char* kNothingChanged = "Nothing was changed.";
// An update of an empty list sends nothing; it says so rather than end without a word.
constexpr const char* kNothingToSend = "The list holds no material to send. Nothing was changed.";

std::string FileFailureText(const std::string& what, const std::string& folder,
                            const FileError& error) {
    return what + folder + kExternalFileName + "\n" + std::to_string(error.code) + "\t" +
           error.message;
}

}  // namespace

bool frm2ManageUpdate::PrepareFiles(const std::vector<MaterialRecord>& list, int first, int last,
                                    bool synch, std::vector<PreparedFile>& files,
                                    UpdateCounts& counts, std::string& failure) {
    std::vector<MaterialRecord> records;
    FileError error;
    if (!ReadExternalFile(setup_.GetPathLumbrak(), records, error)) {
        // A synchronisation does not need the old file: it only counts what it held.
        records.clear();
        if (!synch) {
            failure = FileFailureText("Error while reading ", setup_.GetPathLumbrak(), error);
            return false;
        }
    }
    if (synch) {
        std::set<std::string> before;
        for (const auto& rec : records) before.insert(MaterialKey(rec));
        counts = SynchCounts(before, list);
        records = list;
    } else {
        counts = MergeIntoExternalList(records, list, first, last, Overwrite());
    }
    // The Lumbrak folder's list goes to both folders.
    const std::pair<bool, std::string> folders[] = {
        {true, setup_.GetPathLumbrak()}, {setup_.GetSextaneFound(), setup_.GetPathSextane()}};
    for (const auto& [present, folder] : folders) {
        if (!present) continue;
        files.emplace_back();
        if (!PrepareExternalFile(folder, records, files.back(), error)) {
            failure = FileFailureText("Error while writing ", folder, error);
            return false;
        }
    }
    return true;
}

bool frm2ManageUpdate::ChangeDatabase(Database& db, const std::vector<MaterialRecord>& list,
                                      int first, int last, bool synch, UpdateCounts& counts) {
    const std::vector<MaterialRecord> range(list.begin() + (first - 1), list.begin() + last);
    DbError error;
    const char* failure = kMsgAddFailed;
    bool ok = true;
    if (synch) {
        // Clearing the old custom rows and adding the list are one transaction: the
        // database ends with the old rows or the new ones, never with none.
        std::set<std::string> before;
        UpdateCounts added;
        ok = DeleteCustomRows(db, &before, error);
        if (!ok) failure = kMsgDeleteAllFailed;
        ok = ok && AddGlassRows(db, range, Overwrite(), added, error);
        counts = SynchCounts(before, range);
    } else {
        ok = AddGlassRows(db, range, Overwrite(), counts, error);
    }
    ok = ok && db.CommitTrans(error);
    if (ok) return true;
    db.Rollback();
    dialogs_.MsgBox(DatabaseFailureText(failure, error, kMsgReturnedToOriginal), MsgButtons::OK,
                    MsgIcon::Exclamation);
    return false;
}

void frm2ManageUpdate::ShowSummary(std::string summary) {
    summary_ = std::move(summary);
    dialogs_.HelpNote(summary_, false);
}

// The order of an update: the database's write lock first, then the new sibling files
// written beside the old ones, then the database changed and committed, and only then the
// files put in place (each old file becoming its backup). A busy database or any failure
// before the commit changes nothing; what the user then sees names the store that failed.
bool frm2ManageUpdate::UpdateTargets(const std::vector<MaterialRecord>& list, int first, int last,
                                     bool synch) {
    const int target = Target();
    const bool toFiles = target == kTargetFiles || target == kTargetBoth;
    const bool toDatabase = target == kTargetDatabase || target == kTargetBoth;
    UpdateCounts files, database;
    files.absent = !setup_.GetLumbrakFound();
    database.absent = !setup_.GetKelmoraFound();
    auto summary = [&] {
        std::vector<std::string> parts;
        if (toFiles) parts.push_back(SummaryPart(kSummaryLumbrak, files));
        if (toDatabase) parts.push_back(SummaryPart(kSummaryKelmora, database));
        ShowSummary(JoinSummary(parts));
    };
    // What a failure before the commit leaves: the failed store says so, the other
    // reads "nothing changed".
    auto abandon = [&](UpdateCounts& failed) {
        if (!files.absent) files = {};
        if (!database.absent) database = {};
        failed.failed = true;
        summary();
        return false;
    };

    BusyPointer busy(dialogs_);
    std::unique_ptr<Database> db;
    if (toDatabase && !database.absent) {
        bool inUse = false;
        db = BeginGlassUpdate(setup_.GetPathKelmora(), dialogs_, &inUse);
        if (!db) {
            if (!files.absent) files = {};
            (inUse ? database.busy : database.failed) = true;
            summary();
            return false;
        }
    }
    std::vector<PreparedFile> prepared;
    std::string failure;
    if (toFiles && !files.absent &&
        !PrepareFiles(list, first, last, synch, prepared, files, failure)) {
        // The database is let go before the user is told.
        if (db) db->Rollback();
        db.reset();
        prepared.clear();
        dialogs_.MsgBox(failure + "\n" + kNothingChanged, MsgButtons::OK, MsgIcon::Exclamation);
        return abandon(files);
    }
    if (db && !ChangeDatabase(*db, list, first, last, synch, database)) return abandon(database);
    // The database is committed; the files follow.
    bool ok = true;
    for (auto& file : prepared) {
        FileError error;
        if (!CommitExternalFile(file, error)) {
            dialogs_.MsgBox(FileFailureText("Error while writing ",
                                            file.Target().parent_path().string() + "/", error),
                            MsgButtons::OK, MsgIcon::Exclamation);
            files.failed = true;
            ok = false;
        }
    }
    summary();
    return ok;
}

bool frm2ManageUpdate::comExtAddAllClick() {
    const auto& list = source_.list();
    const int n = static_cast<int>(list.size());
    if (n == 0) {
        ShowSummary(kNothingToSend);
        return false;
    }
    if (!CheckGlassesReady(dialogs_, 1, n, list)) return false;
    const std::string q = "Are you sure that you want to export all " + std::to_string(n) +
                          " materials" + " to " + TargetName();
    if (dialogs_.MsgBox(q, MsgButtons::OKCancel, MsgIcon::Question) != MsgAnswer::OK) return false;
    return UpdateTargets(list, 1, n, false);
}

bool frm2ManageUpdate::comExtAddSelClick() {
    const auto& list = source_.list();
    const int n = static_cast<int>(list.size());
    if (n == 0) {
        ShowSummary(kNothingToSend);
        return false;
    }
    int first = 0, last = 0;
    if (!source_.selection || !source_.selection(first, last)) return false;
    first = std::max(first, 1);
    last = std::min(last, n);
    if (first > last) return false;
    if (!CheckGlassesReady(dialogs_, first, last, list)) return false;
    if (first == last) {
        const auto& rec = list[static_cast<size_t>(first - 1)];
        const std::string q = "Are you sure that you want to export " +
                              rec.General.GlassName.Text() + " [" + rec.General.Source.Text() +
                              "]" + " to " + TargetName();
        if (dialogs_.MsgBox(q, MsgButtons::YesNo, MsgIcon::Question) != MsgAnswer::Yes) {
            return false;
        }
    } else {
        const std::string q = "Are you sure that you want to export the selected material[s]" +
                              std::string(" to ") + TargetName();
        if (dialogs_.MsgBox(q, MsgButtons::OKCancel, MsgIcon::Question) != MsgAnswer::OK) {
            return false;
        }
    }
    return UpdateTargets(list, first, last, false);
}

bool frm2ManageUpdate::comExtSynchClick() {
    const auto& list = source_.list();
    const int n = static_cast<int>(list.size());
    if (n == 0) {
        ShowSummary(kNothingToSend);
        return false;
    }
    if (!CheckGlassesReady(dialogs_, 1, n, list)) return false;
    const std::string q = "Are you sure that you want to force " + TargetName() +
                          " to ONLY have these " + std::to_string(n) +
                          " materials as the custom glasses";
    if (dialogs_.MsgBox(q, MsgButtons::OKCancel, MsgIcon::Question) != MsgAnswer::OK) return false;
    return UpdateTargets(list, 1, n, true);
}

bool frm2ManageUpdate::comExtRemoveClick() {
    frmGlassesDelExt form(setup_, dialogs_);
    form.Load();
    if (showRemoval_) showRemoval_(form);
    if (!form.Summary().empty()) summary_ = form.Summary();
    return form.Result();
}

}  // namespace ostrel
