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

}  // namespace ostrel
