#pragma once
// Dates as 64-bit day counts from 1899-12-30, the fraction being the time of day.
#include <functional>
#include <string>

namespace ostrel {

struct CivilDateTime {
    int year = 1899, month = 12, day = 30;
    int hour = 0, minute = 0, second = 0;
};

double OleDateFromCivil(const CivilDateTime& c);
// For negative day counts the time part counts forward from the whole day, as the
// date type has always done: -1.25 is 1899-12-29 06:00.
CivilDateTime CivilFromOleDate(double date);

// "yyyy-mm-dd"
std::string FormatIsoDate(double date);
// "yyyy-mm-dd hh:mm:ss"
std::string FormatIsoDateTime(double date);

// The date in the user's short date format, where the windows have set one (the command line
// keeps "yyyy-mm-dd", which scripts can read back).
std::string FormatShortDate(double date);
void SetShortDateFormat(std::function<std::string(int year, int month, int day)> format);

}  // namespace ostrel
