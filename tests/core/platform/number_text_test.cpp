#include "core/platform/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/platform/codepage.h"
#include "core/platform/ole_date.h"

namespace ostrel {
namespace {

constexpr const char* kSigned = "+0.00000000e+00;-0.00000000e+00";
constexpr const char* kDashes = "0.00;\\----";

// Each pattern with values and what they show.
TEST(FormatNumber, ShowsTheDigitsOfThePattern) {
    const std::pair<const char*, std::vector<std::pair<double, const char*>>> cases[] = {
        {"0.0000000",
         {{1.5168, "1.5168000"}, {1.51680004, "1.5168000"}, {-1.23456785, "-1.2345679"}}},
        {"0.00", {{0.125, "0.13"}, {-0.125, "-0.13"}, {2.675, "2.68"}, {9.995, "10.00"}}},
        {"0.00", {{0.004, "0.00"}, {0.005, "0.01"}, {-0.001, "0.00"}}},
        {"0.00", {{std::nan(""), "NaN"}, {-INFINITY, "-Inf"}}},
        {"0", {{2.5, "3"}, {-2.5, "-3"}, {0.4, "0"}, {0.6, "1"}, {587.5618, "588"}}},
        {"0.", {{5, "5."}}},
        {"#.00", {{0.5, ".50"}}},
        {"#", {{0, ""}}},
        {"#,##0.00", {{1234567.891, "1,234,567.89"}}},
        {"\"n=\"0.0\" nm\"", {{12.5, "n=12.5 nm"}}},
        {"0.0###", {{0.5, "0.5"}, {2, "2.0"}, {1.23456, "1.2346"}, {1.00004, "1.0"}}},
        {"0.0###", {{1.00005, "1.0001"}, {1.0205, "1.0205"}, {-0.25, "-0.25"}}},
        {"0.0%", {{0.8765, "87.7%"}, {1, "100.0%"}, {0.00049, "0.0%"}, {-0.5, "-50.0%"}}},
        {"0.000e+00", {{0.12345, "1.235e-01"}, {123456, "1.235e+05"}, {0, "0.000e+00"}}},
        {"0.000e+00", {{9.9996, "1.000e+01"}, {-6.02e23, "-6.020e+23"}}},
        {"0.000E-00", {{1e-3, "1.000E-03"}, {1e3, "1.000E03"}}},
        {"0.0e+00", {{1.5e-100, "1.5e-100"}}},
        {kSigned, {{1.23456789e-5, "+1.23456789e-05"}, {-4.5e-9, "-4.50000000e-09"}}},
        {kSigned,
         {{0, "+0.00000000e+00"}, {9999.9999999, "+1.00000000e+04"}, {-1.0, "-1.00000000e+00"}}},
        {kDashes, {{12.345, "12.35"}, {0, "0.00"}, {-1, "----"}, {-0.0001, "----"}}},
        {"0.0;(0.0)", {{-3.5, "(3.5)"}}},
        {"0.0;-0.0;\\z\\e\\r\\o", {{0, "zero"}}},
        {"0.0;;\\z", {{-2, "-2.0"}}}};
    for (const auto& [pattern, values] : cases)
        for (const auto& [value, expected] : values)
            EXPECT_EQ(FormatNumber(value, pattern), expected)
                << value << " with \"" << pattern << "\"";
}

TEST(Val, TakesTheLongestNumericPrefix) {
    const std::pair<const char*, double> cases[] = {
        {"1.5168", 1.5168},  {"   1.5abc", 1.5}, {"1e3x", 1000},     {"1e", 1},
        {"1e+", 1},          {"-.5", -0.5},      {"+2.5E-2", 0.025}, {"1.2.3", 1.2},
        {"12 34", 12},       {"1D2", 100},       {"abc", 0},         {"", 0},
        {"   ", 0},          {"-", 0},           {".", 0},           {"1e999", 0},
        {"\t587.56", 587.56}};
    for (const auto& [text, expected] : cases) EXPECT_DOUBLE_EQ(Val(text), expected) << text;
}

// Whole real numbers, 16-bit and 32-bit whole numbers: each text with what each check says.
TEST(NumberChecks, AcceptOnlyAWholeNumberOfTheirKind) {
    using Texts = std::vector<const char*>;
    const std::tuple<bool (*)(std::string_view), Texts, Texts> cases[] = {
        {IsValidNumber,
         {"1.5", " 1.5 ", "1e5", "-.5", "+3", "2."},
         {".", "", "  ", "1.5x", "1e", "inf", "nan", "0x10", "1e999", "1,5", "- 1"}},
        {IsValidInteger,
         {"32767", "-32768", " 12 ", "+7"},
         {"32768", "-32769", "1.0", "", "-", "1e2", "99999999999999999999"}},
        {IsValidLong, {"2147483647", "-2147483648", "40000"}, {"2147483648"}}};
    for (const auto& [check, accepted, refused] : cases) {
        for (const char* text : accepted) EXPECT_TRUE(check(text)) << text;
        for (const char* text : refused) EXPECT_FALSE(check(text)) << text;
    }
}

TEST(DecimalPointText, ReadsOneCommaBetweenDigitsAsThePoint) {
    const std::pair<const char*, const char*> cases[] = {
        {"1,5168", "1.5168"}, {"-0,5e-3", "-0.5e-3"}, {",5", ".5"},
        {" 2,25 ", " 2.25 "}, {"1,", "1,"},           {"1,234.5", "1,234.5"},
        {"1,2,3", "1,2,3"},   {"N,BK7", "N,BK7"},     {"1.5", "1.5"}};
    for (const auto& [in, out] : cases) EXPECT_EQ(DecimalPointText(in), out) << in;
}

TEST(RoundHalfEven, RoundsHalfToEvenAndCIntCLngAgreeAndSaturate) {
    const std::pair<double, double> cases[] = {{2.5, 2},  {3.5, 4}, {-2.5, -2},  {-3.5, -4},
                                               {0.5, 0},  {1.5, 2}, {2.4999, 2}, {2.5001, 3},
                                               {-0.4, 0}, {7, 7}};
    for (const auto& [value, rounded] : cases) {
        EXPECT_EQ(RoundHalfEven(value), rounded) << value;
        EXPECT_EQ(CInt(value), static_cast<int16_t>(rounded)) << value;
        EXPECT_EQ(CLng(value), static_cast<int32_t>(rounded)) << value;
    }
    // Outside their range they saturate.
    EXPECT_EQ(CInt(40000.0), 32767);
    EXPECT_EQ(CInt(-40000.0), -32768);
    EXPECT_EQ(CInt(std::nan("")), 0);
    EXPECT_EQ(CLng(3e9), 2147483647);
    EXPECT_EQ(CLng(-3e9), -2147483647 - 1);
    EXPECT_EQ(CLng(40000.5), 40000);
}

// Day counts worked out by hand: 1900 is no leap year in the Gregorian calendar, so
// 1900-03-01 is day 61; 2000-01-01 is 36526 (published epoch tables agree).
TEST(OleDate, DayCountFromDecember30Of1899) {
    const std::pair<CivilDateTime, double> cases[] = {
        {{1899, 12, 30, 0, 0, 0}, 0.0},      {{1899, 12, 31, 0, 0, 0}, 1.0},
        {{1900, 3, 1, 0, 0, 0}, 61.0},       {{2000, 1, 1, 12, 0, 0}, 36526.5},
        {{2026, 11, 23, 6, 0, 0}, 46349.25}, {{1899, 12, 29, 6, 0, 0}, -1.25}};
    for (const auto& [civil, days] : cases) {
        EXPECT_DOUBLE_EQ(OleDateFromCivil(civil), days);
        const CivilDateTime back = CivilFromOleDate(days);
        auto fields = [](const CivilDateTime& t) {
            return std::tuple(t.year, t.month, t.day, t.hour, t.minute);
        };
        EXPECT_EQ(fields(back), fields(civil)) << days;
    }
}

TEST(OleDate, IsoTexts) {
    EXPECT_EQ(FormatIsoDate(36526.5), "2000-01-01");
    EXPECT_EQ(FormatIsoDateTime(36526.75), "2000-01-01 18:00:00");
    EXPECT_EQ(FormatShortDate(36526.5), "2000-01-01") << "without a user's format";
    SetShortDateFormat([](int y, int m, int d) {
        return std::to_string(d) + "." + std::to_string(m) + "." + std::to_string(y % 100);
    });
    EXPECT_EQ(FormatShortDate(36526.5), "1.1.0");
    SetShortDateFormat({});
}

TEST(Codepage, EveryByteSurvivesTheRoundTrip) {
    std::string all;
    for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
    EXPECT_TRUE(Utf8ToCp1252(Cp1252ToUtf8(all)) == all);
    EXPECT_EQ(Cp1252ToUtf8("\xB0"), "\xC2\xB0");  // degree sign
}

}  // namespace
}  // namespace ostrel
