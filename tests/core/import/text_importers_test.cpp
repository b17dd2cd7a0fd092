// The AGF, GLC, GLA and GLS importers on small crafted files, one rule at a time.
#include <gtest/gtest.h>

#include <cmath>

#include "core/import/import_fixture.h"
#include "core/import/import_old_files.h"
#include "core/import/row_layout.h"
#include "core/materialform/verification.h"
#include "core/optics/glass_code.h"

namespace ostrel::testing {
namespace {

Staged ReadAgfText(const std::string& text) {
    TempDir dir;
    WriteFileBytes(dir / "x.agf", text);
    return ReadCatalogue(dir / "x.agf");
}

// The catalogue rules show in every record of the real catalogues, but no catalogue there is
// named after Chengdu: its glasses are CDGM's. The absorption of a row of 0.9 over the 25 mm
// of the first IT line is worked out by hand.
TEST(AgfImport, ChengduSourceAndAbsorption) {
    const Staged r = ReadCatalogue(Data("chengdu.agf"));
    ASSERT_EQ(r.count, 1);
    EXPECT_EQ(r.recs[0].General.Source.Text(), "CDGM");
    EXPECT_NEAR(r.recs[0].Measured.TransAbsorb[3], -std::log(0.9) / 25.0, 1e-7);
}

TEST(AgfImport, FailedReadsKeepEarlierGlassesAndSayWhy) {
    const Staged r = ReadCatalogue(Data("bad_number.agf"));
    EXPECT_EQ(r.ok, 0);
    ASSERT_EQ(r.count, 1);
    EXPECT_EQ(r.recs[0].General.GlassName.Text(), "OK1");
    EXPECT_NE(r.errorText.find("line 5, glass BAD2: \"x\" is no number"), std::string::npos)
        << r.errorText;
    // A file without line ends.
    const Staged flat = ReadAgfText("NM X 1 0 1.5 60 0 1 " + std::string(250, 'x'));
    EXPECT_EQ(flat.ok, 0);
    EXPECT_EQ(flat.errorText, kNoCarriageReturnMsg);
}

TEST(AgfImport, MoreThan41RowsAllKept) {
    std::string text =
        "NM MANY 1 0 1.5 60 0 1\nCD 2.27 -0.0101 0.0106 0.00017 -2e-6 1e-6\n"
        "LD 0.3 2.5\n";
    for (int i = 0; i < 44; ++i) text += "IT " + std::to_string(0.3 + 0.05 * i) + " 0.9 10\n";
    const Staged r = ReadAgfText(text);
    ASSERT_EQ(r.count, 1);
    EXPECT_EQ(r.recs[0].Measured.TransPoints, 44);
    // The glass code is the polynomial's, not the one the name line implies (500600).
    MaterialRecord derived = r.recs[0];
    UpdateGlassCode(derived);
    EXPECT_NE(derived.General.GlassCode, 500600);
    EXPECT_EQ(r.recs[0].General.GlassCode, derived.General.GlassCode);
    // The short tables span the band: its two ends and rows spread evenly between them.
    const auto& g = r.recs[0].General;
    EXPECT_NEAR(g.TransShortWave[0], 2450, 1e-3);
    EXPECT_NEAR(g.TransShortWave[20], 1350, 1e-3);
    EXPECT_NEAR(g.TransShortWave[40], 300, 1e-3);
}

// A row wrapped onto a line of bare numbers, a row without a wavelength, and tabs between
// words: the first row kept gives the width. A line of bare numbers after a comment line
// continues nothing.
TEST(AgfImport, WrappedAndEmptyRows) {
    const Staged r = ReadAgfText(
        "NM WRAP 1 0 1.5 60 0 1\nCD 2.27 -0.0101 0.0106 0.00017 -2e-6\nGC note\n 1e-6\n"
        "LD 0.3 2.5\nIT 0.4\n  0.8 5\nIT - 0.5 10\nIT\t0.6\t0.9\t10\n");
    ASSERT_EQ(r.count, 1);
    EXPECT_EQ(r.recs[0].General.PolyCoef[5], 0.0);
    const auto& m = r.recs[0].Measured;
    ASSERT_EQ(m.TransPoints, 2);
    EXPECT_EQ(m.TransWidth, 5.0f);
    EXPECT_EQ(m.TransWave[1], 400.0f);
    EXPECT_EQ(m.TransInternal[1], 80.0f);
    EXPECT_EQ(m.TransWave[0], 600.0f);
    EXPECT_EQ(m.TransInternal[0], 90.0f);
}

// Rows of the layout learned from an earlier glass are taken as the file is read; however
// they are arranged (line ends of either kind, a blank line, a wrapped row, a row of another
// layout among them), the glass holds the rows the general reading gives.
TEST(AgfImport, RowsTakenByTheirLayoutReadAsAnyOthers) {
    const std::string head = "NM G 1 0 1.5 60 0 1\nCD 2.27 -0.0101 0.0106 0.00017 -2e-6 1e-6\n";
    const std::string teacher = head + "IT 3.00000E-01 5.00000E-01 2.50000E+01\n";
    const Strings rows = {
        "IT 3.50000E-01 7.80000E-01 2.50000E+01", "IT 4.00000E-01 9.10000E-01 2.50000E+01",
        "IT 5.00000E-01 9.90000E-01 2.50000E+01", "IT 1.06000E+00 9.99000E-01 2.50000E+01"};
    const struct {
        const char* what;
        std::string glass;
    } cases[] = {
        {"line feeds", rows[0] + "\n" + rows[1] + "\n" + rows[2] + "\n" + rows[3] + "\n"},
        {"CR LF", rows[0] + "\r\n" + rows[1] + "\r\n" + rows[2] + "\r\n" + rows[3] + "\r\n"},
        {"mixed ends", rows[0] + "\n" + rows[1] + "\r\n" + rows[2] + "\n" + rows[3]},
        {"blank line", rows[0] + "\n" + rows[1] + "\n\n" + rows[2] + "\n" + rows[3] + "\n"},
        {"wrapped", rows[0] + "\n" + rows[1] + "\n 7\n" + rows[2] + "\n" + rows[3] + "\n"},
        {"other layout", rows[0] + "\nIT 0.4 0.91 25\n" + rows[2] + "\n" + rows[3] + "\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Staged r = ReadAgfText(teacher + head + c.glass);
        ASSERT_EQ(r.count, 2) << r.errorText;
        const auto& m = r.recs[1].Measured;
        ASSERT_EQ(m.TransPoints, 4);
        EXPECT_EQ(m.TransWidth, 25.0f);
        for (size_t i = 0; i < rows.size(); ++i) {
            const size_t k = rows.size() - 1 - i;  // the last row is stored first
            EXPECT_EQ(m.TransWave[k], static_cast<float>(std::stod(rows[i].substr(3)) * 1000.0));
            EXPECT_EQ(m.TransInternal[k],
                      static_cast<float>(std::stod(rows[i].substr(15)) * 100.0));
        }
    }
    // 151 rows: the line of the one too many is named.
    std::string many = teacher + head;
    for (int i = 0; i < 151; ++i) many += rows[1] + "\n";
    const Staged r = ReadAgfText(many);
    EXPECT_EQ(r.count, 1);
    EXPECT_NE(r.errorText.find("line 156, glass G: more than 150 transmission rows"),
              std::string::npos)
        << r.errorText;
}

// A row read by the layout of the row before gives what the general reading of its words
// gives; a row of another layout is left to that reading.
TEST(AgfImport, RowsOfOneLayout) {
    const std::string first = "IT 1.00000E+00 8.62979E-01 1.00000E+01";
    struct Row {
        std::string line;
        bool read;
    };
    const Row rows[] = {
        {"IT 3.50000E+00 9.99999E-01 2.50000E+01", true},
        {"IT 3.00000E-01 4.40000E+00 1.00000E-01", true},  // exponent signs differ
        {"IT 3.00000E-01 4.4000xE+00 1.00000E-01", false},
        {"IT 3.00000E-01 4.40000e+00 1.00000E-01", false},
        {"IT 3.00000E,01 4.40000E+00 1.00000E-01", false},  // a comma for a sign
        {"IT 3.00000E-01 4.40000E+00\t1.00000E-01", false},
        {"IT 3.00000E-01 4.40000E+00 1.00000E-01 ", false},
        {"IT -.00000E-01 4.40000E+00 1.00000E-01", false},
        {"IT 3.00000E-01 4.40000E-99 1.00000E-01", true},   // 10^-104: the general way
        {"IT 3.00000E-01 4.40000E+00 1.00000E-0x", false},  // the last byte alone
    };
    std::string_view words[4];
    RowLayout layout;
    ASSERT_TRUE(layout.Learn(first, words, FirstWords(first, words, 4)));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.line);
        double values[2] = {-1, -1};
        std::string_view read[3];
        size_t count = 0;
        ASSERT_EQ(layout.Matches(row.line, read, count), row.read);
        if (!row.read) continue;
        ASSERT_TRUE(ReadRowValues(row.line.data(), layout.places(), values));
        ASSERT_EQ(count, FirstWords(row.line, words, 4) - 1);
        for (size_t k = 0; k < count; ++k) EXPECT_EQ(read[k], words[k + 1]);
        for (size_t k = 0; k < 2; ++k) {
            double general = 0;
            ASSERT_TRUE(ParseNumber(words[k + 1], general));
            EXPECT_EQ(values[k], general);
        }
    }
    // Rows with no layout to learn: plain decimals, a short row, a long fraction.
    for (const std::string line :
         {"IT 0.2700 0.0820 3.0000 10", "IT 1.0E+00 8.6E-01", "IT 1.00000000E+00 8.62979E-01 10"}) {
        EXPECT_FALSE(layout.Learn(line, words, FirstWords(line, words, 4))) << line;
    }
    // A layout of three-digit exponents keeps them below 100, so that its rows always read.
    const std::string wide = "IT 2.80000E-001 1.68000E-001 1.00000E+001";
    ASSERT_TRUE(layout.Learn(wide, words, FirstWords(wide, words, 4)));
    for (const auto& [line, fits] :
         {std::pair{"IT 2.80000E+099 1.68000E-099 1.00000E+001", true},
          std::pair{"IT 2.80000E-001 1.68000E+400 1.00000E+001", false}}) {
        EXPECT_EQ(layout.Fits(line), fits) << line;
    }
    const std::string huge = "IT 2.80000E-001 1.68000E+400 1.00000E+001";
    EXPECT_FALSE(layout.Learn(huge, words, FirstWords(huge, words, 4)));
}

// The check of a staged glass allows what the printed figures allow: one unit in their last
// digit, and never less than 0.0001 in nd and 0.1 in vd. The polynomial gives nd 1.51680 and
// vd 64.17 (N-BK7).
TEST(ImportCheck, AllowsWhatThePrintedDigitsAllow) {
    MaterialRecord rec = ClearedMaterialRecord();
    rec.General.Polytype = 2;
    rec.General.PolyCoef = {1.03961212,    0.231792344,  1.01046945,
                            0.00600069867, 0.0200179144, 103.560653};
    rec.General.IndexWvMin = 400;
    rec.General.IndexWvMax = 700;
    const struct {
        const char* nd;
        const char* vd;
        const char* check;
    } cases[] = {
        {"1.517", "64.2", "nd, vd agree"},    // 0.0002 within a unit of the third decimal
        {"1.51690", "64.1", "nd, vd agree"},  // within the least asked of nd and vd
        {"1.5170", "64.17", "nd 1.51680 vs 1.51700"},
        {"1.5168E+00", "64", "nd, vd agree"},
        {"1.5168", "6.400E+01", "vd 64.17 vs 64.00"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.nd) + " " + c.vd);
        StatedIndex stated;
        stated.present = true;
        ASSERT_TRUE(ParseNumber(c.nd, stated.nd));
        ASSERT_TRUE(ParseNumber(c.vd, stated.vd));
        stated.ndDecimals = PrintedDecimals(c.nd);
        stated.vdDecimals = PrintedDecimals(c.vd);
        const ImportCheck check = CheckImported(rec, stated);
        EXPECT_EQ(check.text, c.check);
        EXPECT_EQ(check.flagged, std::string(c.check) != "nd, vd agree");
    }
    // A band where the polynomial gives no index is flagged whatever the file states.
    rec.General.Polytype = 1;
    rec.General.PolyCoef = {-1, 0, 0.5, 0, 0, 0};  // n squared below 0 beyond 707 nm
    rec.General.IndexWvMax = 2000;
    const ImportCheck gap = CheckImported(rec, StatedIndex{});
    EXPECT_TRUE(gap.flagged);
    EXPECT_EQ(gap.text.substr(0, 12), "no index at ");
}

TEST(GlcImport, LinesAndRules) {
    const Staged r = ReadCatalogue(Data("sample.glc"));
    ASSERT_EQ(r.ok, -1);
    ASSERT_EQ(r.count, 2);  // the empty line and the formula 6 line are dropped
    const auto& bk7 = r.recs[0];
    // Status "V" with "-" as second character reads "E"; "A" -> "O" -> "A".
    EXPECT_EQ(Texts(bk7.Other.Status, r.recs[1].Other.Status), (Strings{"E", "A"}));
    EXPECT_NEAR(bk7.Measured.TransTotal[2], 99.8 * 2 * 1.5308 / (1.5308 * 1.5308 + 1), 0.02);
}

// Reads an old-format file with its importer; the records of its last read.
template <typename Importer>
std::vector<MaterialRecord> ReadOld(Importer& importer, const char* name) {
    std::vector<MaterialRecord> recs;
    int16_t ok = 0;
    importer.ReadFile(Data(name), recs, ok);
    EXPECT_EQ(ok, -1) << name;
    return recs;
}

TEST(OldFiles, GlaQuirksAndReadyFlags) {
    CImportOldLumbrak importer;
    const auto recs = ReadOld(importer, "sample.gla");
    ASSERT_EQ(recs.size(), 1u);
    const auto& m = recs[0];
    EXPECT_EQ(Texts(m.General.GlassName, m.Other.Status), (Strings{"GLA1", "A"}));
    EXPECT_EQ(NotReadySections(m), "");
    EXPECT_DOUBLE_EQ(m.Measured.IndexSquared[1], 1.521 * 1.521);
    // The last real row too gives "no data" in the short table.
    EXPECT_EQ(std::tuple(m.Measured.TransAbsorb[2], m.General.TransShortValue[1],
                         m.General.TransShortValue[2]),
              std::tuple(0.003f, 0.002f, 99.0f));
}

TEST(OldFiles, GlsShortAndFull) {
    CImportOldKelmora importer;
    const auto shortRecs = ReadOld(importer, "short.gls");
    EXPECT_EQ(Texts(shortRecs.at(0).Other.Status, shortRecs.at(0).Other.Tg), (Strings{"A", ""}));
    const MaterialRecord m = ReadOld(importer, "full.gls").at(0);
    // A20300 " null ", T1013 "NULL", the status empty.
    EXPECT_EQ(Texts(m.Other.A20300, m.Other.T1013, m.Other.Knoop, m.Other.Status, m.Other.Price,
                    m.Thermal.TT[5]),
              (Strings{"", "", "610", "A", "1", "t6"}));
    EXPECT_EQ(std::tuple(m.Derived.vd, m.Derived.PgF), std::tuple(64.17f, 0.1f));
}

TEST(PrintedDecimals, ExponentsOfAnySize) {
    const std::pair<const char*, int> cases[] = {{"1.5168", 4},
                                                 {"1.5E-2", 3},
                                                 {"1.5E+400000000000", 0},
                                                 {"1.5E-400000000000", 1001},
                                                 {"64.17", 2},
                                                 {"7", 0},
                                                 {"1.", 0},
                                                 {"E-3", 3},
                                                 {"2e-3.5", 3},
                                                 {".25e1", 1},
                                                 {"1.2x34E-2", 3}};
    for (const auto& [text, decimals] : cases) EXPECT_EQ(PrintedDecimals(text), decimals) << text;
}

}  // namespace
}  // namespace ostrel::testing
