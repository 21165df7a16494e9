// The file manager's attribute primitives on real files under Wine: dates, sizes, free space,
// owner and group names, rights. Where Wine only pretends (creation times, DACL and owner
// changes), each test first shows that at run time and then checks what we hand the system.

#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

#include "file_manager/scratch_folder.h"
#include "foundation/access_rights.h"
#include "foundation/error_codes.h"
#include "foundation/number.h"
#include "foundation/windows/item_security.h"
#include "foundation/windows/local_file_time.h"
#include "foundation/windows/unique_handles.h"

namespace slib {
namespace test {
namespace {

using namespace security_detail;

uint64_t Ticks(const FILETIME& time) {
    return (static_cast<uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

// Creation and last-write time straight from the system, UTC.
std::pair<uint64_t, uint64_t> FileTimes(const std::u16string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    EXPECT_TRUE(GetFileAttributesExW(Wide(path), GetFileExInfoStandard, &data));
    return {Ticks(data.ftCreationTime), Ticks(data.ftLastWriteTime)};
}

std::string Sddl(const std::u16string& path) {
    UniqueSecurityDescriptor descriptor;
    std::u16string buffer = path;
    const SECURITY_INFORMATION parts =
        OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
    if (GetNamedSecurityInfoW(reinterpret_cast<LPWSTR>(&buffer[0]), SE_FILE_OBJECT, parts, nullptr,
                              nullptr, nullptr, nullptr, descriptor.put()) != 0) {
        return "unreadable";
    }
    LPWSTR text = nullptr;
    ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor.get(), SDDL_REVISION_1, parts,
                                                         &text, nullptr);
    const UniqueLocalMemory owned(text);
    return text ? Narrow(FromWide(text)) : "";
}

std::string LastErrorOf(const std::function<void()>& action) {
    const std::optional<Exception> exception = Caught(action);
    if (!exception) {
        return "no failure";
    }
    const auto* error = dynamic_cast<const WindowsLastError*>(exception->error().get());
    return std::string(exception->what()) + " / " +
           (error ? std::to_string(error->value()) : "not a system error");
}

Date LocalDate(int64_t secondsSinceYear1, int32_t micros) {
    return Date(secondsSinceYear1, micros);
}

// 2021-07-01 12:00:00 and 2021-01-01 12:00:00 as seconds since 0001-01-01.
constexpr int64_t kJulyNoon = 63760737600;
constexpr int64_t kJanuaryNoon = 63745099200;

class AttributeTest : public ScratchTest {
  protected:
    std::shared_ptr<Object> get(const std::u16string& relative, uint32_t id) {
        return manager_.getAttribute(at(relative), id);
    }
    std::string text(const std::u16string& relative, uint32_t id) {
        return Narrow(get(relative, id)->description()->units());
    }
};

TEST_F(AttributeTest, ModificationDateRoundTripsToTheMicrosecondAndLandsOnDisk) {
    writeFile(u"a.txt", "x");
    for (const Date& date : {LocalDate(kJulyNoon, 250000), LocalDate(kJanuaryNoon, 1),
                             LocalDate(kJulyNoon + 86399, 999999)}) {
        manager_.setAttribute(at(u"a.txt"), AttributeId::kModified, date);
        EXPECT_EQ(text(u"a.txt", AttributeId::kModified), Narrow(date.description()->units()));
        const std::optional<FILETIME> expected = LocalDateToFileTime(date);
        ASSERT_TRUE(expected);
        EXPECT_EQ(FileTimes(path(u"a.txt")).second, Ticks(*expected));
        EXPECT_EQ(Ticks(*expected) % Date::kFileTimeTicksPerSecond,
                  static_cast<uint64_t>(date.microseconds()) * 10);
    }
    EXPECT_EQ(readFile(u"a.txt"), "x");
}

TEST_F(AttributeTest, ADateOnAMissingPathCreatesTheEmptyFileWithThatDate) {
    const Date date = LocalDate(kJanuaryNoon, 0);
    manager_.setAttribute(at(u"new.txt"), AttributeId::kModified, date);
    EXPECT_EQ(readFile(u"new.txt"), "");
    EXPECT_EQ(text(u"new.txt", AttributeId::kModified), "2021-01-01 12:00:00");

    manager_.setAttribute(at(u"born.txt"), AttributeId::kCreated, date);
    EXPECT_EQ(readFile(u"born.txt"), "");
}

TEST_F(AttributeTest, CreationDateIsWrittenWhereTheSystemKeepsIt) {
    writeFile(u"a.txt", "x");
    const Date date = LocalDate(kJanuaryNoon, 0);
    manager_.setAttribute(at(u"a.txt"), AttributeId::kCreated, date);
    const auto [creation, lastWrite] = FileTimes(path(u"a.txt"));
    if (creation != Ticks(*LocalDateToFileTime(date))) {
        // Wine keeps no creation time: it reports the last write instead. Our side still ran:
        // the last-write time is not the one we asked for as creation date.
        EXPECT_EQ(creation, lastWrite) << "the system stores creation times, yet not ours";
        EXPECT_NE(lastWrite, Ticks(*LocalDateToFileTime(date)));
        return;
    }
    EXPECT_EQ(text(u"a.txt", AttributeId::kCreated), "2021-01-01 12:00:00");
}

TEST_F(AttributeTest, DatesAreRefusedOnFoldersAndBeforeFileTimes) {
    makeFolder(u"sub");
    const Date date = LocalDate(kJanuaryNoon, 0);
    EXPECT_EQ(LastErrorOf([&] {
                  manager_.setAttribute(at(u"sub"), AttributeId::kModified, date);
              }).rfind("Cannot modify file modification date / ", 0),
              0u);
    EXPECT_EQ(LastErrorOf([&] {
                  manager_.setAttribute(at(u"sub"), AttributeId::kCreated, date);
              }).rfind("Cannot modify file creation date / ", 0),
              0u);
    // A year-1500 date has no file time: refused before anything is created.
    EXPECT_EQ(FailureOf([&] {
                  manager_.setAttribute(at(u"old.txt"), AttributeId::kModified,
                                        LocalDate(47304000000, 0));
              }),
              Failure(kBadParameter, "Cannot modify file modification date"));
    EXPECT_FALSE(exists(u"old.txt"));
    EXPECT_EQ(FailureOf([&] { get(u"missing", AttributeId::kModified); }),
              Failure(kItemNotFound, "Cannot get item attributes"));
}

TEST_F(AttributeTest, SizesAreSixtyFourBitAndRecursive) {
    makeFolder(u"tree");
    writeFile(u"tree\\one.txt", "1");
    {
        const UniqueFileHandle big(CreateFileW(Wide(path(u"tree\\big.bin")), GENERIC_WRITE, 0,
                                               nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                                               nullptr));
        ASSERT_TRUE(big.valid());
        LARGE_INTEGER end;
        end.QuadPart = 5000000000;
        ASSERT_TRUE(SetFilePointerEx(big.get(), end, nullptr, FILE_BEGIN));
        ASSERT_TRUE(SetEndOfFile(big.get()));
    }
    EXPECT_EQ(text(u"tree\\big.bin", AttributeId::kSize), "5000000000");
    EXPECT_EQ(text(u"tree", AttributeId::kSize), "5000000001");
    EXPECT_EQ(text(u"tree", AttributeId::kDataSize), "5000000001");
    EXPECT_EQ(text(u"tree", AttributeId::kResourceSize), "0");
    EXPECT_EQ(text(u"missing", AttributeId::kResourceSize), "0");
    EXPECT_EQ(FailureOf([&] { get(u"missing", AttributeId::kSize); }),
              Failure(kItemNotFound, "Cannot get item size"));
}

TEST_F(AttributeTest, UnknownAndReadOnlyIdsAreRefused) {
    writeFile(u"a.txt", "x");
    const Number five(5);
    EXPECT_EQ(FailureOf([&] { get(u"a.txt", 11); }),
              Failure(kBadParameter, "Unknown file attribute requested"));
    for (uint32_t id : {2u, 3u, 4u, 5u, 11u}) {
        EXPECT_EQ(FailureOf([&] { manager_.setAttribute(at(u"a.txt"), id, five); }),
                  Failure(kBadParameter, "Unknown file attribute requested"))
            << id;
    }
    EXPECT_EQ(readFile(u"a.txt"), "x");
}

TEST_F(AttributeTest, FreeSpaceIsTheSameForAFileAndItsFolder) {
    writeFile(u"a.txt", "x");
    ULARGE_INTEGER available;
    ASSERT_TRUE(GetDiskFreeSpaceExW(Wide(root_), &available, nullptr, nullptr));
    for (const std::u16string& item : {std::u16string(), std::u16string(u"a.txt")}) {
        const uint64_t space = manager_.getFreeSpace(at(item));
        // Other programs write meanwhile: the same volume, give or take 256 MB.
        EXPECT_LT(
            space > available.QuadPart ? space - available.QuadPart : available.QuadPart - space,
            uint64_t{1} << 28)
            << Narrow(item);
    }
    EXPECT_EQ(FailureOf([&] { manager_.getFreeSpace(at(u"missing\\deeper")); }),
              Failure(kItemNotFound, "Cannot get free disk space"));
}

TEST_F(AttributeTest, OwnerAndGroupAreBareAccountNames) {
    writeFile(u"a.txt", "x");
    makeFolder(u"sub");
    wchar_t user[256];
    DWORD length = 256;
    ASSERT_TRUE(GetUserNameW(user, &length));
    for (const std::u16string item : {u"a.txt", u"sub"}) {
        EXPECT_EQ(text(item, AttributeId::kOwner), Narrow(FromWide(user)));
        const std::string group = text(item, AttributeId::kGroup);
        EXPECT_FALSE(group.empty());
        EXPECT_EQ(group.find('\\'), std::string::npos) << group;
    }
    EXPECT_EQ(FailureOf([&] { get(u"missing", AttributeId::kOwner); }),
              Failure(kItemNotFound, "Cannot read file security info"));
    EXPECT_EQ(FailureOf([&] { get(u"missing", AttributeId::kEveryoneRights); }),
              Failure(kItemNotFound, "Cannot read file security info"));
}

// The rights each trustee holds by the item's own DACL, evaluated independently of the manager.
uint32_t RightsByDacl(const std::u16string& path, Whose whose) {
    const ItemSecurity security = ReadSecurity(
        String(path),
        OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION,
        "test");
    std::vector<SidBytes> sids{EveryoneSid()};
    PSID own = whose == Whose::kOwner ? security.owner : security.group;
    if (whose != Whose::kEveryone) {
        const auto* bytes = static_cast<const uint8_t*>(own);
        sids.emplace_back(bytes, bytes + GetLengthSid(own));
    }
    return RightsFromAccessMask(EffectiveAccessMask(EntriesOf(security.dacl), sids));
}

TEST_F(AttributeTest, RightsAreThoseTheDaclGrantsEachTrustee) {
    writeFile(u"a.txt", "x");
    const ItemSecurity security = ReadSecurity(at(u"a.txt"), DACL_SECURITY_INFORMATION, "test");
    TRUSTEE_W everyone = Trustee(Whose::kEveryone, security);
    ACCESS_MASK mask = 0;
    const DWORD answer = GetEffectiveRightsFromAclW(security.dacl, &everyone, &mask);
    if (answer == ERROR_SUCCESS) {
        EXPECT_EQ(manager_.getEveryoneRights(at(u"a.txt")), RightsFromAccessMask(mask));
    } else {
        // Wine: not implemented, so ours is the evaluation that counts.
        EXPECT_EQ(answer, static_cast<DWORD>(ERROR_INVALID_FUNCTION));
    }
    EXPECT_EQ(manager_.getOwnerRights(at(u"a.txt")), RightsByDacl(path(u"a.txt"), Whose::kOwner));
    EXPECT_EQ(manager_.getGroupRights(at(u"a.txt")), RightsByDacl(path(u"a.txt"), Whose::kGroup));
    EXPECT_EQ(manager_.getEveryoneRights(at(u"a.txt")),
              RightsByDacl(path(u"a.txt"), Whose::kEveryone));
    // The owner of a file it made may at least read its descriptor and take ownership.
    EXPECT_EQ(manager_.getOwnerRights(at(u"a.txt")) & 6u, 6u);
    EXPECT_EQ(Narrow(get(u"a.txt", AttributeId::kOwnerRights)->description()->units()),
              std::to_string(manager_.getOwnerRights(at(u"a.txt"))));
}

TEST_F(AttributeTest, SettingRightsOnlyEverAddsThem) {
    writeFile(u"a.txt", "x");
    const std::string before = Sddl(path(u"a.txt"));
    const uint32_t everyoneBefore = manager_.getEveryoneRights(at(u"a.txt"));
    manager_.setEveryoneRights(at(u"a.txt"), 0);
    EXPECT_EQ(manager_.getEveryoneRights(at(u"a.txt")), everyoneBefore);
    manager_.setEveryoneRights(at(u"a.txt"), 4);
    EXPECT_GE(manager_.getEveryoneRights(at(u"a.txt")), 4u);

    // The DACL each set would write: every earlier grant kept, the asked-for bits added.
    const ItemSecurity security = ReadSecurity(
        at(u"a.txt"),
        OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION,
        "test");
    const struct {
        Whose whose;
        uint32_t rights;
    } cases[] = {{Whose::kEveryone, 2},
                 {Whose::kEveryone, 1},
                 {Whose::kGroup, 3},
                 {Whose::kOwner, 1},
                 {Whose::kOwner, 0}};
    for (const auto& c : cases) {
        const uint32_t now = RightsByDacl(path(u"a.txt"), c.whose);
        const UniqueAcl merged = DaclAddingRights(c.whose, security, c.rights, "test");
        ItemSecurity after{UniqueSecurityDescriptor(), security.owner, security.group,
                           merged.get()};
        EXPECT_EQ(RightsFromAccessMask(EffectiveMask(c.whose, after, "test")), now | c.rights)
            << static_cast<int>(c.whose) << " " << c.rights;
        // Nobody else gains or loses anything.
        if (c.whose != Whose::kEveryone) {
            EXPECT_EQ(RightsFromAccessMask(EffectiveMask(Whose::kEveryone, after, "test")),
                      RightsByDacl(path(u"a.txt"), Whose::kEveryone));
        }
    }

    // Whether the system keeps a new DACL decides what reading back can show.
    manager_.setEveryoneRights(at(u"a.txt"), 2);
    if (Sddl(path(u"a.txt")) == before) {
        // Wine on this file system answers success and keeps the synthesised DACL.
        EXPECT_EQ(manager_.getEveryoneRights(at(u"a.txt")), everyoneBefore);
    } else {
        EXPECT_EQ(manager_.getEveryoneRights(at(u"a.txt")) & 2u, 2u);
    }
    EXPECT_EQ(readFile(u"a.txt"), "x");
}

TEST_F(AttributeTest, AccountChangesStopAtTheSizeQueryOfTheLookup) {
    writeFile(u"a.txt", "x");
    wchar_t user[256];
    DWORD length = 256;
    ASSERT_TRUE(GetUserNameW(user, &length));
    // The size query of an existing account: no buffers, so the system refuses it.
    DWORD sidSize = 0;
    DWORD domainSize = 0;
    SID_NAME_USE use;
    ASSERT_FALSE(LookupAccountNameW(nullptr, user, nullptr, &sidSize, nullptr, &domainSize, &use));
    ASSERT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    ASSERT_GT(sidSize, 0u) << "the account exists";

    const std::string owner = Sddl(path(u"a.txt"));
    const String existing(FromWide(user));
    const String unknown(u"no-such-account-here");
    const std::string refused = "No such account / " + std::to_string(ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(LastErrorOf([&] { manager_.setOwner(at(u"a.txt"), existing); }), refused);
    EXPECT_EQ(LastErrorOf([&] { manager_.setGroup(at(u"a.txt"), existing); }), refused);
    EXPECT_EQ(
        LastErrorOf([&] { manager_.setAttribute(at(u"a.txt"), AttributeId::kOwner, existing); }),
        refused);
    EXPECT_EQ(LastErrorOf([&] {
                  manager_.setOwner(at(u"a.txt"), unknown);
              }).rfind("No such account / ", 0),
              0u);
    EXPECT_EQ(Sddl(path(u"a.txt")), owner);
}

}  // namespace
}  // namespace test
}  // namespace slib
