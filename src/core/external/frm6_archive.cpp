#include "core/external/frm6_archive.h"

#include <algorithm>
#include <set>
#include <utility>

#include "core/external/kelmora_database.h"
#include "core/external/update_summary.h"
#include "core/platform/number_text.h"
#include "core/platform/text.h"

namespace ostrel {

namespace {

void SetUpGrid(Grid& g) {
    g.SetMaxCols(5);
    const char* titles[] = {"ID", "Material", "Source", "Code", "Status"};
    for (int c = 1; c <= 5; ++c) {
        if (c == 1 || c == 4) {
            g.SetColumnFloat(c, 0);
        } else {
            g.SetColumnText(c);
        }
        g.SetColumnTitle(c, titles[c - 1]);
        g.SetColumnLocked(c, true);
    }
}

bool MultiRowSelection(const Grid& g) {
    const auto& blocks = g.Selection();
    if (blocks.size() > 1) return true;
    return blocks.size() == 1 &&
           (blocks.front().row1 < 1 || blocks.front().row1 != blocks.front().row2);
}

// The id in column 1 of a row; false when the cell holds no number.
bool RowId(const Grid& g, int row, int64_t& id) {
    const std::string t = VbTrimCopy(g.Text(1, row));
    if (t.empty() || !IsValidNumber(t)) return false;
    id = static_cast<int64_t>(g.Value(1, row));
    return true;
}

}  // namespace

frm6Archive::frm6Archive(Bas1Setup& setup, Dialogs& dialogs, std::function<void()> close)
    : setup_(setup), dialogs_(dialogs), close_(std::move(close)) {
    form.visible = false;
    cmbSortOrder.SetItems(
        {"Sort by ID", "Sort by Material", "Sort by Source", "Sort by Code", "Sort by Status!"});
    cmbSortOrder.SetListIndex(0);
}

bool frm6Archive::Load() {
    loading_ = true;
    db_ = OpenGlassDatabase(setup_.GetPathKelmora(), dialogs_);
    if (!db_) return false;
    SetUpGrid(ssGlassCurr);
    SetUpGrid(ssGlassArchive);
    LoadCurrent();
    LoadArchive();
    loading_ = false;
    return true;
}

void frm6Archive::Unload() {
    if (db_) db_->Rollback();
    db_.reset();
}

void frm6Archive::Display() {
    if (!Load()) {
        // The open failed and said why; the tool button goes back up.
        if (close_) close_();
        return;
    }
    form.visible = true;
}

void frm6Archive::ForceUnload() {
    Unload();
    form.visible = false;
}

void frm6Archive::comOKClick() {
    if (close_) {
        close_();
    } else {
        ForceUnload();
    }
}

void frm6Archive::Fill(Grid& grid, const std::string& table, const std::string& statusColumn,
                       const std::string& lead) {
    std::vector<DbRow> rows;
    DbError error;
    if (db_ && !db_->FindRows(table, {}, rows, error)) {
        dialogs_.MsgBox(error.message, MsgButtons::OK, MsgIcon::Exclamation);
        rows.clear();
    }
    std::string clip;
    for (const auto& row : rows) {
        if (!clip.empty()) clip += "\n";
        clip += DbText(row.Field("GlassID")) + "\t" + lead + DbText(row.Field("GlassName")) + "\t" +
                lead + DbText(row.Field("Source")) + "\t" + DbText(row.Field("GlassCode")) + "\t" +
                StatusText(DbText(row.Field(statusColumn)));
    }
    grid.SetRedraw(false);
    grid.SetMaxRows(static_cast<int>(rows.size()));
    grid.ClearAll();
    if (!rows.empty()) grid.SetClip(1, 1, clip);
    std::vector<SortKey> keys{{sortColumn_, true}};
    if (sortColumn_ == 5) keys.push_back({2, true});
    grid.Sort(1, grid.MaxRows(), keys);
    grid.SetRedraw(true);
}

void frm6Archive::LoadCurrent() {
    Fill(ssGlassCurr, kTableCurrent, "Status", "  ");
}
void frm6Archive::LoadArchive() {
    Fill(ssGlassArchive, kTableArchive, "l", " ");
}

void frm6Archive::SortGrids() {
    std::vector<SortKey> keys{{sortColumn_, true}};
    if (sortColumn_ == 5) keys.push_back({2, true});
    ssGlassCurr.Sort(1, ssGlassCurr.MaxRows(), keys);
    ssGlassArchive.Sort(1, ssGlassArchive.MaxRows(), keys);
}

void frm6Archive::cmbSortOrderClick() {
    if (loading_) return;
    sortColumn_ = std::clamp(cmbSortOrder.listIndex() + 1, 1, 5);
    SortGrids();
}

void frm6Archive::ssGlassCurrClick(int, int row) {
    currRow_ = row;
}
void frm6Archive::ssGlassArchiveClick(int, int row) {
    archiveRow_ = row;
}

bool frm6Archive::IsProtectedGlass(int64_t id, bool& isProtected, DbError& error) {
    isProtected = false;
    std::vector<DbRow> rows;
    if (!db_->FindRows(kTableCurrent, {{"GlassID", DbValue{id}}}, rows, error)) return false;
    if (rows.empty()) return true;
    const std::string key = RowMaterialKey(rows.front());
    isProtected = key == "K7|SCHOTT" || key == "F2|SCHOTT";
    return true;
}

bool frm6Archive::Move(const std::string& from, const std::string& to, int64_t id, DbError& error) {
    std::vector<DbRow> rows;
    if (!db_->FindRows(from, {{"GlassID", DbValue{id}}}, rows, error)) return false;
    if (rows.empty()) {
        error = {3021, "No current record."};
        return false;
    }
    int deleted = 0;
    // The row leaves its table before it enters the other, so that its GlassID stands in
    // one table at every step; the transaction makes the two steps one.
    if (!db_->DeleteRows(from, {{"GlassID", DbValue{id}}}, deleted, error)) return false;
    // A custom material has one row: a custom row of the same material already in the
    // target table (left there by an older version) gives way to the one moved.
    bool ownKind = false;
    if (DbNumber(rows.front().Field("s1"), ownKind) == kCustomRowKind && ownKind) {
        const DbCriteria custom = {{"S1", DbValue{int64_t{kCustomRowKind}}}};
        std::vector<DbRow> there;
        if (!db_->FindRows(to, custom, there, error)) return false;
        const std::string key = RowMaterialKey(rows.front());
        for (const auto& row : there) {
            if (RowMaterialKey(row) != key) continue;
            DbCriteria same = custom;
            same.emplace_back("GlassID", row.Field("GlassID"));
            if (!db_->DeleteRows(to, same, deleted, error)) return false;
        }
    }
    return db_->AddRowByPosition(to, rows.front().Values(), error);
}

bool frm6Archive::MoveToArchive(int64_t id, DbError& error) {
    return Move(kTableCurrent, kTableArchive, id, error);
}

bool frm6Archive::MoveToCurrent(int64_t id, DbError& error) {
    return Move(kTableArchive, kTableCurrent, id, error);
}

void frm6Archive::Refresh() {
    LoadCurrent();
    LoadArchive();
}

frm6Archive::Pick frm6Archive::Picked(const Grid& grid, int row) {
    Pick pick;
    int64_t id = 0;
    for (const auto& b : grid.Selection()) {
        // A first row of -1 is the whole grid.
        const int first = b.row1 < 1 ? 1 : b.row1;
        const int last = b.row1 < 1 || b.row2 < 1 ? grid.MaxRows() : b.row2;
        for (int r = first; r <= std::min(last, grid.MaxRows()); ++r)
            if (RowId(grid, r, id)) pick.ids.push_back(id);
    }
    if (row >= 1 && row <= grid.MaxRows() && RowId(grid, row, id)) pick.rowId = id;
    return pick;
}

void frm6Archive::Repick(Grid& grid, const Pick& pick, int& row) {
    const std::set<int64_t> ids(pick.ids.begin(), pick.ids.end());
    std::vector<GridBlock> blocks;
    row = 0;
    int64_t id = 0;
    for (int r = 1; r <= grid.MaxRows(); ++r) {
        if (!RowId(grid, r, id)) continue;
        if (id == pick.rowId) row = r;
        if (!ids.count(id)) continue;
        // Rows next to one another make one block.
        if (!blocks.empty() && blocks.back().row2 == r - 1) {
            blocks.back().row2 = r;
        } else {
            blocks.push_back({1, r, grid.MaxCols(), r});
        }
    }
    grid.SetSelections(std::move(blocks));
    grid.SetActiveCell(1, row);
}

bool frm6Archive::MoveCommand(Grid& grid, int singleRow, bool archive) {
    if (!db_) return false;
    // Both grids keep their choice on the same glasses: the one that moved leaves no row
    // chosen behind it, so that a second press moves nothing more.
    const Pick curr = Picked(ssGlassCurr, currRow_);
    const Pick arch = Picked(ssGlassArchive, archiveRow_);
    int moved = 0;
    const bool ok = MoveRows(grid, singleRow, archive, moved);
    if (!ok && moved < 0) return false;  // cancelled: nothing moved, nothing refilled
    Repick(ssGlassCurr, curr, currRow_);
    Repick(ssGlassArchive, arch, archiveRow_);
    UpdateCounts counts;
    counts.failed = !ok && !busy_;
    counts.busy = busy_;
    if (ok) (archive ? counts.archived : counts.restored) = moved;
    summary_ = SummaryPart(kSummaryKelmora, counts);
    dialogs_.HelpNote(summary_, false);
    return ok;
}

// Moves the chosen rows in one transaction; `moved` counts them, and is -1 when the user
// cancelled. The transaction takes the write lock first, and every question and failure
// message comes while the database is not held.
bool frm6Archive::MoveRows(Grid& grid, int singleRow, bool archive, int& moved) {
    BusyPointer busy(dialogs_);
    moved = 0;
    busy_ = false;
    // The rows to move: those of the selected blocks, or the row last clicked.
    std::vector<int> rows;
    if (MultiRowSelection(grid)) {
        const auto blocks = grid.Selection();
        const bool everything = std::any_of(blocks.begin(), blocks.end(),
                                            [](const GridBlock& b) { return b.row1 < 1; });
        if (archive && everything &&
            dialogs_.MsgBox(kMsgArchiveAll, MsgButtons::OKCancel, MsgIcon::Question) ==
                MsgAnswer::Cancel) {
            moved = -1;
            return false;
        }
        for (const auto& block : blocks) {
            const int first = std::max(block.row1, 1);
            const int last = block.row2 < 1 ? grid.MaxRows() : block.row2;
            for (int row = first; row <= last && row <= grid.MaxRows(); ++row) rows.push_back(row);
        }
    } else if (singleRow >= 1 && singleRow <= grid.MaxRows()) {
        rows.push_back(singleRow);
    }
    std::vector<int64_t> ids;
    for (int row : rows) {
        int64_t id = 0;
        if (RowId(grid, row, id)) ids.push_back(id);
    }
    if (ids.empty()) return true;

    DbError error;
    if (!db_->BeginTrans(error)) {
        busy_ = error.code == kDbErrorBusy;
        dialogs_.MsgBox(busy_ ? std::string(kMsgDatabaseBusy)
                              : std::string(archive ? kMsgArchiveFailed : kMsgRestoreFailed) +
                                    "\n" + std::to_string(error.code) + "\t" + error.message,
                        MsgButtons::OK, MsgIcon::Exclamation);
        return false;
    }
    bool ok = true;
    for (size_t i = 0; ok && i < ids.size(); ++i) {
        bool isProtected = false;
        ok = !archive || IsProtectedGlass(ids[i], isProtected, error);
        if (ok && isProtected) continue;
        ok = ok && (archive ? MoveToArchive(ids[i], error) : MoveToCurrent(ids[i], error));
        if (ok) ++moved;
    }
    ok = ok && db_->CommitTrans(error);
    if (!ok) {
        db_->Rollback();
        moved = 0;
        dialogs_.MsgBox(std::string(archive ? kMsgArchiveFailed : kMsgRestoreFailed) + "\n" +
                            std::to_string(error.code) + "\t" + error.message,
                        MsgButtons::OK, MsgIcon::Exclamation);
    }
    Refresh();
    return ok;
}

bool frm6Archive::comArchiveClick() {
    return MoveCommand(ssGlassCurr, currRow_, true);
}
bool frm6Archive::comDeArchiveClick() {
    return MoveCommand(ssGlassArchive, archiveRow_, false);
}

}  // namespace ostrel
