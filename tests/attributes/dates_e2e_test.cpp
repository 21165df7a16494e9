// Dates through the host in a process whose time zone is set by TZ (CTest runs this program once
// per zone; Wine takes its zone from TZ as Windows from its settings). Each date is stored with
// the rule of its own year, both ways, and compared with two references: the system's own
// conversion given that year's rule (GetTimeZoneInformationForYear with
// TzSpecificLocalTimeToSystemTime), and Python's zoneinfo (the IANA database), computed by
//   datetime(1965, 7, 1, 12, tzinfo=ZoneInfo("Europe/Berlin")).astimezone(timezone.utc)
// Where Windows' per-year data differs from the IANA history, the case says why and only the
// system's reference applies.

#include <windows.h>

#include <algorithm>
#include <cstdlib>

#include "archive/windows/entry_file_time.h"
#include "foundation/windows/unique_handles.h"
#include "items_e2e/items_fixture.h"

namespace items_test {
namespace {

struct DateCase {
    const char* local;      // "YYYY-MM-DD HH:MM", never in a skipped or doubled hour
    const char* zoneinfo;   // UTC by the IANA history
    const char* disagrees;  // why Windows' data differs from it; null when it agrees
};

struct Zone {
    const char* tz;
    std::vector<std::wstring> windowsKeys;  // zones of Windows with the same rules
    std::vector<DateCase> cases;
};

const Zone kZones[] = {
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

SYSTEMTIME Parse(const char* text) {
    SYSTEMTIME time{};
    sscanf(text, "%hu-%hu-%hu %hu:%hu", &time.wYear, &time.wMonth, &time.wDay, &time.wHour,
           &time.wMinute);
    return time;
}

std::string Format(const SYSTEMTIME& time) {
    char text[32];
    snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d", time.wYear, time.wMonth, time.wDay,
             time.wHour, time.wMinute);
    return text;
}

// The system's own conversion of a local time given the rule of its year.
std::string SystemUtc(const char* local) {
    DYNAMIC_TIME_ZONE_INFORMATION dynamic{};
    TIME_ZONE_INFORMATION zone{};
    const SYSTEMTIME time = Parse(local);
    SYSTEMTIME utc{};
    if (GetDynamicTimeZoneInformation(&dynamic) == TIME_ZONE_ID_INVALID ||
        !GetTimeZoneInformationForYear(time.wYear, &dynamic, &zone) ||
        !TzSpecificLocalTimeToSystemTime(&zone, &time, &utc)) {
        return "none";
    }
    return Format(utc);
}

std::u16string HostTimestamp(const char* local) {
    const SYSTEMTIME time = Parse(local);
    char text[96];
    snprintf(text, sizeof text, "Timestamp ( Date ( %d ; %d ; %d ) ; Time ( %d ; %d ; 0 ) )",
             time.wMonth, time.wDay, time.wYear, time.wHour, time.wMinute);
    return slib::String::FromUtf8(text)->units();
}

std::string HostShown(const char* local) {
    const SYSTEMTIME time = Parse(local);
    char text[32];
    snprintf(text, sizeof text, "%d/%d/%d %d:%02d:00", time.wMonth, time.wDay, time.wYear,
             time.wHour, time.wMinute);
    return text;
}

class ZoneDates : public ItemsTest {
  protected:
    void SetUp() override {
        ItemsTest::SetUp();
        const char* tz = getenv("TZ");
        for (const Zone& candidate : kZones) {
            if (tz != nullptr && std::string(tz) == candidate.tz) {
                zone_ = &candidate;
            }
        }
        ASSERT_NE(zone_, nullptr) << "run with TZ set to one of the zones (CTest sets it)";
    }

    // A file's last-write time in UTC.
    std::string utcModified(const std::u16string& relative) const {
        const slib::UniqueFileHandle file(CreateFileW(Wide(path(relative)), GENERIC_READ,
                                                      FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0,
                                                      nullptr));
        FILETIME written{};
        SYSTEMTIME utc{};
        if (!file.valid() || !GetFileTime(file.get(), nullptr, nullptr, &written) ||
            !FileTimeToSystemTime(&written, &utc)) {
            return "unreadable";
        }
        return Format(utc);
    }

    // Whether the system has a zone with this zone's rules; where not (Wine has no Lord Howe),
    // missingZone_ says what it chose instead.
    bool systemKnowsZone() {
        DYNAMIC_TIME_ZONE_INFORMATION dynamic{};
        GetDynamicTimeZoneInformation(&dynamic);
        const std::wstring key = dynamic.TimeZoneKeyName;
        if (std::find(zone_->windowsKeys.begin(), zone_->windowsKeys.end(), key) !=
            zone_->windowsKeys.end()) {
            return true;
        }
        missingZone_ = "the system has no zone for " + std::string(zone_->tz) + ": it chose \"" +
                       std::string(key.begin(), key.end()) + "\" (bias " +
                       std::to_string(dynamic.Bias) + ", daylight bias " +
                       std::to_string(dynamic.DaylightBias) +
                       "); the per-year rule arithmetic is covered natively";
        return false;
    }

    const Zone* zone_ = nullptr;
    std::string missingZone_;
};

TEST_F(ZoneDates, EachDateIsStoredWithTheRuleOfItsOwnYear) {
    if (!systemKnowsZone()) {
        GTEST_SKIP() << missingZone_;
    }
    writeFile(u"a.txt", "x");
    for (const DateCase& c : zone_->cases) {
        SCOPED_TRACE(c.local);
        ASSERT_EQ(
            evaluate(u"VFile_Set( \"modified\" ; \"a.txt\" ; " + HostTimestamp(c.local) + u" )"),
            "");
        const std::string stored = utcModified(u"a.txt");
        EXPECT_EQ(stored, SystemUtc(c.local)) << "the system's own rule for the year";
        if (c.disagrees == nullptr) {
            EXPECT_EQ(stored, c.zoneinfo) << "the IANA history";
        } else {
            EXPECT_NE(stored, c.zoneinfo) << "listed as differing: " << c.disagrees;
        }
        EXPECT_EQ(evaluate(u"VFile_Get( \"modified\" ; \"a.txt\" )"), HostShown(c.local));
    }
}

// Zip entries keep DOS date and time in local time: the same rule of the date's own year.
TEST_F(ZoneDates, ZipEntryTimesTakeTheSameRule) {
    if (!systemKnowsZone()) {
        GTEST_SKIP() << missingZone_;
    }
    for (const DateCase& c : zone_->cases) {
        SCOPED_TRACE(c.local);
        const SYSTEMTIME local = Parse(c.local);
        if (local.wYear < 1980) {
            continue;  // before the first DOS date
        }
        const SYSTEMTIME utc = Parse(SystemUtc(c.local).c_str());
        FILETIME time{};
        ASSERT_TRUE(SystemTimeToFileTime(&utc, &time));
        archive::EntryTime entry = archive::EntryTimeFromFileTime(time);
        FILETIME dosTime{};
        SYSTEMTIME shown{};
        ASSERT_TRUE(DosDateTimeToFileTime(entry.dosDate, entry.dosTime, &dosTime) &&
                    FileTimeToSystemTime(&dosTime, &shown));
        EXPECT_EQ(Format(shown), c.local);
        entry.hasUnixTime = false;  // as written by tools that keep DOS times only
        const std::optional<FILETIME> restored = archive::FileTimeFromEntryTime(entry);
        ASSERT_TRUE(restored.has_value());
        SYSTEMTIME restoredUtc{};
        FileTimeToSystemTime(&*restored, &restoredUtc);
        EXPECT_EQ(Format(restoredUtc), Format(utc));
    }
}

TEST_F(ZoneDates, DatesAFileCannotKeepAreRefused) {
    writeFile(u"a.txt", "x");
    ASSERT_EQ(evaluate(uR"(VFile_Set( "modified" ; "a.txt" ; Timestamp ( Date ( 7 ; 1 ; 2021 ) ;
                           Time ( 12 ; 0 ; 0 ) ) ))"),
              "");
    const std::string before = utcModified(u"a.txt");
    const std::string refused = Failed(-50, "The file cannot keep this date");
    // 1601-01-01 00:00 UTC is file time 0, which tells the system to leave the time alone. East
    // of Greenwich that is a local time on 1601-01-01 (in winter: the zone's bias); west of it a
    // local time in 1600, refused as before the first file time.
    TIME_ZONE_INFORMATION zone{};
    GetTimeZoneInformation(&zone);
    const int east = -zone.Bias;  // minutes
    char zero[128];
    snprintf(zero, sizeof zero, "Timestamp ( Date ( %d ; %d ; %d ) ; Time ( %d ; %d ; 0 ) )",
             east >= 0 ? 1 : 12, east >= 0 ? 1 : 31, east >= 0 ? 1601 : 1600,
             ((east % 1440) + 1440) % 1440 / 60, ((east % 60) + 60) % 60);
    const std::u16string cases[] = {
        slib::String::FromUtf8(zero)->units(),
        u"99999999999999999999999",
        u"Timestamp ( Date ( 1 ; 1 ; 1500 ) ; Time ( 0 ; 0 ; 0 ) )",
    };
    for (const std::u16string& value : cases) {
        EXPECT_EQ(call(u"VFile_Set( \"modified\" ; \"a.txt\" ; " + value + u" )"), refused)
            << Narrow(value);
        EXPECT_EQ(utcModified(u"a.txt"), before);
    }
}

}  // namespace
}  // namespace items_test
