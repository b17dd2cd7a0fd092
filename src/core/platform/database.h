#pragma once
// The glass database as the logic sees it: tables of rows, fields by name and by position,
// equality criteria bound as values (never joined into statement text), seek by a key
// column, add, delete and transactions. The store behind it is SQLite (sqlite_database.h).
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace ostrel {

// A field value: Null, an integer, a floating-point number or a text.
using DbValue = std::variant<std::monostate, int64_t, double, std::string>;

inline bool IsNull(const DbValue& v) {
    return std::holds_alternative<std::monostate>(v);
}
// The value as a number: integers and reals as they are, a text read as a number when it
// is one; ok false for Null or a text that is not a number.
double DbNumber(const DbValue& v, bool& ok);
// The value as text: Null gives "", numbers their shortest exact text.
std::string DbText(const DbValue& v);

// Engine error codes the logic reacts to; other codes are the engine's own.
constexpr int kDbErrorBusy = 5;       // the file is held by another writer
constexpr int kDbErrorNotADb = 26;    // the file is not a database of this store
constexpr int kDbErrorOverflow = -2;  // a value does not fit its column's type
constexpr int kDbErrorInjected = -3;  // a failure injected by a test

struct DbError {
    int code = 0;
    std::string message;
};

// One row read from a table: the table's column names and the values in column order.
class DbRow {
  public:
    DbRow() = default;
    DbRow(std::shared_ptr<const std::vector<std::string>> names, std::vector<DbValue> values)
        : names_(std::move(names)), values_(std::move(values)) {}

    int FieldCount() const { return static_cast<int>(values_.size()); }
    // Position of a column (0-based, the column's ordinal position), -1 when absent. Names
    // compare without regard to case.
    int Position(const std::string& name) const;
    const std::string& Name(int position) const;
    // Null for a column that is not there.
    const DbValue& Field(const std::string& name) const;
    const DbValue& Field(int position) const;
    const std::vector<DbValue>& Values() const { return values_; }

  private:
    std::shared_ptr<const std::vector<std::string>> names_;
    std::vector<DbValue> values_;
};

// Criteria: every column equals its value (AND). An empty list selects every row.
using DbCriteria = std::vector<std::pair<std::string, DbValue>>;

// Named values for a new row; columns left out are Null.
using DbNewRow = std::vector<std::pair<std::string, DbValue>>;

class Database {
  public:
    virtual ~Database() = default;

    virtual bool BeginTrans(DbError& error) = 0;
    virtual bool CommitTrans(DbError& error) = 0;
    // Undoes everything since BeginTrans; quiet when no transaction is open.
    virtual void Rollback() = 0;
    virtual bool InTransaction() const = 0;

    // Column names of a table in ordinal order; false when the table is not there.
    virtual bool Columns(const std::string& table, std::vector<std::string>& names,
                         DbError& error) = 0;
    // The rows meeting the criteria, in the table's order.
    virtual bool FindRows(const std::string& table, const DbCriteria& criteria,
                          std::vector<DbRow>& rows, DbError& error) = 0;
    // The last row in the table's order; `found` false for an empty table.
    virtual bool LastRow(const std::string& table, DbRow& row, bool& found, DbError& error) = 0;
    virtual bool AddRow(const std::string& table, const DbNewRow& values, DbError& error) = 0;
    // A new row from values by position: value i goes to the column at ordinal position i.
    // More values than columns is an error.
    virtual bool AddRowByPosition(const std::string& table, const std::vector<DbValue>& values,
                                  DbError& error) = 0;
    // Deletes the rows meeting the criteria; `deleted` is their number.
    virtual bool DeleteRows(const std::string& table, const DbCriteria& criteria, int& deleted,
                            DbError& error) = 0;
    // Runs fixed statement text that carries no user data (schema creation).
    virtual bool ExecuteScript(const std::string& sql, DbError& error) = 0;
};

// Test hook: when set, each changing or reading step asks it first with the operation's
// name ("add", "delete", "find", "last", "commit") and the table ("" for a commit);
// returning false makes the step fail with kDbErrorInjected.
using DbFaultHook = std::function<bool(const std::string& operation, const std::string& table)>;
void SetDatabaseFaultHook(DbFaultHook hook);
// Asks the hook; true when the step may run.
bool DbStepAllowed(const std::string& operation, const std::string& table, DbError& error);

}  // namespace ostrel
