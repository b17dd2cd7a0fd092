// The glass database's tables, and its file created or opened.
#include "core/external/kelmora_database.h"

#include <filesystem>

#include "core/external/kelmora_columns.h"
#include "core/optics/trans_calcs.h"
#include "core/platform/number_text.h"
#include "core/platform/sqlite_database.h"

namespace ostrel {

using kelmora_columns::Fail;
using kelmora_columns::kDerivedColumns;
using kelmora_columns::kDndtColumns;
using kelmora_columns::kOtherNumberColumns;
using kelmora_columns::kStatusColumn;

namespace {

// Column name and its SQL type, in ordinal order.
std::vector<std::pair<std::string, std::string>> ColumnDefs(bool archive) {
    std::vector<std::pair<std::string, std::string>> c;
    auto add = [&](const std::string& n, const char* t) { c.emplace_back(n, t); };
    add("GlassID", "INTEGER NOT NULL");
    add("s1", "INTEGER");
    add("GlassName", "TEXT");
    add("GlassCode", "INTEGER");
    add("Source", "TEXT");
    add("SchottName", "TEXT");
    add("Polytype", "TEXT");
    for (int i = 1; i <= kPolyCoefCount; ++i) add("C" + std::to_string(i), "REAL");
    add("Density", "REAL");
    add("IndexWvMin", "INTEGER");
    add("IndexWvMax", "INTEGER");
    for (const char* n : kDerivedColumns) add(n, "REAL");
    for (const char* n : kOtherNumberColumns) add(n, "REAL");
    add("REMark", "TEXT");
    add("CC", "TEXT");
    add("Bubble", "REAL");
    add(archive ? "l" : kStatusColumn, "TEXT");
    add("Price", "REAL");
    add("Abrasion", "INTEGER");
    add("StatusECO", "INTEGER");
    add("StatusMold", "INTEGER");
    add("StatusILine", "INTEGER");
    add("StatusMelt", "INTEGER");
    add("DataDate", "REAL");
    for (int i = 0; i < kTransTableSize; ++i) add(TransColumnName(i), "REAL");
    for (int i = 1; i <= 6; ++i) add("TT" + std::to_string(i), "TEXT");
    add("dndttype", "INTEGER");
    for (const char* n : kDndtColumns) add(n, "REAL");
    return c;
}

}  // namespace

const std::vector<std::string>& GlassColumns(bool archive) {
    static const auto make = [](bool a) {
        std::vector<std::string> names;
        for (auto& [n, t] : ColumnDefs(a)) names.push_back(n);
        return names;
    };
    static const std::vector<std::string> current = make(false), arch = make(true);
    return archive ? arch : current;
}

std::string TransColumnName(int i) {
    return "T" + FormatNumber(TransTableWave[static_cast<size_t>(i)], "0");
}

std::string GlassSchemaScript() {
    std::string sql;
    for (bool archive : {false, true}) {
        sql += std::string("CREATE TABLE ") + (archive ? kTableArchive : kTableCurrent) + " (";
        bool first = true;
        for (auto& [n, t] : ColumnDefs(archive)) {
            sql += (first ? "\"" : ", \"") + n + "\" " + t;
            first = false;
        }
        sql += ");\n";
    }
    sql +=
        "CREATE UNIQUE INDEX IDIndex ON GlassData (GlassID);\n"
        "CREATE UNIQUE INDEX ArchiveIDIndex ON Archive (GlassID);\n"
        "CREATE TRIGGER GlassDataIDOnce BEFORE INSERT ON GlassData WHEN EXISTS "
        "(SELECT 1 FROM Archive WHERE GlassID = NEW.GlassID) BEGIN SELECT RAISE(ABORT, "
        "'GlassID already used in Archive'); END;\n"
        "CREATE TRIGGER ArchiveIDOnce BEFORE INSERT ON Archive WHEN EXISTS "
        "(SELECT 1 FROM GlassData WHERE GlassID = NEW.GlassID) BEGIN SELECT RAISE(ABORT, "
        "'GlassID already used in GlassData'); END;\n";
    return sql;
}

std::string GlassDatabasePath(const std::string& kelmoraFolder) {
    return kelmoraFolder + kGlassDatabaseName;
}

std::unique_ptr<Database> CreateGlassDatabase(const std::string& path, DbError& error) {
    std::error_code ec;
    if (std::filesystem::exists(path, ec)) {
        Fail(error, 1, "The file '" + path + "' already exists");
        return nullptr;
    }
    auto db = OpenSqliteDatabase(path, true, error);
    if (!db) return nullptr;
    if (!db->BeginTrans(error) || !db->ExecuteScript(GlassSchemaScript(), error) ||
        !db->CommitTrans(error)) {
        db->Rollback();
        db.reset();
        std::filesystem::remove(path, ec);
        return nullptr;
    }
    return db;
}

std::unique_ptr<Database> OpenGlassDatabase(const std::string& kelmoraFolder, Dialogs& dialogs) {
    DbError error;
    auto db = OpenSqliteDatabase(GlassDatabasePath(kelmoraFolder), false, error);
    if (db) return db;
    if (error.code == kDbErrorBusy) {
        dialogs.MsgBox(kMsgDatabaseInUse, MsgButtons::OK);
    } else {
        dialogs.MsgBox(error.message, MsgButtons::OK);
    }
    return nullptr;
}

std::unique_ptr<Database> OpenGlassDatabaseForUpdate(const std::string& kelmoraFolder,
                                                     Dialogs& dialogs) {
    DbError error;
    const std::string path = GlassDatabasePath(kelmoraFolder);
    auto db = OpenSqliteDatabase(path, false, error);
    if (!db) {
        dialogs.MsgBox(std::string(kMsgUnableToOpen) + "\n" + path + "\n" + error.message,
                       MsgButtons::OK, MsgIcon::Exclamation);
    }
    return db;
}

}  // namespace ostrel
