// Attributes on Linux: rights as the mode's bits, owner and group names, dates through the zone
// data, free space; each a round trip through the system's own answer.

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <time.h>
#include <unistd.h>

#include <cstdlib>

#include "file_manager/scratch_folder.h"
#include "foundation/date.h"
#include "foundation/error_codes.h"
#include "foundation/file_name_bytes.h"
#include "foundation/number.h"

namespace slib {
namespace test {
namespace {

class AttributesTest : public ScratchTest {
  protected:
    mode_t modeOf(const std::u16string& relative) const {
        struct stat info {};
        EXPECT_EQ(::stat(Narrow(path(relative)).c_str(), &info), 0);
        return info.st_mode & 07777;
    }
    void setMode(const std::u16string& relative, mode_t mode) const {
        ASSERT_EQ(::chmod(Narrow(path(relative)).c_str(), mode), 0);
    }
    struct timespec modifiedOf(const std::u16string& relative) const {
        struct stat info {};
        EXPECT_EQ(::stat(Narrow(path(relative)).c_str(), &info), 0);
        return info.st_mtim;
    }
};

// Runs the test's zone, then restores the machine's.
class ZoneScope {
  public:
    explicit ZoneScope(const char* zone) {
        const char* old = std::getenv("TZ");
        had_ = old != nullptr;
        old_ = had_ ? old : "";
        ::setenv("TZ", zone, 1);
        ::tzset();
    }
    ~ZoneScope() {
        had_ ? ::setenv("TZ", old_.c_str(), 1) : ::unsetenv("TZ");
        ::tzset();
    }

  private:
    bool had_;
    std::string old_;
};

TEST_F(AttributesTest, RightsAreTheModesBitsAndAreOnlyEverAdded) {
    const struct {
        const char* name;
        mode_t mode;
        uint32_t owner, group, everyone;
    } reads[] = {{"rw-r-----", 0640, 6, 4, 0},
                 {"rwxr-xr-x", 0755, 7, 5, 5},
                 {"nothing", 0000, 0, 0, 0},
                 {"-wx-w---x", 0321, 3, 2, 1}};
    writeFile(u"f", "x");
    for (const auto& r : reads) {
        SCOPED_TRACE(r.name);
        setMode(u"f", r.mode);
        EXPECT_EQ(manager_.getOwnerRights(at(u"f")), r.owner);
        EXPECT_EQ(manager_.getGroupRights(at(u"f")), r.group);
        EXPECT_EQ(manager_.getEveryoneRights(at(u"f")), r.everyone);
    }

    const auto owner = &FileManager::setOwnerRights;
    const auto group = &FileManager::setGroupRights;
    const auto everyone = &FileManager::setEveryoneRights;
    const struct {
        const char* name;
        mode_t before;
        decltype(owner) set;
        uint32_t rights;
        mode_t after;
    } adds[] = {{"group read", 0600, group, 4, 0640},
                {"everyone all", 0600, everyone, 7, 0607},
                {"owner execute", 0644, owner, 1, 0744},
                {"clear bits take nothing", 0777, group, 0, 0777},
                {"only the low three bits", 0600, everyone, 8 + 4, 0604},
                {"special bits stay", 04700, group, 1, 04710}};
    for (const auto& a : adds) {
        SCOPED_TRACE(a.name);
        setMode(u"f", a.before);
        (manager_.*a.set)(at(u"f"), a.rights);
        EXPECT_EQ(modeOf(u"f"), a.after);
    }
    // Through the attribute ids, a folder too.
    makeFolder(u"d");
    setMode(u"d", 0700);
    manager_.setAttribute(at(u"d"), AttributeId::kGroupRights, Number(5));
    EXPECT_EQ(manager_.getAttribute(at(u"d"), AttributeId::kGroupRights)->description()->units(),
              u"5");
    EXPECT_EQ(modeOf(u"d"), 0750u);
    EXPECT_EQ(FailureOf([&] { manager_.getOwnerRights(at(u"missing")); }),
              Failure(kItemNotFound, "Cannot read file security info"));
    EXPECT_EQ(FailureOf([&] { manager_.setGroupRights(at(u"missing"), 4); }),
              Failure(kItemNotFound, "Cannot set new group rights"));
}

TEST_F(AttributesTest, OwnerAndGroupAreTheAccountNames) {
    writeFile(u"f", "x");
    const passwd* user = ::getpwuid(::geteuid());
    const group* primary = ::getgrgid(::getegid());
    ASSERT_NE(user, nullptr);
    ASSERT_NE(primary, nullptr);
    const std::string userName = user->pw_name;
    const std::string groupName = primary->gr_name;
    EXPECT_EQ(Narrow(manager_.getOwnerName(at(u"f"))->units()), userName);
    EXPECT_EQ(Narrow(manager_.getGroupName(at(u"f"))->units()), groupName);

    // Giving an item to its own owner and group always works; an unknown name is refused and
    // changes nothing.
    manager_.setOwner(at(u"f"), String(FileNameBytesToText(userName)));
    manager_.setGroup(at(u"f"), String(FileNameBytesToText(groupName)));
    for (const std::u16string unknown : {u"", u"no-such-account-vf"}) {
        EXPECT_EQ(FailureOf([&] { manager_.setOwner(at(u"f"), String(unknown)); }),
                  Failure(kUnclassified, "No such account"));
        EXPECT_EQ(FailureOf([&] { manager_.setGroup(at(u"f"), String(unknown)); }),
                  Failure(kUnclassified, "No such account"));
    }
    EXPECT_EQ(Narrow(manager_.getOwnerName(at(u"f"))->units()), userName);
    EXPECT_EQ(FailureOf([&] {
                  manager_.setOwner(at(u"missing"), String(FileNameBytesToText(userName)));
              }),
              Failure(kItemNotFound, "Cannot change owner of item"));
}

TEST_F(AttributesTest, OwnerAndGroupChangeHandsAsRoot) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root may give a file away";
    }
    const passwd* nobody = ::getpwnam("nobody");
    ASSERT_NE(nobody, nullptr);
    writeFile(u"f", "x");
    manager_.setAttribute(at(u"f"), AttributeId::kOwner, String(u"nobody"));
    EXPECT_EQ(manager_.getAttribute(at(u"f"), AttributeId::kOwner)->description()->units(),
              u"nobody");
    // A number names the account it is the id of.
    manager_.setGroup(at(u"f"), String(FileNameBytesToText(std::to_string(nobody->pw_gid))));
    struct stat info {};
    ASSERT_EQ(::stat(Narrow(path(u"f")).c_str(), &info), 0);
    EXPECT_EQ(info.st_uid, nobody->pw_uid);
    EXPECT_EQ(info.st_gid, nobody->pw_gid);
}

TEST_F(AttributesTest, ModificationDatesAreLocalTimeOfTheirOwnDate) {
    const ZoneScope zone("America/New_York");
    constexpr int64_t kUnixEpoch = 62135596800;  // seconds from 0001-01-01 to 1970-01-01
    // Local wall-clock dates and the UTC second the file must keep: summer and winter offsets.
    const struct {
        const char* name;
        int64_t localSince1970;
        int64_t utc;
        int32_t microseconds;
    } cases[] = {{"summer 2021-07-01 12:00", 1625140800, 1625155200, 0},
                 {"winter 2021-01-15 08:30:05.25", 1610699405, 1610717405, 250000},
                 {"before 2007's rule 2006-04-01 12:00", 1143892800, 1143910800, 0}};
    writeFile(u"f", "x");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Date local(c.localSince1970 + kUnixEpoch, c.microseconds);
        manager_.setAttribute(at(u"f"), AttributeId::kModified, local);
        EXPECT_EQ(modifiedOf(u"f").tv_sec, c.utc);
        EXPECT_EQ(modifiedOf(u"f").tv_nsec, c.microseconds * 1000L);
        EXPECT_EQ(manager_.getAttribute(at(u"f"), AttributeId::kModified)->description()->units(),
                  local.description()->units());
    }
    // A missing file is created to take the date; a folder is refused.
    manager_.setAttribute(at(u"new"), AttributeId::kModified,
                          Date(cases[0].localSince1970 + kUnixEpoch, 0));
    EXPECT_EQ(readFile(u"new"), "");
    EXPECT_EQ(modifiedOf(u"new").tv_sec, cases[0].utc);
    makeFolder(u"d");
    EXPECT_EQ(FailureOf([&] {
                  manager_.setAttribute(at(u"d"), AttributeId::kModified, Date(kUnixEpoch, 0));
              }),
              Failure(-3200, "Cannot modify file modification date"));
    EXPECT_EQ(
        FailureOf([&] { manager_.setAttribute(at(u"f"), AttributeId::kModified, Number(1)); }),
        Failure(kBadParameter, "Cannot modify file modification date"));
}

TEST_F(AttributesTest, CreationDatesAreReadWhereKeptAndNeverSet) {
    writeFile(u"f", "x");
    const std::optional<Exception> read =
        Caught([&] { manager_.getAttribute(at(u"f"), AttributeId::kCreated); });
    if (read) {
        EXPECT_STREQ(read->what(), "Cannot get item attributes");
    } else {
        const auto created = manager_.getAttribute(at(u"f"), AttributeId::kCreated);
        EXPECT_NE(dynamic_cast<const Date*>(created.get()), nullptr);
    }
    const auto before = snapshot();
    for (const std::u16string item : {u"f", u"missing"}) {
        EXPECT_EQ(
            FailureOf([&] { manager_.setAttribute(at(item), AttributeId::kCreated, Date(0, 0)); }),
            Failure(kUnclassified, "Cannot modify file creation date"));
    }
    EXPECT_EQ(snapshot(), before);
}

TEST_F(AttributesTest, SizesAndFreeSpaceComeFromTheSystem) {
    writeFile(u"f", "12345");
    EXPECT_EQ(manager_.getAttribute(at(u"f"), AttributeId::kSize)->description()->units(), u"5");
    EXPECT_EQ(manager_.getAttribute(at(u"f"), AttributeId::kResourceSize)->description()->units(),
              u"0");
    struct statvfs volume {};
    ASSERT_EQ(::statvfs(Narrow(root_).c_str(), &volume), 0);
    const uint64_t expected = static_cast<uint64_t>(volume.f_bavail) * volume.f_frsize;
    const uint64_t free = manager_.getFreeSpace(at(u"f"));
    // Other programs write meanwhile: the same order of size, not the same byte.
    EXPECT_LE(free, expected + expected / 10 + (1u << 20));
    EXPECT_GE(free + free / 10 + (1u << 20), expected);
    EXPECT_EQ(FailureOf([&] { manager_.getFreeSpace(at(u"missing")); }),
              Failure(kItemNotFound, "Cannot get free disk space"));
    for (const uint32_t id : {11u, 99u}) {
        EXPECT_EQ(FailureOf([&] { manager_.getAttribute(at(u"f"), id); }),
                  Failure(kBadParameter, "Unknown file attribute requested"));
    }
}

}  // namespace
}  // namespace test
}  // namespace slib
