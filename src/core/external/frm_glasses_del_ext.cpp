#include "core/external/frm_glasses_del_ext.h"

#include "core/external/external_file.h"
#include "core/external/kelmora_database.h"
#include "core/external/update_summary.h"
#include "core/platform/text.h"

namespace ostrel {

frmGlassesDelExt::frmGlassesDelExt(Bas1Setup& setup, Dialogs& dialogs)
    : setup_(setup), dialogs_(dialogs) {}

void frmGlassesDelExt::Load() {
    loading_ = true;
    result_ = false;
    closed_ = false;
    target_ = 0;
    optUpdateProg[0].value = true;
    optUpdateProg[1].value = false;
    ListFileGlasses();
    loading_ = false;
}

void frmGlassesDelExt::optUpdateProgClick(int index) {
    if (loading_ || index < 0 || index > 1) return;
    target_ = index;
    optUpdateProg[0].value = index == 0;
    optUpdateProg[1].value = index == 1;
    if (index == 1) {
        ListDatabaseGlasses();
        lblProg.caption = "Select materials to remove from KelmoraTD database";
    } else {
        ListFileGlasses();
        lblProg.caption = "Select materials to remove from Lumbrak3D/Sextane databases";
    }
}

void frmGlassesDelExt::FillFromList() {
    lstGlasses.Clear();
    for (const auto& rec : externalList_) {
        lstGlasses.AddItem(rec.GlassName.Text() + "/" + rec.Source.Text());
    }
}

void frmGlassesDelExt::ListFileGlasses() {
    externalList_.clear();
    lstGlasses.Clear();
    if (!setup_.GetLumbrakFound()) return;
    bool present = false;
    FileError error;
    if (!ReadExternalRecords(setup_.GetPathLumbrak(), externalList_, present, error)) {
        externalList_.clear();
    }
    FillFromList();
}

void frmGlassesDelExt::ListDatabaseGlasses() {
    externalList_.clear();
    lstGlasses.Clear();
    if (!setup_.GetKelmoraFound()) return;
    auto db = OpenGlassDatabaseForUpdate(setup_.GetPathKelmora(), dialogs_);
    if (!db) return;
    const DbCriteria custom = {{"S1", DbValue{int64_t{kCustomRowKind}}}};
    for (const char* table : {kTableCurrent, kTableArchive}) {
        std::vector<DbRow> rows;
        DbError error;
        if (!db->FindRows(table, custom, rows, error)) {
            dialogs_.MsgBox(error.message, MsgButtons::OK, MsgIcon::Exclamation);
            return;
        }
        const int64_t mark = table == std::string(kTableArchive) ? kArchiveMark : 0;
        for (const auto& row : rows) {
            bool ok = false;
            const auto id = static_cast<int64_t>(DbNumber(row.Field("GlassID"), ok));
            lstGlasses.AddItem(VbTrimCopy(DbText(row.Field("GlassName"))) + "/" +
                                   VbTrimCopy(DbText(row.Field("Source"))),
                               id + mark);
        }
    }
}

bool frmGlassesDelExt::RemoveSelected() {
    summary_.clear();
    if (target_ == 1) return RemoveFromDatabase();
    std::vector<ExternalRecord> keep;
    for (size_t i = 0; i < externalList_.size(); ++i) {
        if (!lstGlasses.Selected(static_cast<int>(i))) keep.push_back(externalList_[i]);
    }
    if (keep.size() == externalList_.size()) return false;
    UpdateCounts counts;
    // An emptied list leaves the file as it stands: the last entries are not removed.
    if (!keep.empty()) counts.removed = static_cast<int>(externalList_.size() - keep.size());
    // Both files are made ready before either is put in place: a file that cannot be
    // written leaves both folders as they were.
    const std::pair<bool, std::string> folders[] = {
        {setup_.GetLumbrakFound(), setup_.GetPathLumbrak()},
        {setup_.GetSextaneFound(), setup_.GetPathSextane()}};
    std::vector<PreparedFile> files;
    FileError error;
    for (const auto& [present, folder] : folders) {
        if (!present) continue;
        files.emplace_back();
        if (!PrepareExternalFile(folder, keep, files.back(), error)) {
            dialogs_.MsgBox("Error while writing " + folder + kExternalFileName + "\n" +
                                std::to_string(error.code) + "\t" + error.message +
                                "\nNothing was changed.",
                            MsgButtons::OK, MsgIcon::Exclamation);
            counts = {};
            counts.failed = true;
            summary_ = SummaryPart(kSummaryLumbrak, counts);
            return false;
        }
    }
    for (auto& file : files) {
        if (!CommitExternalFile(file, error)) {
            dialogs_.MsgBox("Error while writing " + file.Target().string() + "\n" +
                                std::to_string(error.code) + "\t" + error.message,
                            MsgButtons::OK, MsgIcon::Exclamation);
            counts.failed = true;
        }
    }
    externalList_ = keep;
    summary_ = SummaryPart(kSummaryLumbrak, counts);
    FillFromList();
    return true;
}

// The entry's row goes, and with it any other custom row of the same material (name and
// source compared as the custom list compares them) that an older version left in either
// table: a material removed is gone from the database whatever the case of its rows.
bool frmGlassesDelExt::RemoveRow(Database& db, int64_t id, DbError& error) {
    if (id > kArchiveMark) id -= kArchiveMark;
    const DbValue custom{int64_t{kCustomRowKind}};
    std::vector<DbRow> rows;
    for (const char* table : {kTableCurrent, kTableArchive}) {
        if (!db.FindRows(table, {{"S1", custom}, {"GlassID", DbValue{id}}}, rows, error))
            return false;
        if (!rows.empty()) break;
    }
    if (rows.empty()) return true;
    MaterialRecord rec = ClearedMaterialRecord();
    rec.General.GlassName.Set(DbText(rows.front().Field("GlassName")));
    rec.General.Source.Set(DbText(rows.front().Field("Source")));
    for (const char* table : {kTableCurrent, kTableArchive}) {
        std::vector<int64_t> ids;
        if (!MaterialRowIds(db, table, kCustomRowKind, rec, ids, error)) return false;
        for (int64_t same : ids) {
            bool deleted = false;
            if (!DeleteRows(db, table, {{"S1", custom}, {"GlassID", DbValue{same}}}, deleted,
                            error)) {
                return false;
            }
        }
    }
    return true;
}

bool frmGlassesDelExt::RemoveFromDatabase() {
    UpdateCounts counts;
    counts.failed = true;
    summary_ = SummaryPart(kSummaryKelmora, counts);
    bool busy = false;
    auto db = BeginGlassUpdate(setup_.GetPathKelmora(), dialogs_, &busy);
    if (!db) {
        counts.failed = !busy;
        counts.busy = busy;
        summary_ = SummaryPart(kSummaryKelmora, counts);
        return false;
    }
    DbError error;
    bool ok = true;
    for (int index : lstGlasses.SelectedIndexes()) {
        if (!ok) break;
        ok = RemoveRow(*db, lstGlasses.ItemData(index), error);
    }
    if (ok) ok = db->CommitTrans(error);
    if (ok) {
        counts = {};
        counts.removed = static_cast<int>(lstGlasses.SelectedIndexes().size());
        summary_ = SummaryPart(kSummaryKelmora, counts);
        return true;
    }
    db->Rollback();
    dialogs_.MsgBox(DatabaseFailureText(kMsgRemoveFailed, error, kMsgReturnedToOriginal),
                    MsgButtons::OK, MsgIcon::Exclamation);
    return false;
}

std::string frmGlassesDelExt::RemoveQuestion() const {
    const auto selected = lstGlasses.SelectedIndexes();
    const std::string target = target_ == 1 ? "KelmoraTD" : "Lumbrak3D/Sextane";
    if (selected.size() == 1) {
        return "Are you sure that you want to remove " + lstGlasses.List(selected.front()) +
               " from " + target;
    }
    std::string q = "Are you sure that you want to remove these " +
                    std::to_string(selected.size()) + " materials from " + target + ":";
    for (int index : selected) q += "\n" + lstGlasses.List(index);
    return q;
}

void frmGlassesDelExt::comDelSelClick() {
    if (!lstGlasses.SelectedIndexes().empty() &&
        dialogs_.MsgBox(RemoveQuestion(), MsgButtons::YesNo, MsgIcon::Question) != MsgAnswer::Yes) {
        return;
    }
    result_ = RemoveSelected();
    if (!summary_.empty()) dialogs_.HelpNote(summary_, false);
    closed_ = true;
}

void frmGlassesDelExt::comCancelClick() {
    result_ = false;
    closed_ = true;
}

}  // namespace ostrel
