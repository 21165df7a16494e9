// Dates through the host in a process whose time zone is Europe/Berlin (CTest sets TZ; Wine takes
// its zone from it as Windows from its settings): each date gets the offset in force on that
// date, in both directions, whatever the offset is today.

#include <windows.h>

#include "foundation/windows/unique_handles.h"
#include "items_e2e/items_fixture.h"

namespace items_test {
namespace {

class BerlinDates : public ItemsTest {
  protected:
    void SetUp() override {
        ItemsTest::SetUp();
        TIME_ZONE_INFORMATION zone;
        GetTimeZoneInformation(&zone);
        ASSERT_EQ(zone.Bias, -60) << "run with TZ=Europe/Berlin (CTest sets it)";
        ASSERT_EQ(zone.DaylightBias, -60);
    }

    // A file's last-write time in UTC, "YYYY-MM-DD HH:MM:SS.mmm".
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
        char text[64];
        snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d.%03d", utc.wYear, utc.wMonth,
                 utc.wDay, utc.wHour, utc.wMinute, utc.wSecond, utc.wMilliseconds);
        return text;
    }
};

TEST_F(BerlinDates, SummerAndWinterDatesEachTakeTheirOwnOffset) {
    writeFile(u"summer.txt", "s");
    writeFile(u"winter.txt", "w");
    const struct {
        const char16_t* file;
        const char16_t* timestamp;
        const char* shown;
        const char* utc;
    } cases[] = {
        {u"summer.txt", u"Timestamp ( Date ( 7 ; 1 ; 2021 ) ; Time ( 12 ; 0 ; 0 ) )",
         "7/1/2021 12:00:00", "2021-07-01 10:00:00.000"},
        {u"winter.txt", u"Timestamp ( Date ( 1 ; 1 ; 2021 ) ; Time ( 12 ; 0 ; 0.5 ) )",
         "1/1/2021 12:00:00.5", "2021-01-01 11:00:00.500"},
        // The night the clocks go back: 02:30 comes twice, and either is a valid answer; 03:30
        // is after the change.
        {u"summer.txt", u"Timestamp ( Date ( 10 ; 31 ; 2021 ) ; Time ( 3 ; 30 ; 0 ) )",
         "10/31/2021 3:30:00", "2021-10-31 02:30:00.000"},
    };
    for (const auto& c : cases) {
        const std::u16string file = Quoted(c.file);
        EXPECT_EQ(evaluate(u"VFile_Set( \"modified\" ; " + file + u" ; " + c.timestamp + u" )"),
                  "");
        EXPECT_EQ(utcModified(c.file), c.utc) << c.shown;
        EXPECT_EQ(evaluate(u"VFile_Get( \"modified\" ; " + file + u" )"), c.shown);
    }
}

}  // namespace
}  // namespace items_test
