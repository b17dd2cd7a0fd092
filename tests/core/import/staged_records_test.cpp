// Whole real catalogues, one row per file. How many glasses are staged, how many are passed
// over for their formula or a failed refit, and how many staged glasses the Check column
// flags: a change which loses glasses, or which starts to misread coefficients, shows at once.
// Then every glass as it leaves the import form: its full record, its grid row (texts and
// status colour) and its check, one digest per file, with and without the refit of the
// further AGF formulas, pinned from what the form gave when full records were staged; a
// reader or staging change that alters a single byte of any of them shows here. Single
// glasses are then checked through the import form: computed nd and the Check text.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <set>
#include <string_view>

#include "core/import/import_fixture.h"
#include "core/import/refit_to_schott.h"
#include "core/material/material_record_codec.h"
#include "core/optics/glass_code.h"
#include "core/optics/index_from_polynomial.h"
#include "core/optics/trans_calcs.h"

namespace ostrel::testing {
namespace {

namespace fs = std::filesystem;

struct Catalogue {
    const char* file;  // below the data folder
    int staged;        // glasses read into the list
    int skipped;       // passed over: a formula without a stored form (AGF)
    // Passed over for another reason: in AGF a failed refit, which shows a box; in GLC a
    // line that cannot be read or a formula 3 glass without rows to give the band of its
    // refit (named in the message when no glass is left).
    int lost;
    int flagged;                        // staged glasses whose check flags them
    uint64_t plain;                     // the digest with other AGF formulas passed over
    uint64_t refitAll;                  // the digest with them refitted, 0 when the same
    const char* refitFailed = nullptr;  // the glass named by the box of a failed refit
};

// clang-format off
const Catalogue kCatalogues[] = {
    // file                                      staged skipped lost flagged
    {"agf/2020/AMTIR.AGF",                             1,   2, 0,   1, 0xe35caa34ff7df10a, 0x17e3765f563ea841},
    {"agf/2020/ANGSTROMLINK.AGF",                      4,   0, 0,   0, 0x6b779690b03d6166, 0},
    {"agf/2020/APEL.AGF",                              4,   0, 0,   1, 0x2d4b9d5699b0e6be, 0},
    {"agf/2020/ARCHER.AGF",                           15,   0, 0,   0, 0x18ade92bbb1aa710, 0},
    {"agf/2020/ARTON.AGF",                             6,   0, 0,   0, 0xad9bd46db04527d0, 0},
    {"agf/2020/AUER-LIGHTING.AGF",                     1,   0, 0,   0, 0xf80a8ce77fb2e0f2, 0},
    {"agf/2020/BIREFRINGENT.AGF",                     31,  31, 0,   4, 0x2ddb0d1b44a0aab5, 0xaeca9ea92d09806e},
    {"agf/2020/CDGM.AGF",                            256,   0, 0,   7, 0x90ce0366a79d76ef, 0},
    {"agf/2020/CORNING.AGF",                          95,   0, 0,   0, 0xa0a1911fc61357f3, 0},
    {"agf/2020/DOWSIL_MS.AGF",                         5,   0, 0,   0, 0xafd8bd1c5fa3476d, 0},
    {"agf/2020/HERAEUS.AGF",                          13,   0, 0,   0, 0x49afeaba757827d0, 0},
    {"agf/2020/HIKARI.AGF",                          183, 172, 0,   0, 0xd07269d56ad6a828, 0x70e1ce045d89ffb2},
    {"agf/2020/HOYA.AGF",                            398,   0, 0,   0, 0xb1d64ea52e5656f2, 0},
    {"agf/2020/INFRARED.AGF",                         41,   5, 0,  25, 0xa864b3ca56dc29f9, 0x8ca42ff7903251dd},
    {"agf/2020/INFRARED_DJG.AGF",                     41,   5, 0,  25, 0xbc781680b06c4e60, 0xc9926409e61b0730},
    {"agf/2020/IRPHOTONICS.AGF",                       1,   0, 0,   0, 0x17c2984b2c9a7949, 0},
    {"agf/2020/ISUZU.AGF",                             1,   0, 0,   1, 0xf650b0914feb65e5, 0},
    {"agf/2020/KOPPGLASS.AGF",                        23,   0, 0,  19, 0xbf7d0b94a4d53c83, 0},
    {"agf/2020/LB2000.AGF",                            2,   0, 0,   0, 0x9cd6f141674c7b37, 0},
    {"agf/2020/LIBA.AGF",                              2,   0, 0,   0, 0xea512bef4afdddcf, 0},
    {"agf/2020/LIGHTPATH.AGF",                        14,   0, 0,   4, 0x2c179daa4297d8c9, 0},
    {"agf/2020/LUXEXCEL.AGF",                          1,   0, 0,   1, 0x7a50945d001995b9, 0},
    {"agf/2020/LZOS.agf",                             55,   0, 0,   1, 0x9d9c60abe52b3e28, 0},
    {"agf/2020/MISC.AGF",                             23,   0, 0,   5, 0xbbf6b286cd1f8eab, 0},
    {"agf/2020/NHG.agf",                             222,   0, 0,  17, 0x845536b35467d238, 0},
    {"agf/2020/NIHON_KESSHO_KOGAKU.AGF",               2,   0, 0,   0, 0xd1505e80211db0b3, 0},
    {"agf/2020/NIKON-HIKARI.agf",                    183, 201, 0,   0, 0xfd53afaebb1c884c, 0xb1f349593bb3052a},
    {"agf/2020/NIKON.agf",                             0,  12, 0,   0, 0xcbf29ce484222325, 0x74d2d93a82acf7ff},
    {"agf/2020/OHARA.agf",                           418,   0, 0,   0, 0x62b2dc551f8e8d2b, 0},
    {"agf/2020/OHARA_190820.AGF",                    153,   0, 0,   0, 0x0d1ae9da31976b37, 0},
    {"agf/2020/OPTIMAX.AGF",                          35,   0, 0,   0, 0xc397a04fecd28a3e, 0},
    {"agf/2020/OSAKAGASCHEMICAL.AGF",                  6,   0, 0,   0, 0x37e72aa189b85db4, 0},
    {"agf/2020/PILKINGTON.AGF",                       33,   0, 0,   0, 0x897765078acf095b, 0},
    {"agf/2020/REDWAVE_IR.AGF",                        4,   0, 0,   4, 0x153b11bb1b2cbc41, 0},
    {"agf/2020/RPO.AGF",                              43,   0, 0,   4, 0xafef642797126bb5, 0},
    {"agf/2020/Rad_Hard.AGF",                          7,   0, 0,   0, 0x01e69504a80b7cd3, 0},
    {"agf/2020/SABIC_Thermo_Optical_Polymers.agf",     4,   0, 0,   3, 0x471cabe3c4ee6acc, 0},
    {"agf/2020/SCHOTT.AGF",                          356,   0, 0,   0, 0x1ea543fc90b1601b, 0},
    {"agf/2020/SCHOTT_IG.AGF",                        10,   0, 0,  10, 0x8b0cc2cc76ad6599, 0},
    {"agf/2020/SCHOTT_IRG.AGF",                        6,   0, 0,   6, 0x70d1a0e52c7a7737, 0},
    {"agf/2020/Sumita.agf",                          397,   0, 0,  13, 0x49ae1b5768668795, 0},
    {"agf/2020/TOPAS.AGF",                             3,   0, 0,   0, 0xddfd5f1b998d1361, 0},
    {"agf/2020/UMICORE.AGF",                           3,   0, 0,   3, 0x841f4e9d7c4dff70, 0},
    {"agf/2020/USERJJ.AGF",                           12,   0, 1,   1, 0x8ef9eac051c8c5fb, 0, "CG"},
    {"agf/2020/ZEON.AGF",                             24,   0, 0,   0, 0x9e39fbfb531a6fe4, 0},
    {"agf/newer/HOYA20220711_include_obsolete.agf",  408,   0, 0,   0, 0x79b0a118f5d5d5f4, 0},
    {"agf/newer/HOYA_20200803.agf",                  209,   0, 0,   0, 0x9091d2916ec2f5e7, 0},
    {"agf/newer/NIKON-HIKARI_201911.AGF",            186, 197, 0,   0, 0x4da11a8ad5202700, 0x73653536bc6b686a},
    {"agf/newer/OHARA_20200623.AGF",                 158,   0, 0,   0, 0x67ae295e8725bbcf, 0},
    {"agf/newer/SCHOTT_20180601.agf",                160,   0, 0,   0, 0x94b6012b69d568bb, 0},
    {"agf/newer/SCHOTT_kraken.AGF",                  322,   0, 0,   0, 0x513dff3be9a6c46d, 0},
    {"agf/newer/SUMITA_20200803.agf",                400,   0, 0,  13, 0x92f87a218538b8c7, 0},
    {"agf/legacy/archer.agf",                         15,   0, 0,   0, 0xff69f92c813b3310, 0},
    {"agf/legacy/arton.agf",                           6,   0, 0,   0, 0xc9332a4333c076d0, 0},
    {"agf/legacy/birefringent.agf",                   31,  31, 0,   4, 0x84c43f506995dab5, 0x7b711c93caf7676e},
    {"agf/legacy/cdgm.agf",                          162,   0, 0,   0, 0x4f603f0d3823efb2, 0},
    {"agf/legacy/corning.agf",                        95,   0, 0,   0, 0x0a0303768e37a5b3, 0},
    {"agf/legacy/heraeus.agf",                         5,   0, 0,   0, 0x5dd1e7755be20479, 0},
    {"agf/legacy/hikari.agf",                        183, 149, 0,   0, 0x2c3590134b228f68, 0x7405d8244406ca6b},
    {"agf/legacy/hoya.agf",                          376,   0, 0,   0, 0x86355caddee591ac, 0},
    {"agf/legacy/infrared.agf",                       43,   5, 0,  27, 0x7ea198fd5cc5f175, 0x8511590ec52a432e},
    {"agf/legacy/isuzu.agf",                           1,   0, 0,   1, 0xc54c5d207720bfa5, 0},
    {"agf/legacy/liebetraut.agf",                     18,   0, 0,  18, 0x8ef6b8d9f6d2626f, 0},
    {"agf/legacy/lightpath.agf",                      11,   0, 0,   3, 0x3d0b0176edd0d9b6, 0},
    {"agf/legacy/lzos.agf",                           55,   0, 0,   1, 0xb7a95cfbd6936be8, 0},
    {"agf/legacy/misc.agf",                           23,   0, 0,   5, 0x923488d453326eca, 0},
    {"agf/legacy/nikon.agf",                         186, 197, 0,   0, 0x4216b6f8aeeb5e44, 0x5ee85defdbbb4c24},
    {"agf/legacy/ohara.agf",                         417,   0, 0,   0, 0x7bf68a6fac8b47f8, 0},
    {"agf/legacy/rad_hard.agf",                        7,   0, 0,   0, 0x996fa515724d0e53, 0},
    {"agf/legacy/rpo.agf",                            43,   0, 0,   4, 0x04450337e238b7b5, 0},
    {"agf/legacy/schott.agf",                        160,   0, 0,   0, 0x8d81dde0fecce90b, 0},
    {"agf/legacy/sumita.agf",                        192,   0, 0,  10, 0x48df634d0f8293b8, 0},
    {"agf/legacy/topas.agf",                           3,   0, 0,   0, 0x6953da8c16f8f7a1, 0},
    {"agf/legacy/umicore.agf",                         2,   0, 0,   2, 0xd6080d117f1321b5, 0},
    {"agf/legacy/zeon.agf",                            3,   0, 0,   1, 0x6872482245d92331, 0},
    {"glc/CDGM-IR.glc",                                0,   0, 0,   0, 0xcbf29ce484222325, 0},
    {"glc/CDGM.glc",                                 262,   0, 0, 186, 0x46cd72e3270ed10e, 0},
    {"glc/corning.glc",                               94,   0, 0,   0, 0x0f83962530b06b38, 0},
    {"glc/hikari.glc",                                 0,   0, 0,   0, 0xcbf29ce484222325, 0},
    {"glc/hoya.glc",                                 189,   0, 0,   0, 0x3c6cb43e9d6ffe6d, 0},
    {"glc/misc.glc",                                 130,   0, 4,  31, 0xc96795744802249d, 0},
    {"glc/obsolete001.glc",                          671,   0, 0,   0, 0x90515c975481e87a, 0},
    {"glc/obsolete002.glc",                          661,   0, 0,   2, 0xf341f84fab6888e6, 0},
    {"glc/obsolete003.glc",                          215,   0, 0,   3, 0x9d83c09494b6c48a, 0},
    {"glc/ohara.glc",                                152,   0, 0,   0, 0x019bae6b850b03fb, 0},
    {"glc/pilkington.glc",                            30,   0, 0,   0, 0x1b1958ac404d8749, 0},
    {"glc/schott.glc",                               141,   0, 0,   0, 0x0ba11af75767e91b, 0},
    {"glc/schott_radhard.glc",                         7,   0, 0,   0, 0xaf4057564eb0a25e, 0},
    {"glc/shared.glc",                                 0,   0, 0,   0, 0xcbf29ce484222325, 0},
    {"glc/sumita.glc",                               115,   0, 0,   4, 0xbe3d119a2012f501, 0},
    {"glc/vitron.glc",                                 5,   0, 0,   5, 0x94a9ad8b5adc191f, 0},
};
// clang-format on

// FNV-1a, 64 bits.
struct Digest {
    uint64_t value = 0xcbf29ce484222325ULL;
    void Add(const void* data, size_t size) {
        const auto* p = static_cast<const unsigned char*>(data);
        for (size_t i = 0; i < size; ++i) value = (value ^ p[i]) * 0x100000001b3ULL;
    }
    void Add(std::string_view text) {
        Add(text.data(), text.size());
        Add("\0", 1);
    }
};

class CatalogueTest : public ImportForm, public ::testing::WithParamInterface<Catalogue> {
  protected:
    uint64_t StageAndDigest(const std::string& file, bool refitAll) {
        form.chkRefitOther.value = refitAll;
        form.ImportFile(Shared(file), frm4Import::FileTypeOf(file, frm4Import::kAGF));
        Digest d;
        const auto& recs = form.ImportList();
        const auto& g = form.ssGlasses;
        EXPECT_EQ(g.MaxRows(), form.ImportCount());
        for (int r = 1; r <= g.MaxRows(); ++r) {
            const auto i = static_cast<size_t>(r - 1);
            const MaterialImage image = ToBytes(recs.at(i));
            d.Add(image.data(), image.size());
            for (int c = 1; c <= g.MaxCols(); ++c) d.Add(g.Text(c, r));
            const auto colour = g.CellColour(frm4Import::kColStatus, r);
            const unsigned char rgb[] = {colour ? colour->r : uint8_t{0},
                                         colour ? colour->g : uint8_t{0},
                                         colour ? colour->b : uint8_t{0}};
            d.Add(rgb, sizeof rgb);
            d.Add(form.CheckTexts().at(i));
            d.Add(form.Flagged().at(i) ? "flagged" : "");
        }
        return d.value;
    }
};

// The import form stages glasses with their transmission tables left for later and finishes
// them when a glass is added: every byte must come out as a complete read gives it.
TEST_P(CatalogueTest, StagesAndFlagsTheKnownNumbersAndTablesLeftForLaterComeOutTheSame) {
    const auto& want = GetParam();
    const fs::path p = kShared / want.file;
    if (!fs::exists(p)) GTEST_SKIP() << "no catalogue data";
    const Staged r = ReadCatalogue(p);
    ASSERT_EQ(r.ok, -1);
    EXPECT_EQ(r.recs.size(), static_cast<size_t>(r.count));
    EXPECT_EQ(r.errors.size(), r.recs.size());
    ASSERT_EQ(r.checks.size(), r.recs.size());
    EXPECT_EQ(r.count, want.staged);
    EXPECT_EQ(r.skipped, want.skipped);
    EXPECT_EQ(std::count(r.flagged.begin(), r.flagged.end(), true), want.flagged);

    // GLC loses glasses silently; in AGF only a failed refit loses one, in a box of its own.
    EXPECT_EQ(static_cast<int>(r.dialogs.boxes.size()), p.extension() == ".glc" ? 0 : want.lost);
    if (want.refitFailed) {
        const std::string& box = r.dialogs.boxes.at(0).text;
        EXPECT_EQ(box.substr(0, box.find('\n')), RefitFailedLine(want.refitFailed));
    }

    ImportOptions later;
    later.leaveTransTables = true;
    Staged deferred = ReadCatalogue(p, later);
    ASSERT_EQ(deferred.recs.size(), r.recs.size());
    EXPECT_EQ(deferred.checks, r.checks);
    for (size_t i = 0; i < r.recs.size(); ++i) {
        FinishImportedTrans(deferred.recs[i]);
        ASSERT_EQ(ToBytes(deferred.recs[i]), ToBytes(r.recs[i]))
            << r.recs[i].General.GlassName.Text();
    }
}

TEST_P(CatalogueTest, RecordsRowsAndChecksAreUnchanged) {
    const auto& want = GetParam();
    if (!fs::exists(kShared / want.file)) GTEST_SKIP() << "no catalogue data";
    const uint64_t plain = StageAndDigest(want.file, false);
    const uint64_t refitAll = StageAndDigest(want.file, true);
    char got[64];
    std::snprintf(got, sizeof got, "0x%016llx, 0x%016llx", static_cast<unsigned long long>(plain),
                  static_cast<unsigned long long>(refitAll));
    EXPECT_EQ(plain, want.plain) << got;
    EXPECT_EQ(refitAll, want.refitAll ? want.refitAll : want.plain) << got;
}

INSTANTIATE_TEST_SUITE_P(RealFiles, CatalogueTest, ::testing::ValuesIn(kCatalogues),
                         [](const auto& info) {
                             std::string name = info.param.file;
                             for (char& c : name) {
                                 if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
                             }
                             return name;
                         });

// The table names every catalogue of the data folder, so that no file goes unchecked.
TEST(CatalogueCounts, TableCoversEveryFile) {
    if (!fs::exists(kShared / "agf")) GTEST_SKIP() << "no catalogue data";
    std::set<std::string> listed;
    for (const auto& c : kCatalogues) listed.insert(c.file);
    std::set<std::string> present;
    for (const char* dir : {"agf/2020", "agf/newer", "agf/legacy", "glc"}) {
        for (const auto& e : fs::directory_iterator(kShared / dir)) {
            present.insert(fs::relative(e.path(), kShared).generic_string());
        }
    }
    EXPECT_EQ(listed, present);
}

// Single glasses through the import form: the nd computed from the staged coefficients
// against the catalogue value; N-BK7 leaves staging with its derived data.
struct KnownGlass {
    const char* file;
    const char* glass;
    double nd;
};

class KnownGlassTest : public ImportForm, public ::testing::WithParamInterface<KnownGlass> {};

TEST_P(KnownGlassTest, NdMatchesTheCatalogue) {
    const auto& k = GetParam();
    if (!fs::exists(kShared / k.file)) GTEST_SKIP() << "no catalogue data";
    ASSERT_TRUE(form.ImportFile(Shared(k.file), frm4Import::FileTypeOf(k.file, 0)));
    const auto staged = form.ImportList();
    const auto m = std::find_if(staged.begin(), staged.end(), [&](const MaterialRecord& r) {
        return r.General.GlassName.Text() == k.glass;
    });
    ASSERT_NE(m, staged.end()) << k.glass << " not staged";
    int16_t ok = 0;
    EXPECT_NEAR(IndexFromPolynomial(m->General.PolyCoef, kWaveD, m->General.Polytype, ok), k.nd,
                1e-5);
    if (k.glass == std::string("N-BK7")) {
        EXPECT_FLOAT_EQ(m->Derived.nd, 1.5168f);
        EXPECT_FLOAT_EQ(m->Derived.vd, 64.17f);
        EXPECT_EQ(m->General.GlassCode, 517642);
    }
}

INSTANTIATE_TEST_SUITE_P(RealFiles, KnownGlassTest,
                         ::testing::Values(KnownGlass{"agf/2020/SCHOTT.AGF", "N-BK7", 1.51680},
                                           KnownGlass{"agf/2020/SCHOTT.AGF", "F2", 1.62004},
                                           KnownGlass{"agf/2020/SCHOTT.AGF", "N-SF11", 1.78472},
                                           KnownGlass{"agf/2020/OHARA.agf", "S-BSL7", 1.51633},
                                           KnownGlass{"agf/2020/HIKARI.AGF", "E-F2", 1.62004},
                                           KnownGlass{"agf/2020/HERAEUS.AGF", "HERASIL", 1.458563},
                                           KnownGlass{"glc/schott.glc", "N-BK7", 1.51680},
                                           KnownGlass{"glc/hoya.glc", "BAC4", 1.56883}));

// With the option on, glasses of formulas without a stored form are refitted, not passed
// over: every glass of the file is staged (172 of HIKARI's would be skipped otherwise), and
// every refit stays close.
TEST(CatalogueRefitOption, StagesEveryGlassOfTheFile) {
    const fs::path p = kShared / "agf/2020/HIKARI.AGF";
    if (!fs::exists(p)) GTEST_SKIP() << "no catalogue data";
    ImportOptions options;
    options.refitOtherFormulas = true;
    const Staged r = ReadCatalogue(p, options);
    ASSERT_EQ(r.ok, -1);
    EXPECT_EQ(r.skipped, 0);
    EXPECT_EQ(r.count, 183 + 172);
    for (size_t i = 0; i < r.recs.size(); ++i) {
        EXPECT_LT(r.errors[i], 1e-3) << r.recs[i].General.GlassName.Text();
    }
}

}  // namespace
}  // namespace ostrel::testing
