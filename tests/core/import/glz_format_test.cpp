// The GLZ writer and reader: the file image line by line, what the writer changes in the
// list, the reader's section rules, clamps and failures, and a round trip of a whole list.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <functional>
#include <iterator>
#include <regex>
#include <sstream>

#include "core/import/glz_writer.h"
#include "core/import/import_fixture.h"
#include "core/import/import_new_glz.h"
#include "core/import/import_text.h"
#include "core/platform/ole_date.h"

namespace ostrel::testing {
namespace {

MaterialRecord Sample() {
    MaterialRecord r = ClearedMaterialRecord();
    r.General.GlassName.Set("  A*B  ");
    r.General.Source.Set("Maker");
    r.General.Polytype = 1;
    r.General.IndexWvMin = 400;
    r.General.IndexWvMax = 700;
    r.General.Density = 2.5f;
    r.General.PolyCoef = {2.27, -0.0101, 0.0106, 0.00017, -2e-6, 1.5e-10};
    r.General.IndexPoints = 2;
    r.General.IndexDataType = 0;
    r.Measured.IndexWave = {700, 400};
    r.Measured.IndexValue = {1.513, 1.5308};
    r.Measured.IndexWeight = {1, 0.5f};
    r.Thermal.dndttype = 1;
    r.Thermal.dndt_lin = 0.5f;
    r.Thermal.dndt_D0 = 1.234567e-6f;
    r.Thermal.dndt_LamdaTK = 0.17f;
    r.Thermal.dndt_RefTemp = 20;
    r.Other.A3070.Set("7.1");
    r.Other.Status.Set("x");
    r.Measured.TransPoints = 2;
    r.Measured.TransWidth = 10;
    r.Measured.TransType = 1;
    r.Measured.TransWave = {700, 400};
    r.Measured.TransInternal = {99.5f, 90};
    r.Measured.TransTotal = {91.25f, 82};
    r.Measured.TransAbsorb = {0.0005f, 0.01f};
    return r;
}

TEST(GlzWriter, BlockLineByLine) {
    std::vector<MaterialRecord> list{Sample()};
    const std::string image = GlzFileImage(list, 1, 1, OleDateFromCivil({2026, 3, 3}));
    const std::string expected =
        "Harvenz Photonics - Ostrel  - text file V2, Tuesday, March 3, 2026\r\n"
        "#-- Material Data Start --\r\n"
        "#     -- General --\r\n"
        "\"A*B\",\"Maker\"\r\n"
        "1,400,700,2.5\r\n"
        "2.27,-0.0101,0.0106,0.00017,-2E-6,1.5E-10,0,0,0,0,0,0,0,0\r\n"
        "2,0,0\r\n"
        "#     -- dn/dt--\r\n"
        "1,0.5\r\n"
        "1.234567E-6,0,0,0,0,0.17,0.17,20\r\n"
        "0\r\n"
        "#     -- Chem/Mech/Thermal --\r\n"
        "\"A3070\",\"7.1\",\"A20300\",\"\",\"Tg\",\"\",\"T1013\",\"\",\"T1076\",\"\",\"Cp\",\"\","
        "\"lambda\",\"\"\r\n"
        "\"EMod\",\"\",\"Poisson\",\"\",\"Torsion\",\"\",\"Knoop\",\"\"\r\n"
        "\"CR\",\"\",\"FR\",\"\",\"SR\",\"\",\"AR\",\"\",\"PR\",\"\"\r\n"
        "\"Remark\",\"\",\"CC\",\"\",\"Bubble\",\"\",\"Status\",\"A\",\"RelPrice\",\"\"\r\n"
        "#     -- Transmission --\r\n"
        "2,10,1\r\n"
        "700,99.5,91.25,0.0005\r\n"
        "400,90,82,0.01\r\n"
        "#     -- Ref Index --\r\n"
        "700,1.513,1\r\n"
        "400,1.5308,0.5\r\n"
        "#-- Material Data End --\r\n"
        " \r\n"
        "EOF\r\n";
    EXPECT_EQ(image, expected);
    // The writer leaves its changes in the list: trimmed name, normalised status.
    EXPECT_EQ(list[0].General.GlassName.Untrimmed().substr(0, 4), "A*B ");
    EXPECT_EQ(list[0].Other.Status.Text(), "A");
}

// TransPoints against the rows written: the rows that hold data, and TransPoints left as it
// is in the list (150 stands for the padding of older versions behind two real rows).
TEST(GlzWriter, WrittenTransmissionRowCount) {
    for (const auto& [points, written] : {std::pair{2, 2}, {1, 1}, {150, 2}, {0, 0}}) {
        std::vector<MaterialRecord> list{Sample()};
        list[0].Measured.TransPoints = static_cast<int16_t>(points);
        const std::string image = GlzFileImage(list, 1, 1, 0);
        const auto lines = SplitTextLines(image);
        const auto at =
            static_cast<size_t>(std::find(lines.begin(), lines.end(), kGlzTrans) - lines.begin());
        EXPECT_EQ(lines[at + 1].substr(0, lines[at + 1].find(',')), std::to_string(written));
        EXPECT_EQ(lines[at + 2 + static_cast<size_t>(written)], kGlzRefIndex);
        EXPECT_EQ(list[0].Measured.TransPoints, points);
    }
}

struct GlzRead {
    std::vector<MaterialRecord> recs;
    int count = -1;
    int16_t ok = 1;
    ScriptedDialogs dialogs;
};

GlzRead ReadGlz(const std::string& content) {
    GlzRead r;
    TempDir dir;
    WriteFileBytes(dir / "t.glz", content);
    CImportNewGLZ reader(r.dialogs);
    reader.ReadFile((dir / "t.glz").string(), r.recs, r.count, r.ok);
    return r;
}

const std::string kHead = "Harvenz Photonics - Ostrel  - text file V2, x\r\n";
const std::string kStart = "#-- Material Data Start --\r\n";
// A General section up to its coefficients; the line of index counts follows.
const std::string kGeneral =
    "#     -- General --\r\n\"G\",\"S\"\r\n1,400,700,0\r\n1,0,0,0,0,0,0,0,0,0,0,0,0,0\r\n";
const std::string kEnd = "#-- Material Data End --\r\n";

// One file per row: its status, the glasses read and the fields of the first. A wrong title
// shows a box and still reads; an older backup padded every glass to 150 transmission rows
// with zeros behind the data, and the glass comes back with its two real rows, its short
// tables marked "no data" beyond them. A file cut inside a block, a number that cannot be
// read or more rows than the tables hold fail and keep nothing.
TEST(GlzReader, SectionRulesClampsAndFailures) {
    const auto file = [](const std::string& body, const std::string& start = kHead + kStart) {
        return start + kGeneral + body + kEnd + " \r\nEOF\r\n";
    };
    std::string padded = "150,10,1\r\n700,99.5,91.25,0.0005\r\n400,90,82,0.01\r\n";
    for (int i = 2; i < 150; ++i) padded += "0,0,0,0\r\n";
    const std::string second = file("0,0,1\r\n") + kStart;
    using Check = std::function<void(const MaterialRecord&)>;
    const struct {
        std::string content;
        int16_t ok;
        int count;
        Check check = nullptr;
        std::string box = {};
    } cases[] = {
        // Only General: other sections keep the cleared state (dn/dt ready).
        {file("0,0,1\r\n", "Some other file\r\n" + kStart), -1, 1,
         [](const MaterialRecord& m) {
             EXPECT_EQ(std::tuple(m.TransState.Ready, m.OtherState.Ready, m.ThermalState.Ready,
                                  m.General.GlassKind),
                       std::tuple(0, 0, -1, 8));
         },
         "This is not a Dorlantik GLZ material data file.  Import will abort."},
        // Ref Index before General: no rows known yet. The second copy of lambda TK wins;
        // indices and weights clamped; one transmission row is not enough.
        {kHead + kStart + "junk line\r\n#     -- Ref Index --\r\n" +
             "#     -- dn/dt--\r\n2,.5\r\n0,0,0,0,0,0.1,0.2,20\r\n1.5e-010\r\n" +
             file("2,0,0\r\n#     -- Ref Index --\r\n700,12,1.5\r\n400,-1,-0.5\r\n"
                  "#     -- Transmission --\r\n1,10,1\r\n700,90,85,0.01\r\n",
                  ""),
         -1, 1,
         [](const MaterialRecord& m) {
             EXPECT_EQ(std::tuple(m.Thermal.dndt_lin, m.Thermal.dndt_LamdaTK, m.Thermal.ThermalAux),
                       std::tuple(0.5f, 0.2f, 1.5e-10f));
             EXPECT_EQ(std::tuple(m.Measured.IndexValue[0], m.Measured.IndexWeight[0],
                                  m.Measured.IndexValue[1], m.Measured.IndexWeight[1]),
                       std::tuple(9.0, 1.0f, 0.0, 0.0f));
             EXPECT_EQ(std::tuple(m.TransState.Ready, m.General.TransShortValue[0],
                                  m.General.TransShortValue[1], m.General.TransShortValue[40]),
                       std::tuple(0, 0.01f, 99.0f, 0.0f));
         }},
        {file(std::string("0,0,1\r\n") + kGlzTrans + "\r\n" + padded), -1, 1,
         [](const MaterialRecord& m) {
             const auto& g = m.General;
             EXPECT_EQ(
                 std::tuple(m.Measured.TransPoints, m.TransState.Ready, g.TransShortWave[1],
                            g.TransShortValue[1], g.TransShortValue[2], g.TransShortValue[39]),
                 std::tuple(2, -1, 400.0f, 0.01f, 99.0f, 99.0f));
         }},
        {kHead + kStart + kGeneral +
             "2,0,0\r\n#     -- Index --\r\n\"700\",\"1.513\"\r\n\"400\",\"1.53\"\r\n"
             "      -- Melt [optional] --\r\n\"P\",\"PS\"\r\n\"M1\",1\r\n587.6,1.5171\r\n"
             "1\r\n1,2,3\r\n#-- Material Data End --\r\nEOF\r\n",
         -1, 1,
         [](const MaterialRecord& m) {
             EXPECT_EQ(
                 std::tuple(m.Measured.IndexValue[1], m.Measured.IndexWeight[1], m.Melt.MeltFlag,
                            m.Melt.MeltCode.Text(), m.Melt.MeltTransThird[0]),
                 std::tuple(1.53, 1.0f, -1, "M1", 3.0));
         }},
        {kHead + "#-- Material Data Start --", -1, 0},
        {second + "#     -- General --\r\n\"G\",\"S\"\r\n", 0, 0},
        {second + "#     -- Transmission --\r\n2,abc,1\r\n", 0, 0},
        {second + "#     -- Transmission --\r\n151,10,1\r\n", 0, 0},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        SCOPED_TRACE(i);
        const auto& c = cases[i];
        const GlzRead r = ReadGlz(c.content);
        EXPECT_EQ(r.ok, c.ok);
        ASSERT_EQ(r.count, c.count);
        ASSERT_EQ(r.recs.size(), static_cast<size_t>(c.count));
        if (c.check) c.check(r.recs[0]);
        if (!c.box.empty()) {
            ASSERT_EQ(r.dialogs.boxes.size(), 1u);
            EXPECT_EQ(r.dialogs.boxes[0].text, c.box);
        }
    }
}

// The fields a GLZ file carries.
auto GlzCarried(const MaterialRecord& r) {
    const auto& g = r.General;
    const auto& m = r.Measured;
    const auto& t = r.Thermal;
    const auto& o = r.Other;
    const auto& melt = r.Melt;
    return std::tie(g.GlassName, g.Source, g.Polytype, g.IndexWvMin, g.IndexWvMax, g.Density,
                    g.PolyCoef, g.IndexPoints, g.IndexReserved, g.IndexDataType, t.dndttype,
                    t.dndt_lin, t.dndt_D0, t.dndt_LamdaTK, t.dndt_RefTemp, t.ThermalAux, o.A3070,
                    o.Status, o.REMark, m.TransPoints, m.TransWidth, m.TransType, m.TransWave,
                    m.TransInternal, m.TransTotal, m.TransAbsorb, m.IndexWave, m.IndexValue,
                    m.IndexWeight, melt.MeltFlag, melt.MeltParentName, melt.MeltParentSource,
                    melt.MeltCode, melt.MeltIndexPoints, melt.MeltIndexWave, melt.MeltIndexValue,
                    melt.MeltTransPoints, melt.MeltTransPair, melt.MeltTransThird);
}

// A list of what the catalogues never hold: more transmission rows than the short tables
// take, a melt and a name outside ASCII.
std::vector<MaterialRecord> UnusualList() {
    std::vector<MaterialRecord> list{Sample(), Sample(), Sample()};
    list[1].General.GlassName.Set("Second");
    list[1].Measured.TransPoints = 44;
    for (int i = 0; i < 44; ++i) list[1].Measured.TransWave[static_cast<size_t>(i)] = 2000.0f - i;
    auto& melt = list[2].Melt;
    list[2].General.GlassName.Set("Melt é");
    melt.MeltFlag = -1;
    melt.MeltParentName.Set("N-BK7");
    melt.MeltCode.Set("123");
    melt.MeltIndexPoints = 1;
    melt.MeltIndexWave[0] = 587.56f;
    melt.MeltIndexValue[0] = 1.51678123456789;
    melt.MeltTransPoints = 1;
    melt.MeltTransPair[1][0] = 0.123456789012345;
    return list;
}

// What a GLZ reader rebuilds from the carried fields: the short tables, the resampled table,
// the derived data and the glass code.
auto GlzRebuilt(const MaterialRecord& r) {
    const auto& d = r.Derived;
    return std::tie(r.General.TransShortWave, r.General.TransShortValue, r.TransTable, d.nd, d.vd,
                    d.nF_NC, d.Ne, d.Ve, d.nfd_ncd, d.PCs, d.PdC, d.PgF, d.DerivedSpare,
                    r.General.GlassCode);
}

// Whole catalogues through the program: import, add to the list, back up, import the
// backup. Every glass comes back as the list holds it, in what the format carries and, for
// the catalogues, in what is rebuilt from that; hoya.glc has glasses of up to 44 rows.
TEST_F(ImportForm, ListsComeBackFromABackupAsTheListHoldsThem) {
    for (const char* file : {"", "agf/2020/SCHOTT.AGF", "agf/2020/INFRARED.AGF", "glc/hoya.glc",
                             "glc/obsolete002.glc"}) {
        SCOPED_TRACE(file);
        std::vector<MaterialRecord> held = UnusualList();
        if (*file) {
            ASSERT_TRUE(std::filesystem::exists(kShared / file)) << "no catalogue data";
            list.ReplaceList({});
            ASSERT_TRUE(form.ImportFile(Shared(file), frm4Import::FileTypeOf(file, 0)));
            ASSERT_TRUE(form.AddRange(1, form.ImportCount()));
            held = list.CopyListOut();
        }
        std::vector<MaterialRecord> written = held;
        FileError error;
        const int last = static_cast<int>(written.size());
        ASSERT_TRUE(WriteGlzFile(dir.path().string(), "all.glz", written, 1, last, 46000, error));
        if (!*file) held = written;  // with the name trimmed and the status set as written
        dialogs.boxes.clear();
        ASSERT_TRUE(form.ImportFile((dir / "all.glz").string(), frm4Import::kGLZ));
        EXPECT_TRUE(dialogs.boxes.empty());
        const auto& back = form.ImportList();
        ASSERT_EQ(back.size(), held.size());
        for (size_t i = 0; i < held.size(); ++i) {
            SCOPED_TRACE(held[i].General.GlassName.Text());
            ASSERT_EQ(GlzCarried(back[i]), GlzCarried(held[i]));
            if (*file) {
                ASSERT_EQ(GlzRebuilt(back[i]), GlzRebuilt(held[i]));
            }
        }
    }
}

// Catalogue numbers are read to the correctly rounded double, as the standard reader gives
// it, in every form they come in; a sign alone or trailing letters are no number.
void ExpectStandardReading(const std::string& text) {
    double expected = 0;
    const char* begin = text.data() + (text[0] == '+' ? 1 : 0);
    std::from_chars(begin, text.data() + text.size(), expected);
    double v = -1;
    ASSERT_TRUE(ParseNumber(text, v)) << text;
    EXPECT_EQ(v, expected) << text;
}

TEST(ImportText, NumbersReadAsTheStandardReaderReadsThem) {
    double v = 0;
    EXPECT_FALSE(ParseNumber("-", v));
    EXPECT_FALSE(ParseNumber("1.5x", v));
    EXPECT_FALSE(ParseNumber("1.2.3", v));
    EXPECT_FALSE(ParseNumber("1.2345678\xB5", v));
    EXPECT_FALSE(
        ParseNumber("1.234\xAF"
                    "5678",
                    v));
    std::istringstream forms(
        ".5 1.5e-010 +2.00000E+00 3.20000E-01 2.11000E-001 1.0000E+001 -2.05058500e-04 "
        "6.00069867E-003 0.1 9007199254740993 9007199254740992e-22 1234567890123456789 "
        "12345678901234567890 0.000000000000000000000000001 1e23 1e-23 4.9406564584124654e-324 "
        "1.7976931348623157e308 000000000000000000000000.5 +7. -0");
    for (std::string text; forms >> text;) ExpectStandardReading(text);
    // Every mantissa of a few patterns at every exponent a catalogue might write.
    for (const char* mantissa : {"1.03961212", "2.3179", "0.000123", "0.12345678901",
                                 "987654321.987654", "4.503599627370497", "7"}) {
        for (int e = -30; e <= 30; ++e) {
            ExpectStandardReading(std::string(mantissa) + "E" + std::to_string(e));
        }
    }
    // Digit runs of every length before and after the point.
    const std::string pattern = "9081726354453627189";
    for (size_t whole = 0; whole <= 12; ++whole) {
        for (size_t fraction = 0; fraction <= 12; ++fraction) {
            std::string text = pattern.substr(0, whole);
            if (fraction > 0) text += "." + pattern.substr(whole, fraction);
            if (text.empty()) continue;
            for (const char* tail : {"", "E-03", "e+2", "E+000", "E-023"}) {
                ExpectStandardReading(text + tail);
            }
        }
    }
}

// Number texts of the text fields are printf's "%.7G", whichever way they are made.
TEST(ImportText, ShortNumberTextIsSevenSignificantDigits) {
    std::vector<double> values = {1e-4,      9.99999949e-5, 9999999.4, 9999999.5, 1e7,  0.3 * 10,
                                  123456.75, 0.00012345675, -2.5,      1.0 / 3,   1e22, -1e-300};
    for (int digits = 1; digits <= 9; ++digits) {
        for (int places = 0; places <= 11; ++places) {
            const double whole = std::floor(std::pow(10.0, digits) / 7.0);
            values.push_back(whole / std::pow(10.0, places));
            values.push_back(-(whole + 1) / std::pow(10.0, places));
        }
    }
    for (const double v : values) {
        char expected[64];
        std::snprintf(expected, sizeof expected, "%.7G", v);
        EXPECT_EQ(ShortNumberText(v), expected) << v;
    }
}

// A UTF-16 file image with its byte-order mark.
std::string Utf16Image(const std::u16string& text, bool bigEndian) {
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char16_t c : text) {
        const auto hi = static_cast<char>(c >> 8);
        const auto lo = static_cast<char>(c & 0xFF);
        bytes += bigEndian ? std::string{hi, lo} : std::string{lo, hi};
    }
    return bytes;
}

TEST(ImportText, Utf16DecodesToTheCodePageAtEveryPlace) {
    // A sign, a character the code page lacks and a surrogate pair, moved through every
    // place of the eight-character blocks the fast path reads.
    for (size_t at = 0; at < 20; ++at) {
        std::u16string text(u"NM N-BK7 2 517642 1.5168 64.17 0 1\r\nIT 0.3 0.5 10\r\n");
        std::string expected(text.begin(), text.end());
        text.insert(at, u"\u00B5\u03A9\U0001F600x");
        expected.insert(at, "\xB5??x");
        for (const bool bigEndian : {false, true}) {
            EXPECT_EQ(DecodeTextFile(Utf16Image(text, bigEndian)), expected)
                << at << (bigEndian ? " BE" : " LE");
        }
    }
}

// Lines of a text, cut at CR LF, CR or LF, the slow and obvious way: no line after the last
// line end.
std::vector<std::string> LinesOf(const std::string& text) {
    static const std::regex end("\r\n|\r|\n");
    if (text.empty()) return {};
    return {std::sregex_token_iterator(text.begin(), text.end(), end, -1),
            std::sregex_token_iterator()};
}

TEST(ImportText, SplitTextLinesAtEveryKindOfLineEnd) {
    // Texts of every length up to 70 from a few letters and line ends, drawn by a fixed
    // sequence, so that line ends fall on and across the 16-byte blocks of the fast path.
    const char alphabet[] = {'a', 'b', '\r', '\n', ' '};
    uint32_t state = 12345;
    for (size_t length = 0; length <= 70; ++length) {
        for (int draw = 0; draw < 20; ++draw) {
            std::string text;
            for (size_t i = 0; i < length; ++i) {
                state = state * 1103515245u + 12345u;
                text.push_back(alphabet[(state >> 16) % 5]);
            }
            const auto got = SplitTextLines(text);
            EXPECT_EQ(std::vector<std::string>(got.begin(), got.end()), LinesOf(text));
        }
    }
}

// Words of a line, cut at runs of blanks and tabs, the slow and obvious way.
std::vector<std::string> WordsOf(const std::string& line) {
    std::istringstream in(line);
    return {std::istream_iterator<std::string>(in), std::istream_iterator<std::string>()};
}

TEST(ImportText, SplitBlanksCutsWordsAtEveryPlace) {
    // Words and gaps of every length around the 16-byte blocks the fast path reads.
    std::vector<std::string> lines = {"", " ", "\t\t",
                                      "IT 3.20000E-01 0.00000E+00 2.50000E+01      ",
                                      "NM N-BK7 2 517642 1.5168 64.17 0 1"};
    for (size_t lead = 0; lead < 3; ++lead) {
        for (size_t len = 1; len <= 34; ++len) {
            std::string line(lead, lead == 1 ? '\t' : ' ');
            for (size_t k = 0; line.size() < 50; ++k) {
                line += std::string(len, static_cast<char>('a' + k % 26));
                line += std::string(1 + k % 3, k % 2 ? '\t' : ' ');
            }
            lines.push_back(line);
            lines.push_back(line.substr(0, 15 + len));
        }
    }
    std::vector<std::string_view> got;
    for (const std::string& line : lines) {
        SplitBlanks(line, got);
        EXPECT_EQ(std::vector<std::string>(got.begin(), got.end()), WordsOf(line)) << line;
    }
}

}  // namespace
}  // namespace ostrel::testing
