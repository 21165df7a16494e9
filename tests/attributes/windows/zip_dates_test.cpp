// Zip entries keep DOS date and time in local time: the same rule of the date's own year as the
// file times (Windows' per-year data; the zip core's own arithmetic is tested natively).

#include <windows.h>

#include "archive/windows/entry_file_time.h"
#include "attributes/date_answers.h"
#include "attributes/windows/system_minute.h"

namespace items_test {
namespace {

TEST_F(ZoneDates, ZipEntryTimesTakeTheSameRule) {
    if (const std::optional<std::string> missing = MissingZone(*zone_)) {
        GTEST_SKIP() << *missing;
    }
    for (const DateCase& c : zone_->cases) {
        SCOPED_TRACE(c.local);
        if (Parse(c.local).year < 1980) {
            continue;  // before the first DOS date
        }
        const SYSTEMTIME utc = ToSystemTime(Parse(SystemUtc(c).c_str()));
        FILETIME time{};
        ASSERT_TRUE(SystemTimeToFileTime(&utc, &time));
        archive::EntryTime entry = archive::EntryTimeFromFileTime(time);
        FILETIME dosTime{};
        SYSTEMTIME shown{};
        ASSERT_TRUE(DosDateTimeToFileTime(entry.dosDate, entry.dosTime, &dosTime) &&
                    FileTimeToSystemTime(&dosTime, &shown));
        EXPECT_EQ(FormatSystemTime(shown), c.local);
        entry.hasUnixTime = false;  // as written by tools that keep DOS times only
        const std::optional<FILETIME> restored = archive::FileTimeFromEntryTime(entry);
        ASSERT_TRUE(restored.has_value());
        SYSTEMTIME restoredUtc{};
        FileTimeToSystemTime(&*restored, &restoredUtc);
        EXPECT_EQ(FormatSystemTime(restoredUtc), FormatSystemTime(utc));
    }
}

}  // namespace
}  // namespace items_test
