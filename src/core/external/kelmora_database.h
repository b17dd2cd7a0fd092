#pragma once
// The catalogue program's glass database, FenmarkExA.mdb in its folder: the tables
// GlassData and Archive, the mapping between a row and a MaterialRecord, and the updates
// that put custom materials into it, each in a transaction of its own.
//
// Custom rows carry s1 = 8; the catalogue program's own rows carry other values and are
// never touched. Every criterion is bound as a value, so names with apostrophes or any
// other character are stored and found like any other.
//
// A custom material has one row in the two tables together. Its rows are found by the
// custom list's key: name and source trimmed and compared without regard to case, so
// "f2/mylab" finds the row of "F2/MYLAB".
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "core/external/update_summary.h"
#include "core/material/material_record.h"
#include "core/platform/database.h"
#include "core/platform/dialogs.h"

namespace ostrel {

inline constexpr const char* kGlassDatabaseName = "FenmarkExA.mdb";
inline constexpr const char* kTableCurrent = "GlassData";
inline constexpr const char* kTableArchive = "Archive";
inline constexpr int16_t kCustomRowKind = 8;
inline constexpr int16_t kOtherRowKind = 9;

inline constexpr const char* kMsgDatabaseInUse =
    "The database file 'FenmarkExA.MDB' is already open.  Please close Kelmora, and try again";
inline constexpr const char* kMsgUnableToOpen = "Unable to open database in path:";
inline constexpr const char* kMsgAddFailed = "Error while adding data to database.";
inline constexpr const char* kMsgDeleteAllFailed =
    "Error while removed old copeis of user defined glasses from database.";
inline constexpr const char* kMsgReturnedToOriginal =
    "Database has been returned to original state!";
inline constexpr const char* kMsgDatabaseBusy =
    "The KelmoraTD database is in use by another program. Nothing was changed.";

// The column names of GlassData in ordinal order; Archive has the same with its status
// column named "l".
const std::vector<std::string>& GlassColumns(bool archive);
// Name of the transmission column of TransTableWave[i]: "T" and the wavelength as "0".
std::string TransColumnName(int i);
// The statements creating both tables, their indexes and the rule that a GlassID is used
// once across the two tables.
std::string GlassSchemaScript();

// The database file of a folder.
std::string GlassDatabasePath(const std::string& kelmoraFolder);
// Creates a new database file with empty tables (the file must not exist).
std::unique_ptr<Database> CreateGlassDatabase(const std::string& path, DbError& error);

// Opens the database for a reading form. On failure shows the in-use message (file held by
// another writer) or the engine's text, and returns null.
std::unique_ptr<Database> OpenGlassDatabase(const std::string& kelmoraFolder, Dialogs& dialogs);
// Opens the database for an update. On failure shows "Unable to open database in path:",
// the path and the engine's text, with an exclamation mark, and returns null.
std::unique_ptr<Database> OpenGlassDatabaseForUpdate(const std::string& kelmoraFolder,
                                                     Dialogs& dialogs);

// Opens the database for an update and begins its transaction, taking the write lock
// first (waiting a few seconds for another program's write to end), so that a busy
// database is known before anything else is changed. On failure shows the busy message,
// or "Unable to open database in path:", the path and the engine's text, and returns null;
// `busy` (when given) says which.
std::unique_ptr<Database> BeginGlassUpdate(const std::string& kelmoraFolder, Dialogs& dialogs,
                                           bool* busy = nullptr);

// The rows of one maker in GlassData.
struct GlassQueryDef {
    std::string table = kTableCurrent;
    DbCriteria criteria;
    // The query as text, for display: "SELECT ALL * From GlassData  WHERE (...);".
    std::string text;
};
GlassQueryDef GlassQuery(const std::string& source);
bool RunGlassQuery(Database& db, const GlassQueryDef& query, std::vector<DbRow>& rows,
                   DbError& error);

// "  Available?", "  Eco", "  Obsolete", "  Recommended" for a status beginning with A, E,
// O, R; any other text unchanged.
std::string StatusText(const std::string& status);

// A row into a record (the record is not cleared first: start from a cleared one). False
// when a number column that must hold a value is Null.
bool ReadGlassRow(const DbRow& row, MaterialRecord& rec, DbError& error);
// The values of a new row for a record, derived columns recomputed from its polynomial.
DbNewRow WriteGlassRow(int16_t id, const MaterialRecord& rec);
// Null for a blank text; otherwise the number (numeric) or the trimmed text.
DbValue TextToField(const std::string& text, bool numeric);

// The next free GlassID: one above the largest in both tables. Fails when it would pass
// 32767.
bool NextGlassID(Database& db, int16_t& id, DbError& error);

bool DeleteRows(Database& db, const std::string& table, const DbCriteria& criteria, bool& deleted,
                DbError& error);
bool RowsExist(Database& db, const std::string& table, const DbCriteria& criteria, bool& found,
               DbError& error);
// The material key of a row: its name and source as the custom list compares them.
std::string RowMaterialKey(const DbRow& row);
// The GlassIDs of the rows of a table with s1 = kind that hold the material (by key).
bool MaterialRowIds(Database& db, const std::string& table, int16_t kind, const MaterialRecord& rec,
                    std::vector<int64_t>& ids, DbError& error);
// The check before an add. Overwriting, the custom rows of the material are deleted from
// both tables and proceed is true. Leaving, proceed is true only when the material is in
// neither table. `existed` (when given) says whether the material was there.
bool FindCustomRows(Database& db, const MaterialRecord& rec, bool rowKind, bool overwrite,
                    bool& proceed, DbError& error, bool* existed = nullptr);
bool AddGlassRow(Database& db, int16_t id, const MaterialRecord& rec, DbError& error);

// Adds the records inside the caller's transaction; `counts` takes the materials added,
// replaced and left unchanged. False at the first failure (the caller rolls back).
bool AddGlassRows(Database& db, const std::vector<MaterialRecord>& records, bool overwrite,
                  UpdateCounts& counts, DbError& error);
// Deletes every custom row of both tables inside the caller's transaction; `deletedKeys`
// (when given) takes the material keys of the rows deleted.
bool DeleteCustomRows(Database& db, std::set<std::string>* deletedKeys, DbError& error);

// Adds the records in one transaction; any failure rolls back everything of this update
// (deletions made for overwriting included) and is reported. `counts` (when given) takes
// the materials added, replaced and left unchanged, or the failure.
bool AddGlassesToDatabase(const std::string& kelmoraFolder,
                          const std::vector<MaterialRecord>& records, bool overwrite,
                          Dialogs& dialogs, UpdateCounts* counts = nullptr);
// Deletes every custom row of both tables in one transaction; reported on failure.
// `deletedKeys` (when given) takes the material keys of the rows deleted.
bool DeleteAllCustomRows(const std::string& kelmoraFolder, Dialogs& dialogs,
                         std::set<std::string>* deletedKeys = nullptr);

// The failure text of an update: head, line end, code, tab, description, line end, tail.
std::string DatabaseFailureText(const std::string& head, const DbError& error,
                                const std::string& tail);

}  // namespace ostrel
