#pragma once
// A demo installation of the three sibling programs in a fresh folder, and ready materials.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "core/external/bas1_setup.h"
#include "core/external/demo_installation.h"
#include "core/external/external_file.h"
#include "core/external/frm_glasses_del_ext.h"
#include "core/external/kelmora_database.h"
#include "core/platform/file_io.h"
#include "core/platform/settings_store.h"
#include "support/scripted_dialogs.h"
#include "support/temp_dir.h"

namespace ostrel::testing {

// A folder as the setup stores it, with its trailing separator.
inline std::string Dir(const std::filesystem::path& p) {
    return p.string() + "/";
}

// A stand-in program file of the given size in a folder made for it.
inline void Program(const std::filesystem::path& folder, const std::string& name,
                    size_t size = 10) {
    std::filesystem::create_directories(folder);
    WriteFileBytes(folder / name, std::string(size, 'x'));
}

inline std::vector<DemoGlass> DemoGlasses() {
    std::string text, message;
    FileError error;
    ReadWholeFile(std::string(OSTREL_TEST_DATA) + "/../../data/demo/demo_glasses.csv", text, error);
    std::vector<DemoGlass> glasses;
    EXPECT_TRUE(ParseDemoCatalogue(text, glasses, message)) << message;
    return glasses;
}

// A material with all five sections ready.
inline MaterialRecord ReadyMaterial(const std::string& name, const std::string& source,
                                    double b1 = 1.03961212) {
    MaterialRecord rec = ClearedMaterialRecord();
    rec.General.GlassName.Set(name);
    rec.General.Source.Set(source);
    rec.General.GlassKind = 8;
    rec.General.Polytype = 2;
    rec.General.PolyCoef = {b1, 0.231792344, 1.01046945, 0.00600069867, 0.0200179144, 103.560653};
    rec.General.IndexWvMin = 310;
    rec.General.IndexWvMax = 2500;
    rec.General.Density = 2.51f;
    rec.TransTable.fill(kNoTransData);
    rec.TransTable[20] = 0.0012f;
    rec.Other.Status.Set("A");
    for (auto* s :
         {&rec.GeneralState, &rec.IndexState, &rec.TransState, &rec.ThermalState, &rec.OtherState})
        s->Ready = kTrue;
    return rec;
}

class ExternalFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        auto glasses = DemoGlasses();
        glasses.resize(4);  // N-BK7, K7, F2, N-SF11 of Schott
        std::string message;
        ASSERT_TRUE(CreateDemoInstallation(dir.path().string(), glasses, settings, message))
            << message;
        setup.LoadPaths();
        ASSERT_TRUE(setup.GetKelmoraFound() && setup.GetLumbrakFound() && setup.GetSextaneFound());
    }
    void TearDown() override {
        SetWriteFaultHook(nullptr);
        SetDatabaseFaultHook(nullptr);
    }

    std::string Lumbrak() const { return setup.GetPathLumbrak(); }
    std::string Sextane() const { return setup.GetPathSextane(); }
    std::string Kelmora() const { return setup.GetPathKelmora(); }

    std::unique_ptr<Database> Open() {
        auto db = OpenGlassDatabaseForUpdate(Kelmora(), dialogs);
        EXPECT_TRUE(db);
        return db;
    }
    // From its n-th on, every database step op on table (on any table when empty) fails.
    static void FailDatabaseSteps(const std::string& op, const std::string& table, int n = 1) {
        SetDatabaseFaultHook([=, count = 0](const std::string& o, const std::string& t) mutable {
            return o != op || !(table.empty() || t == table) || ++count < n;
        });
    }
    // Writes a program's custom glass file, and the database's custom rows, as given.
    static void WriteFile(const std::string& folder, const std::vector<MaterialRecord>& recs) {
        FileError error;
        ASSERT_TRUE(WriteExternalFile(folder, recs, error)) << error.message;
    }
    void AddRows(const std::vector<MaterialRecord>& recs) {
        ASSERT_TRUE(AddGlassesToDatabase(Kelmora(), recs, true, dialogs));
    }
    // Loads the removal form over the database (else the files) with these entries chosen.
    static void Choose(frmGlassesDelExt& form, bool database, std::initializer_list<int> picked) {
        form.Load();
        if (database) form.optUpdateProgClick(1);
        for (int i : picked) form.lstGlasses.SetSelected(i, true);
    }
    // Moves a row to Archive by position, as the archive form moves it.
    void ToArchive(const DbValue& id) {
        auto db = Open();
        DbError error;
        std::vector<DbRow> found;
        int n = 0;
        ASSERT_TRUE(db->FindRows(kTableCurrent, {{"GlassID", id}}, found, error));
        ASSERT_EQ(found.size(), 1u);
        ASSERT_TRUE(db->DeleteRows(kTableCurrent, {{"GlassID", id}}, n, error));
        ASSERT_TRUE(db->AddRowByPosition(kTableArchive, found[0].Values(), error));
    }
    // "table:id:name:source:s1:C1" of every row of both tables; with `custom`, "table:name:C1"
    // of the custom rows (s1 8) only.
    std::vector<std::string> Rows(bool custom = false) {
        std::vector<std::string> out;
        auto db = Open();
        for (const std::string table : {kTableCurrent, kTableArchive}) {
            std::vector<DbRow> rows;
            DbError error;
            EXPECT_TRUE(db->FindRows(table, {}, rows, error));
            for (const auto& r : rows) {
                auto f = [&r](const char* name) { return ":" + DbText(r.Field(name)); };
                if (!custom) {
                    out.push_back(table + f("GlassID") + f("GlassName") + f("Source") + f("s1") +
                                  f("C1"));
                } else if (f("s1") == ":8") {
                    out.push_back(table + f("GlassName") + f("C1"));
                }
            }
        }
        return out;
    }
    std::vector<std::string> CustomRows() { return Rows(true); }
    // The glass names of a program's custom glass file, joined by commas.
    static std::string FileNames(const std::string& folder) {
        std::vector<MaterialRecord> recs;
        FileError error;
        EXPECT_TRUE(ReadExternalFile(folder, recs, error)) << error.message;
        std::string names;
        for (const auto& r : recs) names += (names.empty() ? "" : ",") + r.General.GlassName.Text();
        return names;
    }
    // No half-written file of a replace is left in the folders.
    static void ExpectNoTempFiles(const std::vector<std::string>& folders) {
        for (const auto& folder : folders)
            for (const auto& entry : std::filesystem::directory_iterator(folder))
                EXPECT_EQ(entry.path().filename().string().find(".ostrel-tmp."), std::string::npos);
    }

    TempDir dir;
    MemorySettingsStore settings;
    ScriptedDialogs dialogs;
    Bas1Setup setup{settings, dialogs};
};

}  // namespace ostrel::testing
