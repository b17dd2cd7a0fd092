#include "core/external/kelmora_database.h"

#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <tuple>
#include <vector>

#include "core/optics/derived_data.h"
#include "core/platform/sqlite_database.h"
#include "external_fixture.h"

namespace ostrel::testing {
namespace {

using KelmoraDatabaseTest = ExternalFixture;

TEST(GlassSchema, TransmissionColumnsStandTogetherInWavelengthOrder) {
    const auto& cols = GlassColumns(false);
    const auto at = std::find(cols.begin(), cols.end(), "T250") - cols.begin();
    const char* expected[] = {
        "T250", "T260", "T270",  "T280",  "T290",  "T300",  "T310",  "T320", "T330", "T334", "T340",
        "T350", "T360", "T365",  "T370",  "T380",  "T390",  "T400",  "T405", "T420", "T436", "T440",
        "T460", "T480", "T500",  "T546",  "T550",  "T580",  "T600",  "T620", "T650", "T660", "T700",
        "T800", "T900", "T1000", "T1060", "T1530", "T1970", "T2325", "T2500"};
    for (int i = 0; i < 41; ++i) EXPECT_EQ(cols[static_cast<size_t>(at + i)], expected[i]);
    const auto& arch = GlassColumns(true);
    ASSERT_EQ(arch.size(), cols.size());
    for (size_t i = 0; i < cols.size(); ++i)
        EXPECT_EQ(arch[i], cols[i] == "Status" ? "l" : cols[i]);
}

// Every text field of the other data, in record order.
auto OtherFields(auto& o) {
    return std::tie(o.A3070, o.A20300, o.Tg, o.T1013, o.T1076, o.Cp, o.lambda, o.EMod, o.Poisson,
                    o.Torsion, o.Knoop, o.CR, o.FR, o.SR, o.AR, o.PR, o.REMark, o.CC, o.Bubble,
                    o.Status, o.Price);
}
// Their texts, padding included.
std::vector<std::string> OtherTexts(const OtherData& o) {
    return std::apply([](auto&... f) { return std::vector<std::string>{f.Untrimmed()...}; },
                      OtherFields(o));
}
auto Dndt(auto& t) {
    return std::tie(t.dndttype, t.dndt_D0, t.dndt_D1, t.dndt_D2, t.dndt_E0, t.dndt_E1,
                    t.dndt_LamdaTK);
}

TEST_F(KelmoraDatabaseTest, EveryColumnIsWrittenAndReadBack) {
    MaterialRecord rec = ReadyMaterial("O'Brien \"X\"; --", "Lab %_*");
    const char* others[] = {"1.1", "2.2",  "3.3",    "4.4",   "5.5", "6.6", "7.7",
                            "8.8", "9.9",  "10.5",   "11",    "1",   "2",   "3",
                            "4",   "52.5", "remark", "33/29", "5",   "A",   "1.5"};
    std::apply([&, i = 0](auto&... f) mutable { (f.Set(others[i++]), ...); },
               OtherFields(rec.Other));
    std::tie(rec.Status.StatusECO, rec.Status.StatusMold, rec.Status.Abrasion, rec.Status.DataDate,
             rec.Melt.MeltFlag, rec.General.GlassCode, rec.TransTable[0], rec.TransTable[40]) =
        std::tuple(kTrue, kTrue, 120, 43831.5, kTrue, 517642, 0.5f, 0.001f);
    for (int i = 0; i < 6; ++i)
        rec.Thermal.TT[static_cast<size_t>(i)].Set("tt" + std::to_string(i + 1));
    Dndt(rec.Thermal) =
        std::make_tuple(int16_t{2}, 1.5e-6f, 2.5e-8f, -3e-11f, 4e-7f, 5e-10f, 0.17f);

    auto db = Open();
    DbError error;
    ASSERT_TRUE(AddGlassRow(*db, 100, rec, error)) << error.message;
    std::vector<DbRow> rows;
    ASSERT_TRUE(db->FindRows(
        kTableCurrent, {{"GlassName", DbValue{std::string("O'Brien \"X\"; --")}}}, rows, error));
    ASSERT_EQ(rows.size(), 1u);
    const DbRow& row = rows[0];
    // clang-format off
    const std::pair<const char*, const char*> texts[] = {{"GlassID", "100"}, {"s1", "8"},
        {"SchottName", "O'Brien \"X\"; --"}, {"Polytype", "Sel"}, {"StatusMelt", "-1"}};
    // clang-format on
    for (const auto& [column, text] : texts) EXPECT_EQ(DbText(row.Field(column)), text) << column;
    EXPECT_TRUE(IsNull(row.Field("T260")));
    EXPECT_EQ(DbText(row.Field("REMark")).size(), 120u);

    MaterialRecord back = ClearedMaterialRecord();
    ASSERT_TRUE(ReadGlassRow(row, back, error)) << error.message;
    auto general = [](const GeneralData& g) {
        return std::tie(g.GlassName, g.Source, g.GlassKind, g.GlassCode, g.Polytype, g.PolyCoef,
                        g.Density, g.IndexWvMin, g.IndexWvMax);
    };
    EXPECT_EQ(general(back.General), general(rec.General));
    MaterialRecord expected = rec;
    UpdateDerivedData(expected);
    auto derived = [](const DerivedData& d) { return std::tuple(d.nd, d.vd, d.PgF); };
    EXPECT_EQ(derived(back.Derived), derived(expected.Derived));
    EXPECT_FLOAT_EQ(back.Derived.nd, 1.5168f);
    EXPECT_EQ(OtherTexts(back.Other), OtherTexts(rec.Other));
    // The melt status is not the melt flag, a different field.
    const auto& st = back.Status;
    EXPECT_EQ(std::tuple(st.StatusECO, st.StatusMold, st.StatusMelt, back.Melt.MeltFlag,
                         st.Abrasion, st.DataDate),
              std::tuple(kTrue, kTrue, kTrue, 0, 120, 43831.5));
    EXPECT_EQ(back.TransTable, rec.TransTable);
    // Pairs reversed: the last column first.
    const auto& m = back.Measured;
    ASSERT_EQ(m.TransPoints, 3);
    EXPECT_EQ(std::tuple(m.TransWave[0], m.TransWave[1], m.TransWave[2], m.TransAbsorb[2],
                         back.General.TransShortWave[0], m.TransType, m.TransWidth),
              std::tuple(2500.0f, 436.0f, 250.0f, 0.5f, 2500.0f, 2, 10.0f));
    EXPECT_FLOAT_EQ(m.TransInternal[2], static_cast<float>(std::exp(-5.0) * 100));
    EXPECT_EQ(back.Thermal.TT, rec.Thermal.TT);
    EXPECT_EQ(Dndt(back.Thermal), Dndt(rec.Thermal));
}

TEST_F(KelmoraDatabaseTest, TextRulesOfTheWrite) {
    MaterialRecord rec = ReadyMaterial("P6", "Lab");
    rec.General.Polytype = 6;
    rec.Thermal.dndt_lin = 2.5e-6f;
    rec.Thermal.TT[0].Set("ignored");
    auto field = [row = WriteGlassRow(7, rec)](const char* name) {
        for (const auto& [n, v] : row)
            if (n == name) return v;
        return DbValue{};
    };
    EXPECT_EQ(std::tuple(DbText(field("Polytype")), DbText(field("TT1"))),
              std::tuple("", "2.5e-06"));
    EXPECT_TRUE(IsNull(field("A3070")) && IsNull(field("CC")));
    EXPECT_EQ(std::get<std::string>(TextToField(" ab ", false)), "ab");
    EXPECT_EQ(std::get<double>(TextToField("1.1", true)), static_cast<double>(1.1f));
    EXPECT_EQ(GlassQuery("Schott").text,
              "SELECT ALL * From GlassData  WHERE (GlassData.Source = 'Schott');");
}

TEST_F(KelmoraDatabaseTest, AFileHeldByAnotherWriterIsAlreadyOpen) {
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(GlassDatabasePath(Kelmora()).c_str(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_EQ(OpenGlassDatabase(Kelmora(), dialogs), nullptr);
    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text,
              "The database file 'FenmarkExA.MDB' is already open.  Please close Kelmora, and "
              "try again");
}

TEST(GlassDatabaseOpen, AnOldJetFileIsNamedForWhatItIs) {
    TempDir dir;
    std::string jet(2048, '\0');
    jet.replace(4, 15, "Standard Jet DB");
    WriteFileBytes(dir / kGlassDatabaseName, jet);
    ScriptedDialogs dialogs;
    const std::string folder = dir.path().string() + "/";
    EXPECT_EQ(OpenGlassDatabase(folder, dialogs), nullptr);
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text, "The file '" + folder + kGlassDatabaseName +
                                         "' is a database of the older Jet engine, not an SQLite "
                                         "database");
    EXPECT_EQ(OpenGlassDatabaseForUpdate(folder, dialogs), nullptr);
    EXPECT_EQ(dialogs.boxes[1].text.rfind("Unable to open database in path:\n" + folder, 0), 0u);
}

}  // namespace
}  // namespace ostrel::testing
