// Reading one material of the list file gives what the loaded list holds at that position,
// whatever the file holds before it.
#include "core/material/material_record_codec.h"
#include "list_fixture.h"

namespace ostrel::testing {
namespace {

using ListedMaterial = ListFixture;

TEST_F(ListedMaterial, AgreesWithTheLoadedListAtEveryPosition) {
    MaterialRecord blank = MakeRecord("  ", "LAB", 9);
    // A record cut short at the end of the file, as a damaged file may be.
    std::string cut = Image({MakeRecord("LAST", "LAB", 5)});
    cut.resize(kMaterialRecordSize / 2);
    const struct {
        const char* name;
        std::string file;
    } cases[] = {
        {"plain", Image({MakeRecord("A", "LAB", 1), MakeRecord("B", "LAB", 2)})},
        {"blank name and repeated key passed over",
         Image({blank, MakeRecord("A", "LAB", 1), MakeRecord("a", "lab", 3),
                MakeRecord("B", "LAB", 2)})},
        {"short last record", Image({MakeRecord("A", "LAB", 1)}) + cut},
        {"shorter than a name", Image({MakeRecord("A", "LAB", 1)}) + std::string(20, 'X')},
        {"empty", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const GlassesList& loaded = Loaded(c.file);
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

}  // namespace
}  // namespace ostrel::testing
