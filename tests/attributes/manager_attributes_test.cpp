// The file manager's attribute primitives on real files under Wine. Where Wine only pretends
// (creation times, DACL and owner changes), a test first shows that at run time and then checks
// our side: what we hand the system, and our refusals.

#include <windows.h>

#include <aclapi.h>

#include "file_manager/scratch_folder.h"
#include "foundation/error_codes.h"
#include "foundation/number.h"
#include "foundation/windows/item_security.h"
#include "foundation/windows/local_file_time.h"

namespace slib {
namespace test {
namespace {

using namespace security_detail;

uint64_t Ticks(const FILETIME& time) {
    return (static_cast<uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

std::pair<uint64_t, uint64_t> CreatedAndWritten(const std::u16string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    EXPECT_TRUE(GetFileAttributesExW(Wide(path), GetFileExInfoStandard, &data));
    return {Ticks(data.ftCreationTime), Ticks(data.ftLastWriteTime)};
}

// "<message> / <system value>" of a failure carrying a system error.
std::string SystemFailureOf(const std::function<void()>& action) {
    const std::optional<Exception> exception = Caught(action);
    const auto* error =
        exception ? dynamic_cast<const WindowsLastError*>(exception->error().get()) : nullptr;
    return error ? std::string(exception->what()) + " / " + std::to_string(error->value())
                 : "no system failure";
}

constexpr int64_t kJulyNoon = 63760737600;  // 2021-07-01 12:00:00 in Date seconds

using AttributeTest = ScratchTest;

TEST_F(AttributeTest, DatesKeepMicrosecondsAndCreationDatesGoWhereTheSystemKeepsThem) {
    writeFile(u"a.txt", "x");
    const Date date(kJulyNoon, 1);
    const uint64_t onDisk = Ticks(*LocalDateToFileTime(date));
    manager_.setAttribute(at(u"a.txt"), AttributeId::kModified, date);
    EXPECT_EQ(CreatedAndWritten(path(u"a.txt")).second, onDisk);
    EXPECT_EQ(manager_.getAttribute(at(u"a.txt"), AttributeId::kModified)->description()->units(),
              u"2021-07-01 12:00:00.000001");

    // Wine keeps no creation time (it reports the last write): prove it, then see that the set
    // reached the system without touching the last write.
    const Date dayBefore(kJulyNoon - 86400, 0);
    manager_.setAttribute(at(u"a.txt"), AttributeId::kCreated, dayBefore);
    const auto [created, written] = CreatedAndWritten(path(u"a.txt"));
    if (created != Ticks(*LocalDateToFileTime(dayBefore))) {
        EXPECT_EQ(created, written);
        EXPECT_EQ(written, onDisk);
    }
    EXPECT_EQ(SystemFailureOf([&] {
                  manager_.setAttribute(at(u""), AttributeId::kCreated, dayBefore);
              }).rfind("Cannot modify file creation date / ", 0),
              0u);
}

TEST_F(AttributeTest, UnknownAndReadOnlyIdsAreRefused) {
    writeFile(u"a.txt", "x");
    EXPECT_EQ(FailureOf([&] { manager_.getAttribute(at(u"a.txt"), 11); }),
              Failure(kBadParameter, "Unknown file attribute requested"));
    for (const uint32_t id : {2u, 3u, 4u, 5u, 11u}) {
        EXPECT_EQ(FailureOf([&] { manager_.setAttribute(at(u"a.txt"), id, Number(5)); }),
                  Failure(kBadParameter, "Unknown file attribute requested"))
            << id;
    }
    EXPECT_EQ(
        manager_.getAttribute(at(u"missing"), AttributeId::kResourceSize)->description()->units(),
        u"0");
}

ItemSecurity Everything(const std::u16string& path) {
    return ReadSecurity(
        String(path),
        OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION, "t");
}

TEST_F(AttributeTest, RightsComeFromTheDaclAndSettingOnlyAddsThem) {
    writeFile(u"a.txt", "x");
    const ItemSecurity security = Everything(path(u"a.txt"));
    // Wine does not implement the system's own evaluation: ours takes over.
    TRUSTEE_W everyone = Trustee(Whose::kEveryone, security);
    ACCESS_MASK systemMask = 0;
    if (GetEffectiveRightsFromAclW(security.dacl, &everyone, &systemMask) == ERROR_SUCCESS) {
        EXPECT_EQ(manager_.getEveryoneRights(at(u"a.txt")), RightsFromAccessMask(systemMask));
    }
    const struct {
        Whose whose;
        uint32_t (FileManager::*get)(const String&) const;
    } trustees[] = {{Whose::kOwner, &FileManager::getOwnerRights},
                    {Whose::kGroup, &FileManager::getGroupRights},
                    {Whose::kEveryone, &FileManager::getEveryoneRights}};
    for (const auto& trustee : trustees) {
        const uint32_t now = (manager_.*trustee.get)(at(u"a.txt"));
        EXPECT_EQ(now, RightsFromAccessMask(EffectiveMask(trustee.whose, security, "t")));
        // The DACL a set writes: the trustee gains the bits asked for, everyone else nothing.
        for (const uint32_t rights : {0u, 1u, 2u, 4u}) {
            const UniqueAcl merged = DaclAddingRights(trustee.whose, security, rights, "t");
            const ItemSecurity after{UniqueSecurityDescriptor(), security.owner, security.group,
                                     merged.get()};
            EXPECT_EQ(RightsFromAccessMask(EffectiveMask(trustee.whose, after, "t")), now | rights);
            if (trustee.whose != Whose::kEveryone) {
                EXPECT_EQ(EffectiveMask(Whose::kEveryone, after, "t"),
                          EffectiveMask(Whose::kEveryone, security, "t"));
            }
        }
    }
    EXPECT_EQ(manager_.getOwnerRights(at(u"a.txt")) & 6u, 6u) << "full control of its own file";

    // Wine answers success to a new DACL on this file system and keeps the old one.
    const uint32_t before = manager_.getEveryoneRights(at(u"a.txt"));
    manager_.setEveryoneRights(at(u"a.txt"), 0);
    EXPECT_EQ(manager_.getEveryoneRights(at(u"a.txt")), before);
    manager_.setEveryoneRights(at(u"a.txt"), 4);
    EXPECT_GE(manager_.getEveryoneRights(at(u"a.txt")), 4u);
    EXPECT_EQ(FailureOf([&] { manager_.getGroupRights(at(u"missing")); }),
              Failure(kItemNotFound, "Cannot read file security info"));
}

TEST_F(AttributeTest, AccountChangesStopAtTheSizeQueryOfTheLookup) {
    writeFile(u"a.txt", "x");
    wchar_t user[256];
    DWORD length = 256;
    ASSERT_TRUE(GetUserNameW(user, &length));
    // The size query of an existing account: without buffers the system refuses it.
    DWORD sidSize = 0;
    DWORD domainSize = 0;
    SID_NAME_USE use;
    ASSERT_FALSE(LookupAccountNameW(nullptr, user, nullptr, &sidSize, nullptr, &domainSize, &use));
    ASSERT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    ASSERT_GT(sidSize, 0u) << "the account exists";

    const ItemSecurity before = Everything(path(u"a.txt"));
    const String existing(FromWide(user));
    const std::string refused = "No such account / " + std::to_string(ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(SystemFailureOf([&] { manager_.setOwner(at(u"a.txt"), existing); }), refused);
    EXPECT_EQ(SystemFailureOf([&] { manager_.setGroup(at(u"a.txt"), existing); }), refused);
    EXPECT_TRUE(EqualSid(Everything(path(u"a.txt")).owner, before.owner));
}

}  // namespace
}  // namespace test
}  // namespace slib
