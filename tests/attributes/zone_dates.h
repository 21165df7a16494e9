// Dates through the host in a process whose time zone is set by TZ (CTest runs the program once
// per zone). The cases are the zones' history by the IANA database, computed by Python's zoneinfo:
//   datetime(1965, 7, 1, 12, tzinfo=ZoneInfo("Europe/Berlin")).astimezone(timezone.utc)
// A system whose own data differs from that history says so as data (date_answers.h).
#pragma once

#include <string>
#include <vector>

#include "items_e2e/items_fixture.h"

namespace items_test {

struct DateCase {
    const char* local;      // "YYYY-MM-DD HH:MM", never in a skipped or doubled hour
    const char* zoneinfo;   // UTC by the IANA history
    const char* disagrees;  // why Windows' per-year data differs from it; null when it agrees
};

struct Zone {
    const char* tz;
    std::vector<std::wstring> windowsKeys;  // zones of Windows with the same rules
    std::vector<DateCase> cases;
};

struct Minute {
    int year, month, day, hour, minute;
};

Minute Parse(const char* text);
std::string Format(const Minute& time);  // "YYYY-MM-DD HH:MM"

class ZoneDates : public ItemsTest {
  protected:
    void SetUp() override;
    const Zone* zone_ = nullptr;
};

}  // namespace items_test
