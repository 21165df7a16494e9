// An entry's time and mode from a file's status and back, on Linux: the same fields the Windows
// build writes for the same moment, clamped where the DOS form ends, and the mode rules of
// unpacked files.
#include "archive/posix/entry_file_time.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

#include "archive/zip_format.h"

namespace {

using archive::EntryTime;

constexpr uint64_t kUnixEpochTicks = 116444736000000000;

uint16_t DosDate(int year, int month, int day) {
    return static_cast<uint16_t>((year - 1980) << 9 | month << 5 | day);
}
uint16_t DosTime(int hour, int minute, int second) {
    return static_cast<uint16_t>(hour << 11 | minute << 5 | second / 2);
}

class EntryFileTime : public ::testing::Test {
  protected:
    // The DOS fields are local time: UTC makes them readable here.
    void SetUp() override {
        const char* zone = std::getenv("TZ");
        savedZone_ = zone == nullptr ? "" : zone;
        hadZone_ = zone != nullptr;
        setenv("TZ", "UTC", 1);
        tzset();
    }
    void TearDown() override {
        if (hadZone_) {
            setenv("TZ", savedZone_.c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }

  private:
    std::string savedZone_;
    bool hadZone_ = false;
};

TEST_F(EntryFileTime, StatusGivesEveryFormOfTheTime) {
    const struct {
        const char* what;
        time_t seconds;
        long nanoseconds;
        uint16_t dosDate;
        uint16_t dosTime;
        bool hasUnixTime;
    } cases[] = {
        {"ordinary", 1710506096, 123456789, DosDate(2024, 3, 15), DosTime(12, 34, 56), true},
        {"odd second rounds down", 1710506097, 0, DosDate(2024, 3, 15), DosTime(12, 34, 56), true},
        {"before 1980 clamps", 173000000, 0, DosDate(1980, 1, 1), DosTime(0, 0, 0), true},
        {"before 1970", -100, 0, DosDate(1980, 1, 1), DosTime(0, 0, 0), false},
        {"after 2038", 2200000000, 0, DosDate(2039, 9, 18), DosTime(23, 6, 40), false},
        {"after 2107 clamps", 4420000000, 0, DosDate(2107, 12, 31), DosTime(23, 59, 58), false},
    };
    for (const auto& c : cases) {
        struct stat status = {};
        status.st_mode = S_IFREG | 0640;
        status.st_mtim = {c.seconds, c.nanoseconds};
        const EntryTime entry = archive::EntryTimeFromStatus(status);
        EXPECT_EQ(entry.dosDate, c.dosDate) << c.what;
        EXPECT_EQ(entry.dosTime, c.dosTime) << c.what;
        EXPECT_EQ(entry.hasUnixTime, c.hasUnixTime) << c.what;
        EXPECT_TRUE(entry.hasFileTime) << c.what;
        EXPECT_EQ(entry.fileTime, static_cast<uint64_t>(c.seconds * 10000000 + kUnixEpochTicks +
                                                        c.nanoseconds / 100))
            << c.what;
        EXPECT_EQ(entry.unixMode, S_IFREG | 0640) << c.what;
        EXPECT_EQ(entry.attributes, 0) << c.what;
    }
}

TEST_F(EntryFileTime, TheModeSaysReadOnlyAndKeepsOnlyTypeAndPermissions) {
    const struct {
        mode_t mode;
        uint16_t stored;
        uint8_t attributes;
    } cases[] = {
        {S_IFREG | 0644, S_IFREG | 0644, 0},
        {S_IFREG | 0444, S_IFREG | 0444, archive::kDosAttributeReadOnly},
        {S_IFREG | 04755, S_IFREG | 0755, 0},
        {S_IFDIR | 01777, S_IFDIR | 0777, 0},
        {S_IFREG | 0077, S_IFREG | 0077, archive::kDosAttributeReadOnly},
    };
    for (const auto& c : cases) {
        struct stat status = {};
        status.st_mode = c.mode;
        const EntryTime entry = archive::EntryTimeFromStatus(status);
        EXPECT_EQ(entry.unixMode, c.stored) << std::oct << c.mode;
        EXPECT_EQ(entry.attributes, c.attributes) << std::oct << c.mode;
    }
}

TEST_F(EntryFileTime, TheBestFormPresentGivesTheModification) {
    EntryTime exact;
    exact.hasFileTime = true;
    exact.fileTime = kUnixEpochTicks + 17105060961234567;
    exact.hasUnixTime = true;
    exact.unixTime = 5;  // never reached: the exact time comes first
    EntryTime early;     // before 1970, in 100 ns steps
    early.hasFileTime = true;
    early.fileTime = kUnixEpochTicks - 15;
    EntryTime unixOnly;
    unixOnly.hasUnixTime = true;
    unixOnly.unixTime = 1710506096;
    EntryTime dosOnly;
    dosOnly.dosDate = DosDate(2024, 3, 15);
    dosOnly.dosTime = DosTime(12, 34, 56);
    EntryTime badDos;
    badDos.dosDate = DosDate(2024, 13, 15);
    const struct {
        const char* what;
        EntryTime time;
        bool has;
        time_t seconds;
        long nanoseconds;
    } cases[] = {
        {"exact", exact, true, 1710506096, 123456700},
        {"exact before 1970", early, true, -1, 999998500},
        {"unix seconds", unixOnly, true, 1710506096, 0},
        {"dos fields", dosOnly, true, 1710506096, 0},
        {"no valid form", badDos, false, 0, 0},
    };
    for (const auto& c : cases) {
        const std::optional<timespec> modified = archive::ModificationFromEntryTime(c.time);
        ASSERT_EQ(modified.has_value(), c.has) << c.what;
        if (modified) {
            EXPECT_EQ(modified->tv_sec, c.seconds) << c.what;
            EXPECT_EQ(modified->tv_nsec, c.nanoseconds) << c.what;
        }
    }
}

TEST_F(EntryFileTime, UnpackedFilesNeverGetSetIdOrStickyBits) {
    EntryTime readOnly;
    readOnly.attributes = archive::kDosAttributeReadOnly;
    EntryTime stored;
    stored.unixMode = S_IFREG | 06755;
    EntryTime sticky;
    sticky.unixMode = S_IFREG | 01640;
    const struct {
        const char* what;
        EntryTime time;
        mode_t umask;
        mode_t mode;
    } cases[] = {
        {"no mode", EntryTime(), 022, 0644},
        {"no mode, tight umask", EntryTime(), 077, 0600},
        {"read-only", readOnly, 022, 0444},
        {"set-id bits dropped", stored, 022, 0755},
        {"sticky bit dropped", sticky, 0, 0640},
        {"a stored mode ignores the umask", stored, 077, 0755},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(archive::UnpackedFileMode(c.time, c.umask), c.mode) << c.what;
    }
}

}  // namespace
