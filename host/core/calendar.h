// Proleptic Gregorian calendar arithmetic on day numbers (1 = 1 January 0001).
#pragma once

#include <cstdint>

namespace fmhost::calendar {

struct CivilDate {
    int64_t year;
    int month;  // 1..12
    int day;    // 1..31
};

int64_t DayNumber(int64_t year, int month, int day);
CivilDate FromDayNumber(int64_t dayNumber);
bool IsLeapYear(int64_t year);
int DaysInMonth(int64_t year, int month);
// Floor division and modulo (the remainder has the sign of the divisor).
int64_t FloorDiv(int64_t a, int64_t b);
int64_t FloorMod(int64_t a, int64_t b);

}  // namespace fmhost::calendar
