// Every glass of every real catalogue, as it leaves the import form: its full record, its grid
// row (texts and status colour) and its check. One digest per file, with and without the refit
// of the further AGF formulas, pinned from what the form gave when full records were staged;
// a reader or staging change that alters a single byte of any of them shows here.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <string_view>

#include "core/import/import_fixture.h"
#include "core/material/material_record_codec.h"

namespace ostrel::testing {
namespace {

namespace fs = std::filesystem;

struct StagedDigest {
    const char* file;  // below the data folder
    uint64_t plain;    // glasses of other AGF formulas passed over
    uint64_t refitAll;
};

std::ostream& operator<<(std::ostream& os, const StagedDigest& d) {
    return os << d.file;
}

// FNV-1a, 64 bits.
class Digest {
  public:
    void Add(const void* data, size_t size) {
        const auto* p = static_cast<const unsigned char*>(data);
        for (size_t i = 0; i < size; ++i) value_ = (value_ ^ p[i]) * 0x100000001b3ULL;
    }
    void Add(std::string_view text) {
        Add(text.data(), text.size());
        Add("\0", 1);
    }
    uint64_t value() const { return value_; }

  private:
    uint64_t value_ = 0xcbf29ce484222325ULL;
};

class StagedDigestTest : public ImportForm, public ::testing::WithParamInterface<StagedDigest> {
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
        return d.value();
    }
};

TEST_P(StagedDigestTest, RecordsRowsAndChecksAreUnchanged) {
    const auto& want = GetParam();
    if (!fs::exists(kShared / want.file)) GTEST_SKIP() << "no catalogue data";
    const uint64_t plain = StageAndDigest(want.file, false);
    const uint64_t refitAll = StageAndDigest(want.file, true);
    char got[64];
    std::snprintf(got, sizeof got, "0x%016llx, 0x%016llx", static_cast<unsigned long long>(plain),
                  static_cast<unsigned long long>(refitAll));
    EXPECT_EQ(plain, want.plain) << got;
    EXPECT_EQ(refitAll, want.refitAll) << got;
}

constexpr StagedDigest kDigests[] = {
    {"agf/2020/AMTIR.AGF", 0xe35caa34ff7df10a, 0x17e3765f563ea841},
    {"agf/2020/ANGSTROMLINK.AGF", 0x6b779690b03d6166, 0x6b779690b03d6166},
    {"agf/2020/APEL.AGF", 0x2d4b9d5699b0e6be, 0x2d4b9d5699b0e6be},
    {"agf/2020/ARCHER.AGF", 0x18ade92bbb1aa710, 0x18ade92bbb1aa710},
    {"agf/2020/ARTON.AGF", 0xad9bd46db04527d0, 0xad9bd46db04527d0},
    {"agf/2020/AUER-LIGHTING.AGF", 0xf80a8ce77fb2e0f2, 0xf80a8ce77fb2e0f2},
    {"agf/2020/BIREFRINGENT.AGF", 0x2ddb0d1b44a0aab5, 0xaeca9ea92d09806e},
    {"agf/2020/CDGM.AGF", 0x90ce0366a79d76ef, 0x90ce0366a79d76ef},
    {"agf/2020/CORNING.AGF", 0xa0a1911fc61357f3, 0xa0a1911fc61357f3},
    {"agf/2020/DOWSIL_MS.AGF", 0xafd8bd1c5fa3476d, 0xafd8bd1c5fa3476d},
    {"agf/2020/HERAEUS.AGF", 0x49afeaba757827d0, 0x49afeaba757827d0},
    {"agf/2020/HIKARI.AGF", 0xd07269d56ad6a828, 0x70e1ce045d89ffb2},
    {"agf/2020/HOYA.AGF", 0xb1d64ea52e5656f2, 0xb1d64ea52e5656f2},
    {"agf/2020/INFRARED.AGF", 0xa864b3ca56dc29f9, 0x8ca42ff7903251dd},
    {"agf/2020/INFRARED_DJG.AGF", 0xbc781680b06c4e60, 0xc9926409e61b0730},
    {"agf/2020/IRPHOTONICS.AGF", 0x17c2984b2c9a7949, 0x17c2984b2c9a7949},
    {"agf/2020/ISUZU.AGF", 0xf650b0914feb65e5, 0xf650b0914feb65e5},
    {"agf/2020/KOPPGLASS.AGF", 0xbf7d0b94a4d53c83, 0xbf7d0b94a4d53c83},
    {"agf/2020/LB2000.AGF", 0x9cd6f141674c7b37, 0x9cd6f141674c7b37},
    {"agf/2020/LIBA.AGF", 0xea512bef4afdddcf, 0xea512bef4afdddcf},
    {"agf/2020/LIGHTPATH.AGF", 0x2c179daa4297d8c9, 0x2c179daa4297d8c9},
    {"agf/2020/LUXEXCEL.AGF", 0x7a50945d001995b9, 0x7a50945d001995b9},
    {"agf/2020/LZOS.agf", 0x9d9c60abe52b3e28, 0x9d9c60abe52b3e28},
    {"agf/2020/MISC.AGF", 0xbbf6b286cd1f8eab, 0xbbf6b286cd1f8eab},
    {"agf/2020/NHG.agf", 0x845536b35467d238, 0x845536b35467d238},
    {"agf/2020/NIHON_KESSHO_KOGAKU.AGF", 0xd1505e80211db0b3, 0xd1505e80211db0b3},
    {"agf/2020/NIKON-HIKARI.agf", 0xfd53afaebb1c884c, 0xb1f349593bb3052a},
    {"agf/2020/NIKON.agf", 0xcbf29ce484222325, 0x74d2d93a82acf7ff},
    {"agf/2020/OHARA.agf", 0x62b2dc551f8e8d2b, 0x62b2dc551f8e8d2b},
    {"agf/2020/OHARA_190820.AGF", 0x0d1ae9da31976b37, 0x0d1ae9da31976b37},
    {"agf/2020/OPTIMAX.AGF", 0xc397a04fecd28a3e, 0xc397a04fecd28a3e},
    {"agf/2020/OSAKAGASCHEMICAL.AGF", 0x37e72aa189b85db4, 0x37e72aa189b85db4},
    {"agf/2020/PILKINGTON.AGF", 0x897765078acf095b, 0x897765078acf095b},
    {"agf/2020/REDWAVE_IR.AGF", 0x153b11bb1b2cbc41, 0x153b11bb1b2cbc41},
    {"agf/2020/RPO.AGF", 0xafef642797126bb5, 0xafef642797126bb5},
    {"agf/2020/Rad_Hard.AGF", 0x01e69504a80b7cd3, 0x01e69504a80b7cd3},
    {"agf/2020/SABIC_Thermo_Optical_Polymers.agf", 0x471cabe3c4ee6acc, 0x471cabe3c4ee6acc},
    {"agf/2020/SCHOTT.AGF", 0x1ea543fc90b1601b, 0x1ea543fc90b1601b},
    {"agf/2020/SCHOTT_IG.AGF", 0x8b0cc2cc76ad6599, 0x8b0cc2cc76ad6599},
    {"agf/2020/SCHOTT_IRG.AGF", 0x70d1a0e52c7a7737, 0x70d1a0e52c7a7737},
    {"agf/2020/Sumita.agf", 0x49ae1b5768668795, 0x49ae1b5768668795},
    {"agf/2020/TOPAS.AGF", 0xddfd5f1b998d1361, 0xddfd5f1b998d1361},
    {"agf/2020/UMICORE.AGF", 0x841f4e9d7c4dff70, 0x841f4e9d7c4dff70},
    {"agf/2020/USERJJ.AGF", 0x8ef9eac051c8c5fb, 0x8ef9eac051c8c5fb},
    {"agf/2020/ZEON.AGF", 0x9e39fbfb531a6fe4, 0x9e39fbfb531a6fe4},
    {"agf/newer/HOYA20220711_include_obsolete.agf", 0x79b0a118f5d5d5f4, 0x79b0a118f5d5d5f4},
    {"agf/newer/HOYA_20200803.agf", 0x9091d2916ec2f5e7, 0x9091d2916ec2f5e7},
    {"agf/newer/NIKON-HIKARI_201911.AGF", 0x4da11a8ad5202700, 0x73653536bc6b686a},
    {"agf/newer/OHARA_20200623.AGF", 0x67ae295e8725bbcf, 0x67ae295e8725bbcf},
    {"agf/newer/SCHOTT_20180601.agf", 0x94b6012b69d568bb, 0x94b6012b69d568bb},
    {"agf/newer/SCHOTT_kraken.AGF", 0x513dff3be9a6c46d, 0x513dff3be9a6c46d},
    {"agf/newer/SUMITA_20200803.agf", 0x92f87a218538b8c7, 0x92f87a218538b8c7},
    {"agf/legacy/archer.agf", 0xff69f92c813b3310, 0xff69f92c813b3310},
    {"agf/legacy/arton.agf", 0xc9332a4333c076d0, 0xc9332a4333c076d0},
    {"agf/legacy/birefringent.agf", 0x84c43f506995dab5, 0x7b711c93caf7676e},
    {"agf/legacy/cdgm.agf", 0x4f603f0d3823efb2, 0x4f603f0d3823efb2},
    {"agf/legacy/corning.agf", 0x0a0303768e37a5b3, 0x0a0303768e37a5b3},
    {"agf/legacy/heraeus.agf", 0x5dd1e7755be20479, 0x5dd1e7755be20479},
    {"agf/legacy/hikari.agf", 0x2c3590134b228f68, 0x7405d8244406ca6b},
    {"agf/legacy/hoya.agf", 0x86355caddee591ac, 0x86355caddee591ac},
    {"agf/legacy/infrared.agf", 0x7ea198fd5cc5f175, 0x8511590ec52a432e},
    {"agf/legacy/isuzu.agf", 0xc54c5d207720bfa5, 0xc54c5d207720bfa5},
    {"agf/legacy/liebetraut.agf", 0x8ef6b8d9f6d2626f, 0x8ef6b8d9f6d2626f},
    {"agf/legacy/lightpath.agf", 0x3d0b0176edd0d9b6, 0x3d0b0176edd0d9b6},
    {"agf/legacy/lzos.agf", 0xb7a95cfbd6936be8, 0xb7a95cfbd6936be8},
    {"agf/legacy/misc.agf", 0x923488d453326eca, 0x923488d453326eca},
    {"agf/legacy/nikon.agf", 0x4216b6f8aeeb5e44, 0x5ee85defdbbb4c24},
    {"agf/legacy/ohara.agf", 0x7bf68a6fac8b47f8, 0x7bf68a6fac8b47f8},
    {"agf/legacy/rad_hard.agf", 0x996fa515724d0e53, 0x996fa515724d0e53},
    {"agf/legacy/rpo.agf", 0x04450337e238b7b5, 0x04450337e238b7b5},
    {"agf/legacy/schott.agf", 0x8d81dde0fecce90b, 0x8d81dde0fecce90b},
    {"agf/legacy/sumita.agf", 0x48df634d0f8293b8, 0x48df634d0f8293b8},
    {"agf/legacy/topas.agf", 0x6953da8c16f8f7a1, 0x6953da8c16f8f7a1},
    {"agf/legacy/umicore.agf", 0xd6080d117f1321b5, 0xd6080d117f1321b5},
    {"agf/legacy/zeon.agf", 0x6872482245d92331, 0x6872482245d92331},
    {"glc/CDGM-IR.glc", 0xcbf29ce484222325, 0xcbf29ce484222325},
    {"glc/CDGM.glc", 0x46cd72e3270ed10e, 0x46cd72e3270ed10e},
    {"glc/corning.glc", 0x0f83962530b06b38, 0x0f83962530b06b38},
    {"glc/hikari.glc", 0xcbf29ce484222325, 0xcbf29ce484222325},
    {"glc/hoya.glc", 0x3c6cb43e9d6ffe6d, 0x3c6cb43e9d6ffe6d},
    {"glc/misc.glc", 0xc96795744802249d, 0xc96795744802249d},
    {"glc/obsolete001.glc", 0x90515c975481e87a, 0x90515c975481e87a},
    {"glc/obsolete002.glc", 0xf341f84fab6888e6, 0xf341f84fab6888e6},
    {"glc/obsolete003.glc", 0x9d83c09494b6c48a, 0x9d83c09494b6c48a},
    {"glc/ohara.glc", 0x019bae6b850b03fb, 0x019bae6b850b03fb},
    {"glc/pilkington.glc", 0x1b1958ac404d8749, 0x1b1958ac404d8749},
    {"glc/schott.glc", 0x0ba11af75767e91b, 0x0ba11af75767e91b},
    {"glc/schott_radhard.glc", 0xaf4057564eb0a25e, 0xaf4057564eb0a25e},
    {"glc/shared.glc", 0xcbf29ce484222325, 0xcbf29ce484222325},
    {"glc/sumita.glc", 0xbe3d119a2012f501, 0xbe3d119a2012f501},
    {"glc/vitron.glc", 0x94a9ad8b5adc191f, 0x94a9ad8b5adc191f},
};

INSTANTIATE_TEST_SUITE_P(RealFiles, StagedDigestTest, ::testing::ValuesIn(kDigests),
                         [](const auto& info) {
                             std::string name = info.param.file;
                             for (char& c : name) {
                                 if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
                             }
                             return name;
                         });

}  // namespace
}  // namespace ostrel::testing
