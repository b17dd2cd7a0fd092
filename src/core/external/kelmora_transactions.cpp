// The glass database's updates, each in a transaction of its own: begun under the write
// lock, committed whole or rolled back and reported.
#include "core/external/kelmora_database.h"
#include "core/platform/sqlite_database.h"

namespace ostrel {

std::unique_ptr<Database> BeginGlassUpdate(const std::string& kelmoraFolder, Dialogs& dialogs,
                                           bool* busy) {
    if (busy) *busy = false;
    DbError error;
    const std::string path = GlassDatabasePath(kelmoraFolder);
    auto db = OpenSqliteDatabase(path, false, error);
    if (db && !db->BeginTrans(error)) db.reset();
    if (db) return db;
    if (error.code == kDbErrorBusy) {
        if (busy) *busy = true;
        dialogs.MsgBox(kMsgDatabaseBusy, MsgButtons::OK, MsgIcon::Exclamation);
    } else {
        dialogs.MsgBox(std::string(kMsgUnableToOpen) + "\n" + path + "\n" + error.message,
                       MsgButtons::OK, MsgIcon::Exclamation);
    }
    return nullptr;
}

std::string DatabaseFailureText(const std::string& head, const DbError& error,
                                const std::string& tail) {
    return head + "\n" + std::to_string(error.code) + "\t" + error.message + "\n" + tail;
}

bool AddGlassesToDatabase(const std::string& kelmoraFolder,
                          const std::vector<MaterialRecord>& records, bool overwrite,
                          Dialogs& dialogs, UpdateCounts* counts) {
    if (counts) *counts = {};
    auto db = BeginGlassUpdate(kelmoraFolder, dialogs);
    UpdateCounts done;
    DbError error;
    if (db && AddGlassRows(*db, records, overwrite, done, error) && db->CommitTrans(error)) {
        if (counts) *counts = done;
        return true;
    }
    if (counts) counts->failed = true;
    if (!db) return false;
    db->Rollback();
    dialogs.MsgBox(DatabaseFailureText(kMsgAddFailed, error, kMsgReturnedToOriginal),
                   MsgButtons::OK, MsgIcon::Exclamation);
    return false;
}

bool DeleteAllCustomRows(const std::string& kelmoraFolder, Dialogs& dialogs,
                         std::set<std::string>* deletedKeys) {
    if (deletedKeys) deletedKeys->clear();
    auto db = BeginGlassUpdate(kelmoraFolder, dialogs);
    if (!db) return false;
    DbError error;
    std::set<std::string> keys;
    if (DeleteCustomRows(*db, deletedKeys ? &keys : nullptr, error) && db->CommitTrans(error)) {
        if (deletedKeys) *deletedKeys = std::move(keys);
        return true;
    }
    db->Rollback();
    dialogs.MsgBox(DatabaseFailureText(kMsgDeleteAllFailed, error, kMsgReturnedToOriginal),
                   MsgButtons::OK, MsgIcon::Exclamation);
    return false;
}

}  // namespace ostrel
