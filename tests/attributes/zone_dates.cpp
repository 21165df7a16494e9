#include "attributes/zone_dates.h"

#include <cstdio>
#include <cstdlib>

namespace items_test {

namespace {

const std::vector<Zone> kZones = {
    {"Europe/Berlin",
     {L"W. Europe Standard Time", L"Central Europe Standard Time"},
     {{"1965-07-01 12:00", "1965-07-01 11:00",
       "Germany kept no daylight saving from 1950 to 1979; Windows knows only today's rule"},
      {"1978-07-01 12:00", "1978-07-01 11:00",
       "Germany kept no daylight saving from 1950 to 1979; Windows knows only today's rule"},
      {"1990-10-15 12:00", "1990-10-15 11:00",
       "until 1995 the saving ended in September; Windows knows only today's rule"},
      {"1985-07-01 12:00", "1985-07-01 10:00", nullptr},
      {"2021-01-01 12:00", "2021-01-01 11:00", nullptr},
      {"2021-07-01 12:00", "2021-07-01 10:00", nullptr},
      {"2040-12-01 12:00", "2040-12-01 11:00", nullptr},
      {"2040-07-01 12:00", "2040-07-01 10:00", nullptr}}},
    {"America/New_York",
     {L"Eastern Standard Time"},
     {{"2006-04-01 12:00", "2006-04-01 17:00", nullptr},
      {"2006-10-31 12:00", "2006-10-31 17:00", nullptr},
      {"1974-01-15 12:00", "1974-01-15 16:00",
       "the saving all through 1974 (energy crisis) is not in Windows' data"},
      {"1965-07-01 12:00", "1965-07-01 16:00", nullptr},
      {"2021-07-01 12:00", "2021-07-01 16:00", nullptr},
      {"2021-12-01 12:00", "2021-12-01 17:00", nullptr},
      {"2040-11-03 12:00", "2040-11-03 16:00", nullptr}}},
    {"Asia/Kathmandu",
     {L"Nepal Standard Time"},
     {{"1980-06-01 12:00", "1980-06-01 06:30",
       "Nepal kept UTC+5:30 until 1986; Windows knows only +5:45"},
      {"2021-01-01 00:30", "2020-12-31 18:45", nullptr},
      {"2040-06-01 12:00", "2040-06-01 06:15", nullptr}}},
    {"Australia/Lord_Howe",
     {L"Lord Howe Standard Time"},
     {{"2021-01-15 12:00", "2021-01-15 01:00", nullptr},
      {"2021-07-01 12:00", "2021-07-01 01:30", nullptr},
      {"2040-01-15 12:00", "2040-01-15 01:00", nullptr}}},
};

}  // namespace

Minute Parse(const char* text) {
    Minute time{};
    sscanf(text, "%d-%d-%d %d:%d", &time.year, &time.month, &time.day, &time.hour, &time.minute);
    return time;
}

std::string Format(const Minute& time) {
    char text[40];
    snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d", time.year, time.month, time.day,
             time.hour, time.minute);
    return text;
}

void ZoneDates::SetUp() {
    ItemsTest::SetUp();
    const char* tz = getenv("TZ");
    for (const Zone& candidate : kZones) {
        if (tz != nullptr && std::string(tz) == candidate.tz) {
            zone_ = &candidate;
        }
    }
    ASSERT_NE(zone_, nullptr) << "run with TZ set to one of the zones (CTest sets it)";
}

}  // namespace items_test
