#include "core/external/kelmora_database.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <filesystem>

#include "core/material/glasses_list.h"
#include "core/optics/derived_data.h"
#include "core/optics/index_from_polynomial.h"
#include "core/optics/trans_calcs.h"
#include "core/platform/number_text.h"
#include "core/platform/sqlite_database.h"
#include "core/platform/text.h"

namespace ostrel {

namespace {

constexpr int kErrNullUse = 94;     // a Null where a number must stand
constexpr int kErrNoRecord = 3021;  // no current row
constexpr const char* kStatusColumn = "Status";

const char* const kOtherNumberColumns[] = {"A3070",  "A20300", "Tg",      "T1013",   "T1076", "Cp",
                                           "lambda", "EMod",   "Poisson", "Torsion", "Knoop", "CR",
                                           "FR",     "SR",     "AR",      "PR"};
const char* const kDerivedColumns[] = {"nd",      "vd",  "nF_NC", "Ne", "Ve",
                                       "nfd_ncd", "PCs", "PdC",   "PgF"};
const char* const kDndtColumns[] = {"dndt_lin", "dndt_D0", "dndt_D1",     "dndt_D2",
                                    "dndt_E0",  "dndt_E1", "dndt_LamdaTK"};

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

// The shortest text that reads back as the same 32-bit float.
std::string FloatText(float v) {
    char buf[32];
    auto r = std::to_chars(buf, buf + sizeof buf, v);
    return std::string(buf, r.ptr);
}

bool NullError(const std::string& column, DbError& error) {
    error.code = kErrNullUse;
    error.message = "Invalid use of Null (column " + column + ")";
    return false;
}

// A number column read through a plain conversion: Null is an error.
bool Number(const DbRow& row, const char* column, double& out, DbError& error) {
    bool ok = false;
    out = DbNumber(row.Field(column), ok);
    if (!ok) return NullError(column, error);
    return true;
}

double NumberOr(const DbRow& row, const std::string& column, double nullValue) {
    bool ok = false;
    const double v = DbNumber(row.Field(column), ok);
    return ok ? v : nullValue;
}

template <size_t N>
void TextInto(const DbRow& row, const std::string& column, FixedText<N>& field) {
    const DbValue& v = row.Field(column);
    if (IsNull(v)) {
        field.Blank();
    } else if (const auto* s = std::get_if<std::string>(&v)) {
        field.Set(*s);
    } else {
        bool ok = false;
        field.Set(FloatText(static_cast<float>(DbNumber(v, ok))));
    }
}

DbValue Real(float v) {
    return DbValue{static_cast<double>(v)};
}
DbValue Int(int64_t v) {
    return DbValue{v};
}
DbValue Str(std::string s) {
    return DbValue{std::move(s)};
}

const char* PolytypeShortName(int16_t type) {
    switch (type) {
        case 1:
            return "Sch";
        case 2:
            return "Sel";
        case 3:
            return "Scx";
        case 4:
            return "Cau";
        default:
            return "";
    }
}

bool Fail(DbError& error, int code, std::string message) {
    error.code = code;
    error.message = std::move(message);
    return false;
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

std::string StatusText(const std::string& status) {
    const std::string t = VbTrimCopy(status);
    switch (t.empty() ? '\0' : t[0]) {
        case 'A':
            return "  Available?";
        case 'E':
            return "  Eco";
        case 'O':
            return "  Obsolete";
        case 'R':
            return "  Recommended";
        default:
            return status;
    }
}

bool ReadGlassRow(const DbRow& row, MaterialRecord& rec, DbError& error) {
    double v = 0;
    auto& g = rec.General;
    g.GlassKind = 8;
    TextInto(row, "GlassName", g.GlassName);
    if (!Number(row, "GlassCode", v, error)) return false;
    g.GlassCode = CLng(v);
    TextInto(row, "Source", g.Source);
    g.Polytype = PolyTypeFromShortName(VbTrimCopy(DbText(row.Field("Polytype"))));
    for (int i = 0; i < kPolyCoefCount; ++i) {
        g.PolyCoef[static_cast<size_t>(i)] = NumberOr(row, "C" + std::to_string(i + 1), 0.0);
    }
    if (!Number(row, "Density", v, error)) return false;
    g.Density = static_cast<float>(v);
    if (!Number(row, "IndexWvMin", v, error)) return false;
    g.IndexWvMin = CInt(v);
    if (!Number(row, "IndexWvMax", v, error)) return false;
    g.IndexWvMax = CInt(v);
    rec.GeneralState.Ready = kTrue;

    float* derived[] = {&rec.Derived.nd,  &rec.Derived.vd,  &rec.Derived.nF_NC,
                        &rec.Derived.Ne,  &rec.Derived.Ve,  &rec.Derived.nfd_ncd,
                        &rec.Derived.PCs, &rec.Derived.PdC, &rec.Derived.PgF};
    for (size_t i = 0; i < 9; ++i) {
        if (!Number(row, kDerivedColumns[i], v, error)) return false;
        *derived[i] = static_cast<float>(v);
    }

    auto& o = rec.Other;
    TextInto(row, "A3070", o.A3070);
    TextInto(row, "A20300", o.A20300);
    TextInto(row, "Tg", o.Tg);
    TextInto(row, "T1013", o.T1013);
    TextInto(row, "T1076", o.T1076);
    TextInto(row, "Cp", o.Cp);
    TextInto(row, "lambda", o.lambda);
    TextInto(row, "EMod", o.EMod);
    TextInto(row, "Poisson", o.Poisson);
    TextInto(row, "Torsion", o.Torsion);
    TextInto(row, "Knoop", o.Knoop);
    TextInto(row, "CR", o.CR);
    TextInto(row, "FR", o.FR);
    TextInto(row, "SR", o.SR);
    TextInto(row, "AR", o.AR);
    TextInto(row, "PR", o.PR);
    TextInto(row, "REMark", o.REMark);
    TextInto(row, "CC", o.CC);
    TextInto(row, "Bubble", o.Bubble);
    TextInto(row, kStatusColumn, o.Status);
    TextInto(row, "Price", o.Price);
    rec.OtherState.Ready = kTrue;

    auto& s = rec.Status;
    const std::pair<const char*, Flag*> flags[] = {
        {"StatusECO", &s.StatusECO}, {"StatusMold", &s.StatusMold}, {"StatusMelt", &s.StatusMelt}};
    for (auto& [name, flag] : flags) {
        if (!Number(row, name, v, error)) return false;
        *flag = CInt(v);
    }
    if (!Number(row, "Abrasion", v, error)) return false;
    s.Abrasion = CInt(v);
    if (!Number(row, "DataDate", v, error)) return false;
    s.DataDate = v;

    // Transmission: the 41 columns from T250 on, their wavelengths taken from the names.
    auto& m = rec.Measured;
    const int base = row.Position("T250");
    if (base < 0) return Fail(error, kErrNoRecord, "Item not found in this collection: T250");
    std::vector<std::pair<float, float>> pairs;
    for (int i = 0; i < kTransTableSize; ++i) {
        const DbValue& value = row.Field(base + i);
        const float wave = static_cast<float>(Val(row.Name(base + i).substr(1)));
        bool ok = false;
        const double x = DbNumber(value, ok);
        rec.TransTable[static_cast<size_t>(i)] = ok ? static_cast<float>(x) : kNoTransData;
        if (ok && pairs.size() < 100) pairs.emplace_back(wave, static_cast<float>(x));
    }
    const int count = static_cast<int>(pairs.size());
    m.TransPoints = static_cast<int16_t>(count);
    m.TransType = 2;
    m.TransWidth = 10.0f;
    for (int k = 1; k <= count; ++k) {
        const size_t at = static_cast<size_t>(count - k);
        const auto& [wave, absorb] = pairs[static_cast<size_t>(k - 1)];
        if (at < m.TransWave.size()) {
            m.TransWave[at] = wave;
            m.TransAbsorb[at] = absorb;
            m.TransInternal[at] = static_cast<float>(std::exp(-m.TransWidth * absorb) * 100.0);
        }
        if (at < static_cast<size_t>(kTransTableSize)) {
            g.TransShortWave[at] = wave;
            g.TransShortValue[at] = absorb;
        }
    }
    rec.TransState.Ready = kTrue;

    auto& t = rec.Thermal;
    for (int i = 0; i < 6; ++i)
        TextInto(row, "TT" + std::to_string(i + 1), t.TT[static_cast<size_t>(i)]);
    t.dndttype = CInt(NumberOr(row, "dndttype", 0));
    float* dndt[] = {&t.dndt_lin, &t.dndt_D0, &t.dndt_D1,     &t.dndt_D2,
                     &t.dndt_E0,  &t.dndt_E1, &t.dndt_LamdaTK};
    for (size_t i = 0; i < 7; ++i) *dndt[i] = static_cast<float>(NumberOr(row, kDndtColumns[i], 0));
    rec.ThermalState.Ready = kTrue;
    return true;
}

DbValue TextToField(const std::string& text, bool numeric) {
    const std::string t = VbTrimCopy(text);
    if (t.empty()) return DbValue{};
    if (numeric) return Real(static_cast<float>(Val(t)));
    return Str(t);
}

DbNewRow WriteGlassRow(int16_t id, const MaterialRecord& source) {
    MaterialRecord rec = source;
    UpdateDerivedData(rec);
    const auto& g = rec.General;
    const auto& d = rec.Derived;
    const auto& o = rec.Other;
    const auto& s = rec.Status;
    const auto& t = rec.Thermal;
    DbNewRow r;
    r.emplace_back("GlassID", Int(id));
    r.emplace_back("s1", Int(kCustomRowKind));
    r.emplace_back("GlassName", Str(g.GlassName.Text()));
    r.emplace_back("GlassCode", Int(g.GlassCode));
    r.emplace_back("Source", Str(g.Source.Text()));
    r.emplace_back("SchottName", Str(g.GlassName.Text()));
    r.emplace_back("Polytype", Str(PolytypeShortName(g.Polytype)));
    for (int i = 0; i < kPolyCoefCount; ++i) {
        r.emplace_back("C" + std::to_string(i + 1), DbValue{g.PolyCoef[static_cast<size_t>(i)]});
    }
    r.emplace_back("Density", Real(g.Density));
    r.emplace_back("IndexWvMin", Int(g.IndexWvMin));
    r.emplace_back("IndexWvMax", Int(g.IndexWvMax));
    const float derived[] = {d.nd, d.vd, d.nF_NC, d.Ne, d.Ve, d.nfd_ncd, d.PCs, d.PdC, d.PgF};
    for (size_t i = 0; i < 9; ++i) r.emplace_back(kDerivedColumns[i], Real(derived[i]));
    const std::string others[] = {
        o.A3070.Text(),   o.A20300.Text(),  o.Tg.Text(),     o.T1013.Text(),
        o.T1076.Text(),   o.Cp.Text(),      o.lambda.Text(), o.EMod.Text(),
        o.Poisson.Text(), o.Torsion.Text(), o.Knoop.Text(),  o.CR.Text(),
        o.FR.Text(),      o.SR.Text(),      o.AR.Text(),     o.PR.Text()};
    for (size_t i = 0; i < 16; ++i)
        r.emplace_back(kOtherNumberColumns[i], TextToField(others[i], true));
    r.emplace_back("REMark", Str(o.REMark.Untrimmed()));
    r.emplace_back("CC", TextToField(o.CC.Text(), false));
    r.emplace_back("Bubble", TextToField(o.Bubble.Text(), true));
    r.emplace_back(kStatusColumn, Str(o.Status.Text()));
    r.emplace_back("Price", TextToField(o.Price.Text(), true));
    r.emplace_back("Abrasion", Int(s.Abrasion));
    r.emplace_back("StatusECO", Int(s.StatusECO));
    r.emplace_back("StatusMold", Int(s.StatusMold));
    r.emplace_back("StatusILine", Int(s.StatusILine));
    r.emplace_back("StatusMelt", Int(rec.Melt.MeltFlag));
    r.emplace_back("DataDate", DbValue{s.DataDate});
    for (int i = 0; i < kTransTableSize; ++i) {
        const float v = rec.TransTable[static_cast<size_t>(i)];
        if (v != kNoTransData) r.emplace_back(TransColumnName(i), Real(v));
    }
    r.emplace_back("TT1", Str(t.dndt_lin == 0 ? t.TT[0].Text() : FloatText(t.dndt_lin)));
    for (int i = 1; i < 6; ++i)
        r.emplace_back("TT" + std::to_string(i + 1), Str(t.TT[static_cast<size_t>(i)].Text()));
    r.emplace_back("dndttype", Int(t.dndttype));
    const float dndt[] = {t.dndt_lin, t.dndt_D0, t.dndt_D1,     t.dndt_D2,
                          t.dndt_E0,  t.dndt_E1, t.dndt_LamdaTK};
    for (size_t i = 0; i < 7; ++i) r.emplace_back(kDndtColumns[i], Real(dndt[i]));
    return r;
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

std::string DatabaseFailureText(const std::string& head, const DbError& error,
                                const std::string& tail) {
    return head + "\n" + std::to_string(error.code) + "\t" + error.message + "\n" + tail;
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
