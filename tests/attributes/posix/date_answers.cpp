// Linux converts through the time-zone database, so its data is the zones' history itself.

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>

#include "attributes/date_answers.h"
#include "foundation/file_name_bytes.h"
#include "foundation/posix/unique_fds.h"

namespace items_test {

namespace {

std::string Bytes(const std::u16string& path) {
    return slib::TextToFileNameBytes(path).value_or("");
}

const char kZoneFolder[] = "/usr/share/zoneinfo";

}  // namespace

const bool kSystemKeepsZoneHistory = true;

// Without the zone's file glibc quietly takes UTC, which would pass for a wrong answer.
std::optional<std::string> MissingZone(const Zone& zone) {
    const char* folder = getenv("TZDIR");
    const std::string file = std::string(folder != nullptr ? folder : kZoneFolder) + "/" + zone.tz;
    if (::access(file.c_str(), R_OK) == 0) {
        return std::nullopt;
    }
    return "no time-zone data for " + std::string(zone.tz) + " (" + file +
           "): install the tzdata package";
}

// glibc reads the zone's file of the IANA database: its rule for a year is that history.
std::string SystemUtc(const DateCase& c) {
    return c.zoneinfo;
}

std::string UtcModified(const std::u16string& path) {
    struct stat info {};
    struct tm utc {};
    if (::stat(Bytes(path).c_str(), &info) != 0 ||
        ::gmtime_r(&info.st_mtim.tv_sec, &utc) == nullptr) {
        return "unreadable";
    }
    return Format({utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday, utc.tm_hour, utc.tm_min});
}

// No time_t holds the first; the year 1500 only where the file system stops short of it (ext4
// and XFS keep 1901 to 2446 or 2486, tmpfs and Btrfs every year), tried on the probe itself.
std::vector<std::u16string> DatesTheFileCannotKeep(const std::u16string& probe) {
    std::vector<std::u16string> dates = {u"99999999999999999999999"};
    const std::string file = Bytes(probe);
    struct tm early {};
    early.tm_year = 1500 - 1900;
    early.tm_mon = 0;
    early.tm_mday = 2;
    const time_t time = ::timegm(&early);
    const struct timespec times[2] = {{0, UTIME_OMIT}, {time, 0}};
    struct stat info {};
    const slib::UniqueFd made(::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
    const bool tried = made.valid() && ::utimensat(AT_FDCWD, file.c_str(), times, 0) == 0 &&
                       ::stat(file.c_str(), &info) == 0;
    if (tried && info.st_mtim.tv_sec != time) {
        dates.push_back(u"Timestamp ( Date ( 1 ; 1 ; 1500 ) ; Time ( 0 ; 0 ; 0 ) )");
    }
    ::unlink(file.c_str());
    return dates;
}

}  // namespace items_test
