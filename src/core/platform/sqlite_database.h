#pragma once
// The glass database kept in an SQLite file, through SQLite's C API.
#include <memory>
#include <string>

#include "core/platform/database.h"

namespace ostrel {

// Opens the file for reading and writing, shared with other programs. A writer holding
// the file past a short wait gives kDbErrorBusy; a file of another kind (an older Jet
// file, for one) gives kDbErrorNotADb with a message naming the file and what it is; with
// `create` false a missing file is an error. Null on failure.
std::unique_ptr<Database> OpenSqliteDatabase(const std::string& path, bool create, DbError& error);

// Test seam: from this call on, statements are counted across every open database (the
// probe of an open, each begin, commit, read and change; a rollback is never counted nor
// failed), and the k-th fails with kDbErrorInjected. k = 0 only counts.
void FailSqliteStatement(int k);
// The statements counted since the last FailSqliteStatement.
int SqliteStatementsRun();

}  // namespace ostrel
