#include "core/platform/ole_date.h"

#include <cmath>
#include <cstdio>
#include <ctime>

#include "core/platform/clock.h"

namespace ostrel {
namespace {

// Days from 1970-01-01 of a proleptic Gregorian date.
long long DaysFromCivil(long long y, unsigned m, unsigned d) {
    y -= m <= 2;
    const long long era = (y >= 0 ? y : y - 399) / 400;
    const unsigned yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<long long>(doe) - 719468;
}

void CivilFromDays(long long z, int& y, int& m, int& d) {
    z += 719468;
    const long long era = (z >= 0 ? z : z - 146096) / 146097;
    const unsigned doe = static_cast<unsigned>(z - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    y = static_cast<int>(static_cast<long long>(yoe) + era * 400 + (m <= 2));
}

const long long kEpochOffset = DaysFromCivil(1899, 12, 30);

}  // namespace

double OleDateFromCivil(const CivilDateTime& c) {
    long long days =
        DaysFromCivil(c.year, static_cast<unsigned>(c.month), static_cast<unsigned>(c.day)) -
        kEpochOffset;
    double frac = (c.hour * 3600.0 + c.minute * 60.0 + c.second) / 86400.0;
    return days >= 0 ? static_cast<double>(days) + frac : static_cast<double>(days) - frac;
}

CivilDateTime CivilFromOleDate(double date) {
    double whole = std::trunc(date);
    double frac = std::fabs(date - whole);
    long long seconds = std::llround(frac * 86400.0);
    long long days = static_cast<long long>(whole);
    if (seconds >= 86400) {
        seconds -= 86400;
        days += date >= 0 ? 1 : -1;
    }
    CivilDateTime c;
    CivilFromDays(days + kEpochOffset, c.year, c.month, c.day);
    c.hour = static_cast<int>(seconds / 3600);
    c.minute = static_cast<int>(seconds / 60 % 60);
    c.second = static_cast<int>(seconds % 60);
    return c;
}

std::string FormatIsoDate(double date) {
    CivilDateTime c = CivilFromOleDate(date);
    char buf[32];
    std::snprintf(buf, sizeof buf, "%04d-%02d-%02d", c.year, c.month, c.day);
    return buf;
}

namespace {
std::function<std::string(int, int, int)>& ShortDateFormat() {
    static std::function<std::string(int, int, int)> format;
    return format;
}
}  // namespace

std::string FormatShortDate(double date) {
    if (!ShortDateFormat()) return FormatIsoDate(date);
    const CivilDateTime c = CivilFromOleDate(date);
    return ShortDateFormat()(c.year, c.month, c.day);
}

void SetShortDateFormat(std::function<std::string(int year, int month, int day)> format) {
    ShortDateFormat() = std::move(format);
}

std::string FormatIsoDateTime(double date) {
    CivilDateTime c = CivilFromOleDate(date);
    char buf[48];
    std::snprintf(buf, sizeof buf, "%04d-%02d-%02d %02d:%02d:%02d", c.year, c.month, c.day, c.hour,
                  c.minute, c.second);
    return buf;
}

double SystemClock::Now() const {
    std::time_t t = std::time(nullptr);
    std::tm local{};
    localtime_r(&t, &local);
    return OleDateFromCivil({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                             local.tm_min, local.tm_sec});
}

}  // namespace ostrel
