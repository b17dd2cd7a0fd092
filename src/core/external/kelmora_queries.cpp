// The glass database's queries: the rows of a maker, the next free ID, and the custom
// rows of a material found, added or deleted inside the caller's transaction.
#include <cstdint>

#include "core/external/kelmora_columns.h"
#include "core/external/kelmora_database.h"
#include "core/material/glasses_list.h"

namespace ostrel {

using kelmora_columns::Fail;
using kelmora_columns::Int;
using kelmora_columns::Str;

GlassQueryDef GlassQuery(const std::string& source) {
    GlassQueryDef q;
    q.criteria = {{"Source", Str(source)}};
    q.text = "SELECT ALL * From GlassData  WHERE (GlassData.Source = '" + source + "');";
    return q;
}

bool RunGlassQuery(Database& db, const GlassQueryDef& query, std::vector<DbRow>& rows,
                   DbError& error) {
    return db.FindRows(query.table, query.criteria, rows, error);
}

bool NextGlassID(Database& db, int16_t& id, DbError& error) {
    // The largest ID of both tables: rows moved between the tables leave the last row of
    // either without its largest ID.
    int64_t largest = 0;
    for (const char* table : {kTableCurrent, kTableArchive}) {
        std::vector<DbRow> rows;
        if (!db.FindRows(table, {}, rows, error)) return false;
        for (const auto& row : rows) {
            bool ok = false;
            const double v = DbNumber(row.Field("GlassID"), ok);
            if (ok && v > static_cast<double>(largest)) largest = static_cast<int64_t>(v);
        }
    }
    if (largest + 1 > INT16_MAX) return Fail(error, 6, "Overflow");
    id = static_cast<int16_t>(largest + 1);
    return true;
}

bool DeleteRows(Database& db, const std::string& table, const DbCriteria& criteria, bool& deleted,
                DbError& error) {
    int n = 0;
    deleted = false;
    if (!db.DeleteRows(table, criteria, n, error)) return false;
    deleted = n > 0;
    return true;
}

bool RowsExist(Database& db, const std::string& table, const DbCriteria& criteria, bool& found,
               DbError& error) {
    std::vector<DbRow> rows;
    found = false;
    if (!db.FindRows(table, criteria, rows, error)) return false;
    found = !rows.empty();
    return true;
}

std::string RowMaterialKey(const DbRow& row) {
    // The key is built exactly as the custom list builds it: the texts cut to the record's
    // field width in its code page, trimmed and in upper case.
    static thread_local MaterialRecord probe = ClearedMaterialRecord();
    probe.General.GlassName.Set(DbText(row.Field("GlassName")));
    probe.General.Source.Set(DbText(row.Field("Source")));
    return MaterialKey(probe);
}

bool MaterialRowIds(Database& db, const std::string& table, int16_t kind, const MaterialRecord& rec,
                    std::vector<int64_t>& ids, DbError& error) {
    ids.clear();
    std::vector<DbRow> rows;
    if (!db.FindRows(table, {{"S1", Int(kind)}}, rows, error)) return false;
    const std::string key = MaterialKey(rec);
    for (const auto& row : rows) {
        if (RowMaterialKey(row) != key) continue;
        bool ok = false;
        const double id = DbNumber(row.Field("GlassID"), ok);
        if (ok) ids.push_back(static_cast<int64_t>(id));
    }
    return true;
}

bool FindCustomRows(Database& db, const MaterialRecord& rec, bool rowKind, bool overwrite,
                    bool& proceed, DbError& error, bool* existed) {
    const int16_t kind = rowKind ? kOtherRowKind : kCustomRowKind;
    proceed = false;
    bool found = false;
    for (const char* table : {kTableCurrent, kTableArchive}) {
        std::vector<int64_t> ids;
        if (!MaterialRowIds(db, table, kind, rec, ids, error)) return false;
        found = found || !ids.empty();
        // Leaving, one row in either table is enough to know.
        if (!overwrite) {
            if (found) break;
            continue;
        }
        // Overwriting clears the material from both tables, so that the new row is its
        // only one.
        for (int64_t id : ids) {
            bool deleted = false;
            if (!DeleteRows(db, table, {{"S1", Int(kind)}, {"GlassID", DbValue{id}}}, deleted,
                            error)) {
                return false;
            }
        }
    }
    if (existed) *existed = found;
    proceed = overwrite || !found;
    return true;
}

bool AddGlassRow(Database& db, int16_t id, const MaterialRecord& rec, DbError& error) {
    return db.AddRow(kTableCurrent, WriteGlassRow(id, rec), error);
}

bool AddGlassRows(Database& db, const std::vector<MaterialRecord>& records, bool overwrite,
                  UpdateCounts& counts, DbError& error) {
    counts = {};
    // The next ID is taken under the write lock, so that no other writer takes it too.
    int16_t first = 0;
    if (!NextGlassID(db, first, error)) return false;
    int32_t id = first;
    for (const auto& rec : records) {
        bool proceed = false, existed = false;
        if (!FindCustomRows(db, rec, false, overwrite, proceed, error, &existed)) return false;
        if (!proceed) {
            ++counts.kept;
            continue;
        }
        if (id > INT16_MAX) return Fail(error, 6, "Overflow");
        if (!AddGlassRow(db, static_cast<int16_t>(id), rec, error)) return false;
        ++id;
        ++(existed ? counts.replaced : counts.added);
    }
    return true;
}

bool DeleteCustomRows(Database& db, std::set<std::string>* deletedKeys, DbError& error) {
    if (deletedKeys) deletedKeys->clear();
    const DbCriteria criteria = {{"S1", Int(kCustomRowKind)}};
    for (const char* table : {kTableCurrent, kTableArchive}) {
        std::vector<DbRow> rows;
        bool deleted = false;
        if (deletedKeys && !db.FindRows(table, criteria, rows, error)) return false;
        if (!DeleteRows(db, table, criteria, deleted, error)) return false;
        for (const auto& row : rows) deletedKeys->insert(RowMaterialKey(row));
    }
    return true;
}

}  // namespace ostrel
