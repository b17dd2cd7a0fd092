#include "core/platform/sqlite_database.h"

#include <sqlite3.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>

namespace ostrel {

namespace {

// How long a statement waits for another program's write to end before the database
// counts as busy.
constexpr int kBusyTimeoutMs = 3000;

struct StatementFault {
    int failAt = 0;
    int run = 0;
};

StatementFault& Fault() {
    static StatementFault fault;
    return fault;
}

// Counts one statement; false (with the error) for the one the test seam fails.
bool StatementAllowed(DbError& error) {
    StatementFault& f = Fault();
    if (++f.run != f.failAt) return true;
    error.code = kDbErrorInjected;
    error.message = "Injected failure of statement " + std::to_string(f.run);
    return false;
}

std::string Quoted(const std::string& identifier) {
    std::string out = "\"";
    for (char c : identifier) {
        out += c;
        if (c == '"') out += '"';
    }
    return out + "\"";
}

// What a file that is not an SQLite database is, from its first bytes; "" for SQLite or
// an empty file.
std::string ForeignKind(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    char head[32] = {};
    in.read(head, sizeof head);
    const auto n = in.gcount();
    if (n == 0) return {};
    if (n >= 16 && std::memcmp(head, "SQLite format 3", 16) == 0) return {};
    if (n >= 19 && (std::memcmp(head + 4, "Standard Jet DB", 15) == 0 ||
                    std::memcmp(head + 4, "Standard ACE DB", 15) == 0)) {
        return "a database of the older Jet engine, not an SQLite database";
    }
    return "not an SQLite database";
}

class Statement {
  public:
    Statement(sqlite3* db, const std::string& sql) {
        rc_ = sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt_, nullptr);
    }
    ~Statement() { sqlite3_finalize(stmt_); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    bool ok() const { return rc_ == SQLITE_OK; }
    sqlite3_stmt* get() const { return stmt_; }

    void Bind(int index, const DbValue& v) {
        if (const auto* i = std::get_if<int64_t>(&v)) {
            sqlite3_bind_int64(stmt_, index, *i);
        } else if (const auto* d = std::get_if<double>(&v)) {
            sqlite3_bind_double(stmt_, index, *d);
        } else if (const auto* s = std::get_if<std::string>(&v)) {
            sqlite3_bind_text(stmt_, index, s->data(), static_cast<int>(s->size()),
                              SQLITE_TRANSIENT);
        } else {
            sqlite3_bind_null(stmt_, index);
        }
    }

    DbValue Column(int i) const {
        switch (sqlite3_column_type(stmt_, i)) {
            case SQLITE_INTEGER:
                return DbValue{static_cast<int64_t>(sqlite3_column_int64(stmt_, i))};
            case SQLITE_FLOAT:
                return DbValue{sqlite3_column_double(stmt_, i)};
            case SQLITE_TEXT:
            case SQLITE_BLOB: {
                const auto* p = static_cast<const char*>(sqlite3_column_blob(stmt_, i));
                const int n = sqlite3_column_bytes(stmt_, i);
                return DbValue{std::string(p ? p : "", static_cast<size_t>(n))};
            }
            default:
                return DbValue{};
        }
    }

  private:
    sqlite3_stmt* stmt_ = nullptr;
    int rc_ = SQLITE_ERROR;
};

class SqliteDatabase : public Database {
  public:
    explicit SqliteDatabase(sqlite3* db) : db_(db) {}
    ~SqliteDatabase() override {
        if (inTrans_) Rollback();
        sqlite3_close_v2(db_);
    }

    bool BeginTrans(DbError& error) override {
        if (inTrans_) return Fail(error, SQLITE_ERROR, "A transaction is already open");
        if (!Exec("BEGIN IMMEDIATE", error)) return false;
        inTrans_ = true;
        return true;
    }

    bool CommitTrans(DbError& error) override {
        if (!inTrans_) return Fail(error, SQLITE_ERROR, "No transaction is open");
        if (!DbStepAllowed("commit", "", error)) return false;
        if (!Exec("COMMIT", error)) return false;
        inTrans_ = false;
        return true;
    }

    void Rollback() override {
        if (!inTrans_) return;
        sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
        inTrans_ = false;
    }

    bool InTransaction() const override { return inTrans_; }

    bool Columns(const std::string& table, std::vector<std::string>& names,
                 DbError& error) override {
        auto cols = ColumnList(table, error);
        if (!cols) return false;
        names = *cols;
        return true;
    }

    bool FindRows(const std::string& table, const DbCriteria& criteria, std::vector<DbRow>& rows,
                  DbError& error) override {
        rows.clear();
        if (!DbStepAllowed("find", table, error)) return false;
        if (!StatementAllowed(error)) return false;
        auto cols = ColumnList(table, error);
        if (!cols) return false;
        Statement st(db_, "SELECT * FROM " + Quoted(table) + Where(criteria) + " ORDER BY rowid");
        if (!st.ok()) return Engine(error);
        BindCriteria(st, criteria, 1);
        return Collect(st, cols, rows, error);
    }

    bool LastRow(const std::string& table, DbRow& row, bool& found, DbError& error) override {
        found = false;
        if (!DbStepAllowed("last", table, error)) return false;
        if (!StatementAllowed(error)) return false;
        auto cols = ColumnList(table, error);
        if (!cols) return false;
        Statement st(db_, "SELECT * FROM " + Quoted(table) + " ORDER BY rowid DESC LIMIT 1");
        if (!st.ok()) return Engine(error);
        std::vector<DbRow> rows;
        if (!Collect(st, cols, rows, error)) return false;
        if (!rows.empty()) {
            row = rows.front();
            found = true;
        }
        return true;
    }

    bool AddRow(const std::string& table, const DbNewRow& values, DbError& error) override {
        if (!DbStepAllowed("add", table, error)) return false;
        if (!StatementAllowed(error)) return false;
        std::string names, marks;
        for (size_t i = 0; i < values.size(); ++i) {
            names += (i ? "," : "") + Quoted(values[i].first);
            marks += (i ? ",?" : "?");
        }
        const std::string sql = values.empty() ? "INSERT INTO " + Quoted(table) + " DEFAULT VALUES"
                                               : "INSERT INTO " + Quoted(table) + " (" + names +
                                                     ") VALUES (" + marks + ")";
        Statement st(db_, sql);
        if (!st.ok()) return Engine(error);
        for (size_t i = 0; i < values.size(); ++i)
            st.Bind(static_cast<int>(i + 1), values[i].second);
        return Step(st, error);
    }

    bool AddRowByPosition(const std::string& table, const std::vector<DbValue>& values,
                          DbError& error) override {
        auto cols = ColumnList(table, error);
        if (!cols) return false;
        if (values.size() > cols->size()) {
            return Fail(error, SQLITE_RANGE,
                        "Item not found in this collection: table " + table + " has " +
                            std::to_string(cols->size()) + " columns, the row " +
                            std::to_string(values.size()));
        }
        DbNewRow named;
        for (size_t i = 0; i < values.size(); ++i) named.emplace_back((*cols)[i], values[i]);
        return AddRow(table, named, error);
    }

    bool DeleteRows(const std::string& table, const DbCriteria& criteria, int& deleted,
                    DbError& error) override {
        deleted = 0;
        if (!DbStepAllowed("delete", table, error)) return false;
        if (!StatementAllowed(error)) return false;
        Statement st(db_, "DELETE FROM " + Quoted(table) + Where(criteria));
        if (!st.ok()) return Engine(error);
        BindCriteria(st, criteria, 1);
        if (!Step(st, error)) return false;
        deleted = sqlite3_changes(db_);
        return true;
    }

    bool ExecuteScript(const std::string& sql, DbError& error) override {
        columnCache_.clear();
        return Exec(sql, error);
    }

  private:
    static bool Fail(DbError& error, int code, std::string message) {
        error.code = code;
        error.message = std::move(message);
        return false;
    }
    bool Engine(DbError& error) const {
        return Fail(error, sqlite3_extended_errcode(db_) & 0xff, sqlite3_errmsg(db_));
    }

    bool Exec(const std::string& sql, DbError& error) {
        if (!StatementAllowed(error)) return false;
        char* msg = nullptr;
        const int rc = sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &msg);
        if (rc == SQLITE_OK) return true;
        Fail(error, rc & 0xff, msg ? msg : sqlite3_errstr(rc));
        sqlite3_free(msg);
        return false;
    }

    bool Step(Statement& st, DbError& error) {
        const int rc = sqlite3_step(st.get());
        if (rc == SQLITE_DONE || rc == SQLITE_ROW) return true;
        return Engine(error);
    }

    bool Collect(Statement& st, const std::shared_ptr<const std::vector<std::string>>& cols,
                 std::vector<DbRow>& rows, DbError& error) {
        for (;;) {
            const int rc = sqlite3_step(st.get());
            if (rc == SQLITE_DONE) return true;
            if (rc != SQLITE_ROW) return Engine(error);
            std::vector<DbValue> values;
            const int n = sqlite3_column_count(st.get());
            values.reserve(static_cast<size_t>(n));
            for (int i = 0; i < n; ++i) values.push_back(st.Column(i));
            rows.emplace_back(cols, std::move(values));
        }
    }

    static std::string Where(const DbCriteria& criteria) {
        std::string out;
        for (size_t i = 0; i < criteria.size(); ++i) {
            out += (i ? " AND " : " WHERE ") + Quoted(criteria[i].first) + " = ?";
        }
        return out;
    }
    static void BindCriteria(Statement& st, const DbCriteria& criteria, int first) {
        for (size_t i = 0; i < criteria.size(); ++i) {
            st.Bind(first + static_cast<int>(i), criteria[i].second);
        }
    }

    std::shared_ptr<const std::vector<std::string>> ColumnList(const std::string& table,
                                                               DbError& error) {
        auto it = columnCache_.find(table);
        if (it != columnCache_.end()) return it->second;
        if (!StatementAllowed(error)) return nullptr;
        Statement st(db_, "SELECT * FROM " + Quoted(table) + " LIMIT 0");
        if (!st.ok()) {
            Engine(error);
            return nullptr;
        }
        auto names = std::make_shared<std::vector<std::string>>();
        for (int i = 0; i < sqlite3_column_count(st.get()); ++i) {
            names->push_back(sqlite3_column_name(st.get(), i));
        }
        columnCache_[table] = names;
        return names;
    }

    sqlite3* db_;
    bool inTrans_ = false;
    std::map<std::string, std::shared_ptr<const std::vector<std::string>>> columnCache_;
};

}  // namespace

std::unique_ptr<Database> OpenSqliteDatabase(const std::string& path, bool create, DbError& error) {
    std::error_code ec;
    const bool exists = std::filesystem::exists(path, ec);
    if (!exists && !create) {
        error.code = SQLITE_CANTOPEN;
        error.message = "The file '" + path + "' does not exist";
        return nullptr;
    }
    if (exists) {
        const std::string kind = ForeignKind(path);
        if (!kind.empty()) {
            error.code = kDbErrorNotADb;
            error.message = "The file '" + path + "' is " + kind;
            return nullptr;
        }
    }
    sqlite3* db = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0);
    int rc = sqlite3_open_v2(path.c_str(), &db, flags, nullptr);
    if (rc != SQLITE_OK) {
        error.code = rc & 0xff;
        error.message = db ? sqlite3_errmsg(db) : sqlite3_errstr(rc);
        sqlite3_close_v2(db);
        return nullptr;
    }
    sqlite3_busy_timeout(db, kBusyTimeoutMs);
    // A probe for a writer holding the file, and for a file that is no database at all.
    if (!StatementAllowed(error)) {
        sqlite3_close_v2(db);
        return nullptr;
    }
    char* msg = nullptr;
    rc = sqlite3_exec(db, "BEGIN IMMEDIATE; SELECT count(*) FROM sqlite_master; ROLLBACK;", nullptr,
                      nullptr, &msg);
    if (rc != SQLITE_OK) {
        error.code = rc & 0xff;
        error.message = msg ? msg : sqlite3_errstr(rc);
        if (error.code == SQLITE_NOTADB) {
            error.message = "The file '" + path + "' is not an SQLite database";
        }
        sqlite3_free(msg);
        sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close_v2(db);
        return nullptr;
    }
    return std::make_unique<SqliteDatabase>(db);
}

void FailSqliteStatement(int k) {
    Fault() = {k, 0};
}

int SqliteStatementsRun() {
    return Fault().run;
}

}  // namespace ostrel
