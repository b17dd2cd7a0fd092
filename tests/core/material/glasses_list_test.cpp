#include "core/material/glasses_list.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <tuple>

#include "core/material/catalogue_record.h"
#include "core/material/frm_glasses_list.h"
#include "core/platform/file_io.h"
#include "list_fixture.h"

namespace ostrel::testing {
namespace {

namespace fs = std::filesystem;

// Name and source agree trimmed in upper case; a blank or NUL-holding name is no key.
TEST(SameMaterial, KeysAndUsableNames) {
    const std::array<std::tuple<const char*, const char*, const char*, const char*, bool>, 5> keys =
        {{{"bk7  ", "schott", "BK7", "SCHOTT", true},
          {"  bk7", "schott ", "BK7", "SCHOTT", true},
          {"BK7", "SCHOTT", "BK7", "HOYA", false},
          {"BK 7", "SCHOTT", "BK7", "SCHOTT", false},
          {"gl\xC3\xA4s", "x", "GL\xC3\x84S", "X", true}}};
    for (const auto& [nameA, sourceA, nameB, sourceB, same] : keys)
        EXPECT_EQ(SameMaterial(MakeRecord(nameA, sourceA), MakeRecord(nameB, sourceB)), same)
            << nameA << "/" << sourceA;
    MaterialRecord nul = MakeRecord("A", "B");
    nul.General.GlassName.data()[5] = '\0';
    EXPECT_EQ(std::tuple(NameUsable(MakeRecord("A", "B")), NameUsable(MakeRecord("   ", "B")),
                         NameUsable(MakeRecord("A", "")), NameUsable(nul),
                         NameUsable(ZeroMaterialRecord())),
              std::tuple(true, false, false, false, false));
}

using GlassesListTest = ListFixture;

TEST_F(GlassesListTest, ListAddOverwriteGetMaterialAndReplaceList) {
    GlassesList& l = Fresh();
    for (int i = 1; i <= 3; ++i)
        ASSERT_TRUE(l.ListAdd(MakeRecord(std::string(1, char('@' + i)), "S", i), false));

    EXPECT_FALSE(l.ListAdd(MakeRecord("b ", "s", 9), false));
    EXPECT_EQ(l.CustomList()[1].General.PolyCoef[0], 2);

    EXPECT_TRUE(l.ListAddDated(MakeRecord("b ", "s", 9), true));
    ASSERT_EQ(l.CustomCount(), 3);
    MaterialRecord r;
    EXPECT_FALSE(l.GetMaterial(0, r) || l.GetMaterial(4, r));
    ASSERT_TRUE(l.GetMaterial(2, r));
    // Stamped with the clock.
    EXPECT_EQ(std::tuple(r.General.PolyCoef[0], r.General.GlassName.Text(), r.DateChanged,
                         l.CustomList()[2].General.GlassName.Text()),
              std::tuple(9, "b", 46349.5, "C"));

    // A name with a NUL is refused; ReplaceList takes records as they are, but keys only
    // usable ones.
    MaterialRecord nul = MakeRecord("A", "S");
    nul.General.GlassName.data()[1] = '\0';
    EXPECT_EQ((std::tuple{l.ListAdd(nul, true), l.CustomCount()}), std::tuple(false, 3));
    l.ReplaceList({nul});
    // The old keys are gone.
    EXPECT_EQ(
        std::tuple(l.CustomCount(), l.ListContains(nul), l.ListContains(MakeRecord("B", "S"))),
        std::tuple(1, false, false));
}

// A file loads into the records expected and saves as them, the file before as the backup:
// every byte kept, texts holding NULs included; point counts beyond their tables or below zero
// brought into them; a long list whole and in order, its last record cut short padded with zeros.
TEST_F(GlassesListTest, LoadedListSavesTheRecordsItHolds) {
    std::vector<MaterialRecord> full;
    for (int i = 0; i < 3; ++i) {
        MaterialImage img;
        for (size_t b = 0; b < img.size(); ++b) img[b] = static_cast<unsigned char>(b * 7 + i);
        std::memcpy(img.data() + 6, "NAME", 4);
        img[10] = static_cast<unsigned char>('0' + i);
        std::memset(img.data() + 11, ' ', 25);
        std::memcpy(img.data() + 38, "SRC", 3);
        std::memset(img.data() + 41, ' ', 27);
        img[12102] = '\0';  // a NUL in the parent name
        MaterialRecord rec = FromBytes(img);
        // counts that fit their tables
        std::tie(rec.General.IndexPoints, rec.Measured.TransPoints, rec.Melt.MeltIndexPoints,
                 rec.Melt.MeltTransPoints) = std::tuple(150, i, 20, 7);
        full.push_back(rec);
    }
    MaterialRecord damaged = MakeRecord("BK7", "X", 1), fixed = damaged;
    std::tie(damaged.General.IndexPoints, damaged.Measured.TransPoints,
             damaged.Melt.MeltIndexPoints, damaged.Melt.MeltTransPoints) =
        std::tuple(30000, -5, 21, -32768);
    std::tie(fixed.General.IndexPoints, fixed.Melt.MeltIndexPoints) = std::tuple(150, 20);
    MaterialRecord fine = MakeRecord("F2", "X", 2);
    std::tie(fine.General.IndexPoints, fine.Measured.TransPoints, fine.Melt.MeltIndexPoints) =
        std::tuple(12, 150, 20);
    // More records than one piece of the file read holds, the last cut short.
    std::vector<MaterialRecord> longList;
    for (int i = 0; i < 150; ++i) longList.push_back(MakeRecord("G" + std::to_string(i), "S", i));
    std::string cut = Image(longList);
    cut.resize(cut.size() - 100);
    MaterialImage tail{};
    std::memcpy(tail.data(), cut.data() + 149 * kMaterialRecordSize, kMaterialRecordSize - 100);
    std::vector<MaterialRecord> longLoaded = longList;
    longLoaded.back() = FromBytes(tail);
    ASSERT_EQ(longLoaded[148].ThermalState.Ready, kTrue);
    ASSERT_EQ(longLoaded[149].ThermalState.Ready, 0);

    const std::tuple<const char*, std::string, std::vector<MaterialRecord>> cases[] = {
        {"every byte", Image(full), full},
        {"damaged counts", Image({damaged, fine}), {fixed, fine}},
        {"long list cut short", cut, longLoaded}};
    for (const auto& [name, file, loaded] : cases) {
        SCOPED_TRACE(name);
        std::filesystem::remove(Backup());
        GlassesList& l = Loaded(file);
        EXPECT_TRUE(Image(l.CustomList()) == Image(loaded));
        ASSERT_TRUE(l.SaveCustomFile());
        EXPECT_TRUE(ReadFileBytes(Current()) == Image(loaded));
        EXPECT_TRUE(ReadFileBytes(Backup()) == file);
    }
}

TEST_F(GlassesListTest, FailedWriteLeavesFileAndListAsTheyWere) {
    const std::string before = Image({MakeRecord("A", "S", 1)});
    GlassesList& l = Loaded(before);
    SetWriteFaultHook([](const fs::path& p) { return p.filename() != kCustomFileName; });
    EXPECT_FALSE(l.AddAndSave(MakeRecord("B", "S"), false) ||
                 l.AddAndSave(MakeRecord("A", "S", 2), true) ||
                 l.CommitList({MakeRecord("C", "S")}));
    SetWriteFaultHook(nullptr);
    // The old record is restored.
    EXPECT_EQ(std::tuple(l.ListContains(MakeRecord("B", "S")), Image(l.CustomList()) == before,
                         ReadFileBytes(Current()) == before),
              std::tuple(false, true, true));
    ASSERT_FALSE(dialogs.boxes.empty());
    EXPECT_EQ(std::tuple(dialogs.boxes[0].icon,
                         dialogs.boxes[0].text.find("could not be saved") != std::string::npos),
              std::tuple(MsgIcon::Exclamation, true));
    EXPECT_NE(ReadFileBytes(dir / "ERROR.LOG").find("  Error: [28]: WriteCustomFile"),
              std::string::npos);
}

// Deleting the last material leaves no file and a backup of it.
TEST_F(GlassesListTest, NoFileStartsEmptyAndAddAndSaveDatesWritesAndRefreshes) {
    GlassesList& l = Loaded();
    // Loading writes nothing.
    EXPECT_EQ(std::tuple(l.CustomCount(), fs::is_empty(dir.path())), std::tuple(0, true));
    ASSERT_TRUE(l.AddAndSave(MakeRecord("A", "S"), false));
    MaterialRecord expected = MakeRecord("A", "S");
    expected.DateChanged = 46349.5;
    // Nothing to back up before the first file.
    EXPECT_EQ(
        std::tuple(refreshes, ReadFileBytes(Current()) == Image({expected}), fs::exists(Backup())),
        std::tuple(1, true, false));
    ASSERT_TRUE(l.CommitList({}));
    EXPECT_EQ(
        std::tuple(refreshes, fs::exists(Current()), ReadFileBytes(Backup()) == Image({expected})),
        std::tuple(2, false, true));
}

TEST_F(GlassesListTest, UnreadableFileIsReportedAndNeverOverwritten) {
    fs::create_directory(Current());  // a folder where the file should be cannot be read
    GlassesList& l = Fresh();
    // Braced, so the calls run in order.
    EXPECT_EQ(
        (std::tuple{l.LoadCustomFile(), l.LoadFailed(), l.AddAndSave(MakeRecord("A", "S"), false),
                    fs::is_directory(Current()), dialogs.boxes.size()}),
        std::tuple(false, true, false, true, 2u));
}

// --- older files ---

template <typename T>
T Get(const unsigned char* img, size_t off) {
    T v;
    std::memcpy(&v, img + off, sizeof v);
    return v;
}
template <typename T>
std::string B(T v) {
    return std::string(reinterpret_cast<const char*>(&v), sizeof v);
}
std::string Pad(const char* text, size_t width) {
    return std::string(text).append(width - std::strlen(text), ' ');
}

// An older file is converted once into the current layout: each value lands at its place
// there (32-bit melt values widened), the old melt row count is dropped, every other byte is
// zero. An empty newer file counts as found; older ones are left lying until their turn.
TEST_F(GlassesListTest, OlderFilesAreConvertedIntoTheCurrentLayout) {
    constexpr size_t kDropped = 0;
    struct Value {
        size_t from, to;
        std::string old, now{};  // now: "" for the old bytes
    };
    // clang-format off
    const std::tuple<const char*, size_t, std::vector<Value>> layouts[] = {
        {kCustomFileV2Name, 12604,
         {{6, 6, Pad("MELT1", 30)}, {38, 38, Pad("LAB", 30)}, {76, 76, B<int16_t>(2)},
          {78, 78, B(1.25)}, {12070, 12070, B<int16_t>(-1)}, {12102, 12102, Pad("N-BK7", 30)},
          {12162, 12162, Pad("M42", 10)}, {12172, 12172, B<int16_t>(3)},
          {12174, 12174, B(587.56f)}, {12254, 12254, B(1.5168f), B(double(1.5168f))},
          {12334, kDropped, B<int16_t>(7)}, {12336, 12416, B(0.1f), B(double(0.1f))},
          {12416, 12576, B(0.2f), B(double(0.2f))},
          {12496 + 4 * 19, 12736 + 8 * 19, B(0.3f), B(double(0.3f))},
          {12576, 12936, B<int16_t>(4)} /* GeneralState */, {12578, 12938, B<int16_t>(-1)},
          {12596, 12956, B(40000.75)}}},
        {kCustomFileV1Name, 12098,
         {{6, 6, Pad("A", 30)}, {38, 38, Pad("B", 30)},
          {12070 + 14, 12936 + 14, B<int16_t>(-1)} /* ThermalState.Ready */,
          {12090, 12956, B(123.5)}}},
        {kCustomFileV0Name, 12070,
         {{6, 6, "ABCDEFGHIJKL", Pad("ABCDEFGHIJKL", 30)},
          {20, 38, Pad("SOURCE", 20), Pad("SOURCE", 30)}, {18, 36, B<int16_t>(8)},
          {40, 68, B<int32_t>(517642)}, {48, 76, B<int16_t>(1)}, {50 + 8 * 13, 78 + 8 * 13, B(9.5)},
          {494, 522, B(1.5168f)} /* nd */,
          {1826 + 2400, 1854 + 2400, B(0.25f)} /* IndexWeight[0] */,
          {12042 + 2, 12936 + 2, B<int16_t>(-1)}, {12062, 12956, B(7.0)}}},
    };
    // clang-format on
    WriteFileBytes(dir / kCustomFileV0Name, std::string(12070, 'x'));
    WriteFileBytes(dir / kCustomFileV2Name, "");
    EXPECT_EQ(Loaded().CustomCount(), 0);
    EXPECT_EQ(std::tuple(fs::exists(Current()), Exists(kCustomFileV2Name)),
              std::tuple(false, false));
    for (const auto& [file, size, values] : layouts) {
        SCOPED_TRACE(file);
        std::string old(size, '\0'), expected(kMaterialRecordSize, '\0');
        for (const Value& v : values) {
            old.replace(v.from, v.old.size(), v.old);
            const std::string& now = v.now.empty() ? v.old : v.now;
            if (v.to != kDropped) expected.replace(v.to, now.size(), now);
        }
        WriteFileBytes(dir / file, old);
        EXPECT_TRUE(Image(Loaded().CustomList()) == expected);
        EXPECT_TRUE(ReadFileBytes(Current()) == expected);
        EXPECT_EQ(std::tuple(Exists(file), Exists(kCustomFileV0Name)),
                  std::tuple(false, file != std::string(kCustomFileV0Name)));
        fs::remove(Current());
    }
}

// --- catalogue and generic names ---

class NameRulesTest : public ListFixture {
  protected:
    void SetUp() override {
        const fs::path folder = dir / "lumbrak";
        WriteCatalogue(folder, {{"BK7", "SCHOTT"}, {"", "BLANK"}, {"F2", "SCHOTT"}});
        ExternalRecord g;
        ClearGenericRecord(g);
        g.GlassName.Set("AIR");
        g.Source.Set("GENERIC");
        unsigned char img[kExternalRecordSize];
        ToBytes(g, img);
        WriteFileBytes(folder / kGenericFileName,
                       std::string(reinterpret_cast<char*>(img), sizeof img));
        Fresh().LoadCatalogueNames(folder.string());
        list->LoadGenericNames(folder.string());
        list->ListAdd(MakeRecord("MINE", "ME"), false);
    }
};

TEST_F(NameRulesTest, CheckOverwriteMessages) {
    // Name, source, overwrite allowed, accepted, the message.
    const std::tuple<const char*, const char*, bool, bool, const char*> cases[] = {
        {"bk7  ", "schott", false, false,
         "bk7 - schott is already in the list of catalog materials, and cannot be overwritten!"},
        {"F2", "SCHOTT", true, false,
         "F2 - SCHOTT is already in the list of catalog materials, and cannot be overwritten!"},
        {"Air", "Generic", true, false,
         "Air - Generic is already in the Harvenz Photonics supplied list of generic "
         "materials, and cannot be overwritten!"},
        {"mine", "me", true, false,
         "mine - me is already in your list of custom materials.\nDo you want to overwrite it?"},
        {"mine", "me", false, true, ""},
        {"NEW", "ME", true, true, ""},
        // The catalogue's record with a blank name gives no key (F2 behind it is read).
        {"", "BLANK", true, true, ""}};
    std::string message;
    for (const auto& [name, source, allowOverwrite, ok, text] : cases) {
        message = "stale";
        EXPECT_EQ(list->CheckOverwrite(MakeRecord(name, source), allowOverwrite, message), ok)
            << name;
        EXPECT_EQ(message, text);
    }
    // Without a Lumbrak folder any name may be used.
    Fresh().LoadCatalogueNames("");
    list->LoadGenericNames((dir / "missing").string());
    EXPECT_TRUE(list->CheckOverwrite(MakeRecord("BK7", "SCHOTT"), true, message));
}

TEST(CatalogueRecord, ImageSurvivesLoadAndSave) {
    unsigned char img[kCatalogueRecordSize], out[kCatalogueRecordSize];
    for (size_t i = 0; i < sizeof img; ++i) img[i] = static_cast<unsigned char>(i * 13);
    CatalogueRecord c;
    FromBytes(img, c);
    ToBytes(c, out);
    EXPECT_EQ(std::memcmp(img, out, sizeof img), 0);
}

TEST(ExternalRecord, CarriesGeneralDataAtItsOffsets) {
    MaterialRecord r = MakeRecord("N-SF6", "LAB");
    GeneralData& g = r.General;  // the point count does not travel
    std::tie(g.GlassKind, g.GlassCode, g.Density, g.Polytype, g.PolyCoef[13], g.IndexWvMin,
             g.IndexWvMax, g.TransShortWave[0], g.TransShortValue[40], g.IndexPoints) =
        std::tuple(8, 805254, 3.37f, 6, 4.5, 370, 2500, 2500.0f, 99.0f, 12);
    ExternalRecord e;
    ClearGenericRecord(e);
    e.GlassName.Zero();
    ToExternalRecord(r.General, e);
    unsigned char img[kExternalRecordSize];
    ToBytes(e, img);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(img), 5), "N-SF6");
    EXPECT_EQ(std::string(reinterpret_cast<char*>(img) + 32, 3), "LAB");
    EXPECT_EQ(
        std::tuple(Get<int16_t>(img, 30), Get<int32_t>(img, 62), Get<float>(img, 66),
                   Get<int16_t>(img, 70), Get<double>(img, 72 + 8 * 13), Get<int16_t>(img, 184),
                   Get<int16_t>(img, 186), Get<float>(img, 188), Get<float>(img, 352 + 160)),
        std::tuple(8, 805254, 3.37f, 6, 4.5, 370, 2500, 2500.0f, 99.0f));
    for (size_t i = 516; i < kExternalRecordSize; ++i) EXPECT_EQ(img[i], 0);

    MaterialRecord back = ClearedMaterialRecord();
    FromExternalRecord(e, back.General);
    EXPECT_EQ(back.General.GlassName, r.General.GlassName);
    EXPECT_EQ(back.General.PolyCoef, r.General.PolyCoef);
    EXPECT_EQ(back.General.IndexPoints, 0);
}

// Reading one material of the list file gives what the loaded list holds at that position,
// whatever the file holds before it.

TEST_F(GlassesListTest, ReadListedMaterialAgreesWithTheLoadedListAtEveryPosition) {
    // A last record cut short inside its name, point counts larger than their tables, and
    // no record at all.
    MaterialRecord damaged = MakeRecord("BK7", "X", 1);
    std::tie(damaged.General.IndexPoints, damaged.Melt.MeltIndexPoints) = std::tuple(30000, 21);
    const std::pair<const char*, std::string> cases[] = {
        {"shorter than a name", Image({MakeRecord("A", "LAB", 1)}) + std::string(20, 'X')},
        {"damaged counts", Image({damaged})},
        {"empty", ""},
    };
    for (const auto& [name, file] : cases) {
        SCOPED_TRACE(name);
        const GlassesList& loaded = Loaded(file);
        const std::string folder = dir.path().string();
        for (int n = 1; n <= loaded.CustomCount(); ++n) {
            const auto one = GlassesList::ReadListedMaterial(folder, n);
            ASSERT_TRUE(one) << n;
            EXPECT_EQ(ToBytes(*one), ToBytes(loaded.CustomList()[size_t(n - 1)])) << n;
        }
        EXPECT_FALSE(GlassesList::ReadListedMaterial(folder, loaded.CustomCount() + 1));
        EXPECT_FALSE(GlassesList::ReadListedMaterial(folder, 0));
    }
    std::filesystem::remove(Current());
    EXPECT_FALSE(GlassesList::ReadListedMaterial(dir.path().string(), 1));
}

// --- the list window ---

// Melt rows are yellow; the popup is prepared only with no form open, on a row of a usable
// name, with the melt menu for a melt.
TEST_F(ListFixture, ListWindowShowsTheListAndPreparesThePopupOnAUsableRow) {
    MaterialRecord melt = MakeRecord("BK7 melt 12", "Schott");
    melt.Melt.MeltFlag = kTrue;
    GlassesList& l = Fresh();
    for (const auto& r : {MakeRecord("BK7", "Schott"), melt, MakeRecord("CaF2", "Crystran")})
        l.ListAdd(r, false);
    int currentForm = 0;
    std::vector<std::pair<int, std::string>> prepared, preparedMelt;
    std::vector<std::string> notes;
    auto into = [](auto& to) {
        return [&to](int index, const std::string& label) { to.emplace_back(index, label); };
    };
    frmGlassesList f(l, {[&] { return currentForm; }, into(prepared), into(preparedMelt),
                         [&](const std::string& t) { notes.push_back(t); }});
    f.Display();
    const Grid& g = f.ssGlassesList;
    ASSERT_EQ(g.MaxRows(), 3);
    EXPECT_EQ(std::tuple(g.Column(1).title, g.Column(2).title), std::tuple("Material", "Source"));
    EXPECT_EQ(g.ClipText({1, 1, 2, 3}), "BK7\tSchott\nBK7 melt 12\tSchott\nCaF2\tCrystran");
    EXPECT_EQ(std::tuple(g.RowColour(1), g.RowColour(2), g.RowColour(3)),
              std::tuple(kWhite, kMeltRowColour, kWhite));
    EXPECT_TRUE(g.Redraw());

    EXPECT_TRUE(f.ssGlassesListRightClick(3) && f.ssGlassesListRightClick(2));
    EXPECT_EQ(prepared, (std::vector<std::pair<int, std::string>>{{3, "CaF2/Crystran"}}));
    EXPECT_EQ(preparedMelt, (std::vector<std::pair<int, std::string>>{{2, "BK7 melt 12/Schott"}}));
    currentForm = 2;
    EXPECT_FALSE(f.ssGlassesListRightClick(1));
    EXPECT_EQ(notes, std::vector<std::string>{frmGlassesList::kMenuWhileFormOpen});
    currentForm = 0;
    EXPECT_FALSE(f.ssGlassesListRightClick(4)) << "below the last row";
    // A name with a NUL cannot enter the list; put it straight into the grid.
    f.ssGlassesList.SetText(1, 2, std::string("AB\0C", 4));
    EXPECT_FALSE(f.ssGlassesListRightClick(2));
    EXPECT_EQ(prepared.size() + preparedMelt.size(), 2u);

    ASSERT_TRUE(l.CommitList({MakeRecord("F2", "Schott")}));  // refreshes the form itself
    ASSERT_EQ(g.MaxRows(), 1);
    EXPECT_EQ(g.RowColour(1), kWhite) << "colours follow the new rows";
}

}  // namespace
}  // namespace ostrel::testing
