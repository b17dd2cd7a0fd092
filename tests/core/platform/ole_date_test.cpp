#include "core/platform/ole_date.h"

#include <gtest/gtest.h>

#include "core/platform/codepage.h"

namespace ostrel {
namespace {

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
        EXPECT_EQ(back.year, civil.year) << days;
        EXPECT_EQ(back.month, civil.month) << days;
        EXPECT_EQ(back.day, civil.day) << days;
        EXPECT_EQ(back.hour, civil.hour) << days;
        EXPECT_EQ(back.minute, civil.minute) << days;
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
    EXPECT_EQ(Cp1252ToUtf8("\x80"), "\xE2\x82\xAC");  // euro sign
    EXPECT_EQ(Cp1252ToUtf8("\xB0"), "\xC2\xB0");      // degree sign
}

}  // namespace
}  // namespace ostrel
