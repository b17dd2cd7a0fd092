#include "core/platform/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace ostrel {
namespace {

struct FormatCase {
    double value;
    const char* pattern;
    const char* expected;
};

class FormatNumberTest : public ::testing::TestWithParam<FormatCase> {};

TEST_P(FormatNumberTest, ShowsTheDigitsOfThePattern) {
    const FormatCase& c = GetParam();
    EXPECT_EQ(FormatNumber(c.value, c.pattern), c.expected)
        << c.value << " with \"" << c.pattern << "\"";
}

constexpr const char* kSigned = "+0.00000000e+00;-0.00000000e+00";
constexpr const char* kDashes = "0.00;\\----";

INSTANTIATE_TEST_SUITE_P(
    Fixed, FormatNumberTest,
    ::testing::Values(FormatCase{1.5168, "0.0000000", "1.5168000"},
                      FormatCase{1.51680004, "0.0000000", "1.5168000"},
                      FormatCase{-1.23456785, "0.0000000", "-1.2345679"},
                      FormatCase{0.125, "0.00", "0.13"},    // exact binary tie: away from 0
                      FormatCase{-0.125, "0.00", "-0.13"},  // likewise for negatives
                      FormatCase{2.675, "0.00", "2.68"},    // 2.67499999... in binary
                      FormatCase{9.995, "0.00", "10.00"},   // carry into a new digit
                      FormatCase{0.004, "0.00", "0.00"}, FormatCase{0.005, "0.00", "0.01"},
                      FormatCase{-0.001, "0.00", "0.00"},  // shows as zero: no sign
                      FormatCase{2.5, "0", "3"}, FormatCase{-2.5, "0", "-3"},
                      FormatCase{0.4, "0", "0"}, FormatCase{0.6, "0", "1"},
                      FormatCase{587.5618, "0", "588"}, FormatCase{5, "0.", "5."},
                      FormatCase{0.5, "#.00", ".50"}, FormatCase{0, "#", ""},
                      FormatCase{1234567.891, "#,##0.00", "1,234,567.89"},
                      FormatCase{12.5, "\"n=\"0.0\" nm\"", "n=12.5 nm"}));

INSTANTIATE_TEST_SUITE_P(Optional, FormatNumberTest,
                         ::testing::Values(FormatCase{0.5, "0.0###", "0.5"},
                                           FormatCase{2, "0.0###", "2.0"},
                                           FormatCase{1.23456, "0.0###", "1.2346"},
                                           FormatCase{1.00004, "0.0###", "1.0"},
                                           FormatCase{1.00005, "0.0###", "1.0001"},
                                           FormatCase{1.0205, "0.0###", "1.0205"},
                                           FormatCase{-0.25, "0.0###", "-0.25"}));

INSTANTIATE_TEST_SUITE_P(Percent, FormatNumberTest,
                         ::testing::Values(FormatCase{0.8765, "0.0%", "87.7%"},
                                           FormatCase{1, "0.0%", "100.0%"},
                                           FormatCase{0.00049, "0.0%", "0.0%"},
                                           FormatCase{-0.5, "0.0%", "-50.0%"}));

INSTANTIATE_TEST_SUITE_P(Exponent, FormatNumberTest,
                         ::testing::Values(FormatCase{0.12345, "0.000e+00", "1.235e-01"},
                                           FormatCase{123456, "0.000e+00", "1.235e+05"},
                                           FormatCase{0, "0.000e+00", "0.000e+00"},
                                           FormatCase{9.9996, "0.000e+00", "1.000e+01"},
                                           FormatCase{-6.02e23, "0.000e+00", "-6.020e+23"},
                                           FormatCase{1e-3, "0.000E-00", "1.000E-03"},
                                           FormatCase{1e3, "0.000E-00", "1.000E03"},
                                           FormatCase{1.5e-100, "0.0e+00", "1.5e-100"},
                                           FormatCase{1.23456789e-5, kSigned, "+1.23456789e-05"},
                                           FormatCase{-4.5e-9, kSigned, "-4.50000000e-09"},
                                           FormatCase{0, kSigned, "+0.00000000e+00"},
                                           FormatCase{9999.9999999, kSigned, "+1.00000000e+04"},
                                           FormatCase{-1.0, kSigned, "-1.00000000e+00"}));

INSTANTIATE_TEST_SUITE_P(Sections, FormatNumberTest,
                         ::testing::Values(FormatCase{12.345, kDashes, "12.35"},
                                           FormatCase{0, kDashes, "0.00"},
                                           FormatCase{-1, kDashes, "----"},
                                           FormatCase{-0.0001, kDashes, "----"},
                                           FormatCase{-3.5, "0.0;(0.0)", "(3.5)"},
                                           FormatCase{0, "0.0;-0.0;\\z\\e\\r\\o", "zero"},
                                           FormatCase{-2, "0.0;;\\z", "-2.0"}));

TEST(FormatNumber, NonFiniteValuesDoNotBreakTheDisplay) {
    EXPECT_EQ(FormatNumber(std::nan(""), "0.00"), "NaN");
    EXPECT_EQ(FormatNumber(-INFINITY, "0.00"), "-Inf");
}

struct ValCase {
    const char* text;
    double expected;
};

class ValTest : public ::testing::TestWithParam<ValCase> {};

TEST_P(ValTest, TakesTheLongestNumericPrefix) {
    EXPECT_DOUBLE_EQ(Val(GetParam().text), GetParam().expected) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Cells, ValTest,
                         ::testing::Values(ValCase{"1.5168", 1.5168}, ValCase{"   1.5abc", 1.5},
                                           ValCase{"1e3x", 1000}, ValCase{"1e", 1},
                                           ValCase{"1e+", 1}, ValCase{"-.5", -0.5},
                                           ValCase{"+2.5E-2", 0.025}, ValCase{"1.2.3", 1.2},
                                           ValCase{"12 34", 12}, ValCase{"1D2", 100},
                                           ValCase{"abc", 0}, ValCase{"", 0}, ValCase{"   ", 0},
                                           ValCase{"-", 0}, ValCase{".", 0}, ValCase{"1e999", 0},
                                           ValCase{"\t587.56", 587.56}));

struct CheckCase {
    const char* text;
    bool expected;
};

class ValidNumberTest : public ::testing::TestWithParam<CheckCase> {};
TEST_P(ValidNumberTest, AcceptsOnlyAWholeRealNumber) {
    EXPECT_EQ(IsValidNumber(GetParam().text), GetParam().expected) << GetParam().text;
}
INSTANTIATE_TEST_SUITE_P(
    Texts, ValidNumberTest,
    ::testing::Values(CheckCase{"1.5", true}, CheckCase{" 1.5 ", true}, CheckCase{"1e5", true},
                      CheckCase{"-.5", true}, CheckCase{"+3", true}, CheckCase{"2.", true},
                      CheckCase{".", false}, CheckCase{"", false}, CheckCase{"  ", false},
                      CheckCase{"1.5x", false}, CheckCase{"1e", false}, CheckCase{"inf", false},
                      CheckCase{"nan", false}, CheckCase{"0x10", false}, CheckCase{"1e999", false},
                      CheckCase{"1,5", false}, CheckCase{"- 1", false}));

TEST(DecimalPointText, ReadsOneCommaBetweenDigitsAsThePoint) {
    const std::pair<const char*, const char*> cases[] = {
        {"1,5168", "1.5168"}, {"-0,5e-3", "-0.5e-3"}, {",5", ".5"},
        {" 2,25 ", " 2.25 "}, {"1,", "1,"},           {"1,234.5", "1,234.5"},
        {"1,2,3", "1,2,3"},   {"N,BK7", "N,BK7"},     {"1.5", "1.5"}};
    for (const auto& [in, out] : cases) EXPECT_EQ(DecimalPointText(in), out) << in;
}

class ValidIntegerTest : public ::testing::TestWithParam<CheckCase> {};
TEST_P(ValidIntegerTest, AcceptsOnlyA16BitWholeNumber) {
    EXPECT_EQ(IsValidInteger(GetParam().text), GetParam().expected) << GetParam().text;
}
INSTANTIATE_TEST_SUITE_P(
    Texts, ValidIntegerTest,
    ::testing::Values(CheckCase{"32767", true}, CheckCase{"-32768", true}, CheckCase{" 12 ", true},
                      CheckCase{"+7", true}, CheckCase{"32768", false}, CheckCase{"-32769", false},
                      CheckCase{"1.0", false}, CheckCase{"", false}, CheckCase{"-", false},
                      CheckCase{"99999999999999999999", false}, CheckCase{"1e2", false}));

TEST(IsValidLong, CoversThe32BitRange) {
    EXPECT_TRUE(IsValidLong("2147483647"));
    EXPECT_TRUE(IsValidLong("-2147483648"));
    EXPECT_FALSE(IsValidLong("2147483648"));
    EXPECT_TRUE(IsValidLong("40000"));
}

struct RoundCase {
    double value;
    double rounded;
};
class RoundTest : public ::testing::TestWithParam<RoundCase> {};
TEST_P(RoundTest, RoundsHalfToEven) {
    const RoundCase& c = GetParam();
    EXPECT_EQ(RoundHalfEven(c.value), c.rounded) << c.value;
    EXPECT_EQ(CInt(c.value), static_cast<int16_t>(c.rounded)) << c.value;
    EXPECT_EQ(CLng(c.value), static_cast<int32_t>(c.rounded)) << c.value;
}
INSTANTIATE_TEST_SUITE_P(Values, RoundTest,
                         ::testing::Values(RoundCase{2.5, 2}, RoundCase{3.5, 4},
                                           RoundCase{-2.5, -2}, RoundCase{-3.5, -4},
                                           RoundCase{0.5, 0}, RoundCase{1.5, 2},
                                           RoundCase{2.4999, 2}, RoundCase{2.5001, 3},
                                           RoundCase{-0.4, 0}, RoundCase{7, 7}));

TEST(CIntCLng, SaturateOutsideTheirRange) {
    EXPECT_EQ(CInt(40000.0), 32767);
    EXPECT_EQ(CInt(-40000.0), -32768);
    EXPECT_EQ(CInt(std::nan("")), 0);
    EXPECT_EQ(CLng(3e9), 2147483647);
    EXPECT_EQ(CLng(-3e9), -2147483647 - 1);
    EXPECT_EQ(CLng(40000.5), 40000);
}

}  // namespace
}  // namespace ostrel
