// The file manager's attribute primitives on real files under Wine. Where Wine only pretends
// (creation times, DACL and owner changes), a test first shows that at run time and then checks
// our side: what we hand the system, and our refusals.

#include <windows.h>

#include <aclapi.h>

#include <sddl.h>

#include <algorithm>

#include "attributes/unix_mode.h"
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

    // Where the volume keeps creation times the set keeps this one; Wine keeps none (it reports
    // the last write), so there the date is refused as one the file cannot keep.
    const Date dayBefore(kJulyNoon - 86400, 0);
    const std::string failure =
        FailureOf([&] { manager_.setAttribute(at(u"a.txt"), AttributeId::kCreated, dayBefore); });
    const auto [created, written] = CreatedAndWritten(path(u"a.txt"));
    if (failure.empty()) {
        EXPECT_EQ(created, Ticks(*LocalDateToFileTime(dayBefore)));
    } else {
        EXPECT_EQ(failure, Failure(kBadParameter, "The file cannot keep this date"));
        EXPECT_EQ(created, written) << "the creation time shown is the last write";
    }
    EXPECT_EQ(written, onDisk);
    EXPECT_EQ(SystemFailureOf([&] {
                  manager_.setAttribute(at(u""), AttributeId::kModified, dayBefore);
              }).rfind("Cannot modify file modification date / ", 0),
              0u);
}

TEST_F(AttributeTest, DatesTheFileCannotKeepAreRefusedAndChangeNothing) {
    writeFile(u"a.txt", "x");
    const Date july(kJulyNoon, 0);
    manager_.setAttribute(at(u"a.txt"), AttributeId::kModified, july);
    const uint64_t written = CreatedAndWritten(path(u"a.txt")).second;
    const std::string unstorable = Failure(kBadParameter, "The file cannot keep this date");
    // Beyond the year 30827 no system call takes the time: refused before anything is opened.
    const Date year30828(kJulyNoon + int64_t{28807} * 365 * 86400, 0);
    EXPECT_EQ(
        FailureOf([&] { manager_.setAttribute(at(u"a.txt"), AttributeId::kModified, year30828); }),
        unstorable);
    EXPECT_EQ(FailureOf([&] {
                  manager_.setAttribute(at(u"new.txt"), AttributeId::kModified, year30828);
              }),
              unstorable);
    EXPECT_FALSE(exists(u"new.txt"));
    // The year 4000: NTFS keeps it; a volume that cannot (ext4 under Wine stops at 2446) has it
    // refused, the old time restored and a file made for it removed.
    const Date year4000(kJulyNoon + int64_t{1979} * 365 * 86400 + 480 * 86400, 0);
    ASSERT_EQ(year4000.civil().year, 4000);
    const std::string failure =
        FailureOf([&] { manager_.setAttribute(at(u"a.txt"), AttributeId::kModified, year4000); });
    if (failure.empty()) {
        EXPECT_EQ(CreatedAndWritten(path(u"a.txt")).second, Ticks(*LocalDateToFileTime(year4000)));
    } else {
        EXPECT_EQ(failure, unstorable);
        EXPECT_EQ(CreatedAndWritten(path(u"a.txt")).second, written);
        EXPECT_EQ(FailureOf([&] {
                      manager_.setAttribute(at(u"new.txt"), AttributeId::kModified, year4000);
                  }),
                  unstorable);
        EXPECT_FALSE(exists(u"new.txt"));
    }
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

// Every entry of a DACL as "type flags mask sid", in order: what a comparison of two ACLs needs.
std::vector<std::string> EntryTexts(PACL dacl) {
    std::vector<std::string> texts;
    ACL_SIZE_INFORMATION size{};
    if (dacl == nullptr || !GetAclInformation(dacl, &size, sizeof size, AclSizeInformation)) {
        return texts;
    }
    for (DWORD index = 0; index < size.AceCount; ++index) {
        void* ace = nullptr;
        if (!GetAce(dacl, index, &ace)) {
            continue;
        }
        const auto* header = static_cast<const ACE_HEADER*>(ace);
        const auto* allowed = static_cast<const ACCESS_ALLOWED_ACE*>(ace);
        wchar_t* sid = nullptr;
        ConvertSidToStringSidW(const_cast<DWORD*>(&allowed->SidStart), &sid);
        const UniqueLocalMemory owned(sid);
        char text[64];
        snprintf(text, sizeof text, "%u %02x %08lx ", header->AceType, header->AceFlags,
                 static_cast<unsigned long>(allowed->Mask));
        texts.push_back(text + (sid ? Narrow(FromWide(sid)) : std::string("?")));
    }
    return texts;
}

std::string SidText(PSID sid) {
    wchar_t* text = nullptr;
    ConvertSidToStringSidW(sid, &text);
    const UniqueLocalMemory owned(text);
    return text ? Narrow(FromWide(text)) : "?";
}

struct RightsOf {
    Whose whose;
    uint32_t (FileManager::*get)(const String&) const;
    void (FileManager::*set)(const String&, uint32_t) const;
};
const RightsOf kOwner{Whose::kOwner, &FileManager::getOwnerRights, &FileManager::setOwnerRights};
const RightsOf kGroup{Whose::kGroup, &FileManager::getGroupRights, &FileManager::setGroupRights};
const RightsOf kEveryone{Whose::kEveryone, &FileManager::getEveryoneRights,
                         &FileManager::setEveryoneRights};

TEST_F(AttributeTest, RightsAreEvaluatedForTheTrusteesSidsWhateverTheSystemAnswers) {
    writeFile(u"a.txt", "x");
    const ItemSecurity security = Everything(path(u"a.txt"));
    // Everyone by its well-known SID, never by a (translated) name.
    const TRUSTEE_W everyone = Trustee(Whose::kEveryone, security);
    EXPECT_EQ(everyone.TrusteeForm, TRUSTEE_IS_SID);
    EXPECT_EQ(SidText(reinterpret_cast<PSID>(everyone.ptstrName)), "S-1-1-0");
    for (const RightsOf& trustee : {kOwner, kGroup, kEveryone}) {
        TRUSTEE_W system = Trustee(trustee.whose, security);
        ACCESS_MASK systemMask = 0;
        const uint32_t rights = (manager_.*trustee.get)(at(u"a.txt"));
        // Where the system answers, ours is its answer; where it cannot (Wine), our own walk.
        if (GetEffectiveRightsFromAclW(security.dacl, &system, &systemMask) == ERROR_SUCCESS) {
            EXPECT_EQ(rights, RightsFromAccessMask(systemMask));
        }
        EXPECT_EQ(rights, RightsFromAccessMask(EffectiveMask(trustee.whose, security)));
    }
    EXPECT_EQ(manager_.getOwnerRights(at(u"a.txt")) & 6u, 6u) << "full control of its own file";

    // A DACL the system refuses to evaluate (an entry claiming more bytes than the ACL holds)
    // still gets an answer: ours.
    std::vector<BYTE> broken(sizeof(ACL) + sizeof(ACCESS_ALLOWED_ACE) + SECURITY_MAX_SID_SIZE);
    auto* acl = reinterpret_cast<PACL>(broken.data());
    ASSERT_TRUE(InitializeAcl(acl, static_cast<DWORD>(broken.size()), ACL_REVISION));
    ASSERT_TRUE(AddAccessAllowedAce(acl, ACL_REVISION, READ_CONTROL, everyone.ptstrName));
    const ItemSecurity invalid{UniqueSecurityDescriptor(), security.owner, security.group, acl};
    acl->AceCount = 2;
    EXPECT_EQ(RightsFromAccessMask(EffectiveMask(Whose::kEveryone, invalid)), 4u);
    EXPECT_EQ(FailureOf([&] { manager_.getGroupRights(at(u"missing")); }),
              Failure(kItemNotFound, "Cannot read file security info"));
}

struct RightsCase {
    const char16_t* item;
    bool folder;
    const char* unixMode;  // the host's mode first set (under Wine)
    RightsOf trustee;
    uint32_t rights;
};

class RightsTest : public AttributeTest {
  protected:
    // Makes the item, gives it its host mode; false when there is no host to ask (Windows).
    bool prepare(const RightsCase& c) {
        if (c.folder) {
            makeFolder(c.item);
        } else {
            writeFile(c.item, "x");
        }
        return SetHostUnixMode(path(c.item), c.unixMode);
    }
};

TEST_F(RightsTest, RightsAlreadyHeldOrNoneWriteNothing) {
    const RightsCase cases[] = {
        {u"none.txt", false, "600", kEveryone, 0},
        {u"none640.txt", false, "640", kGroup, 0},
        {u"held.txt", false, "600", kOwner, RightsBit::kRead},
        {u"held640.txt", false, "640", kOwner, RightsBit::kRead | RightsBit::kWrite},
        {u"folder", true, "750", kOwner, RightsBit::kRead | RightsBit::kWrite},
    };
    for (const RightsCase& c : cases) {
        SCOPED_TRACE(Narrow(c.item));
        const bool onHost = prepare(c);
        const ItemSecurity before = Everything(path(c.item));
        const std::vector<std::string> entries = EntryTexts(before.dacl);
        ASSERT_EQ(AccessMaskAddingRights(EffectiveMask(c.trustee.whose, before), c.rights),
                  EffectiveMask(c.trustee.whose, before))
            << "held already";
        EXPECT_TRUE(DaclAddingRights(c.trustee.whose, before, c.rights, "t").empty());
        (manager_.*c.trustee.set)(at(c.item), c.rights);
        // Nothing written: the ACL and the host's mode stay exactly as they were.
        EXPECT_EQ(EntryTexts(Everything(path(c.item)).dacl), entries);
        if (onHost) {
            EXPECT_EQ(HostUnixMode(path(c.item)), std::optional<std::string>(c.unixMode));
        }
    }
}

TEST_F(RightsTest, ANewRightIsOneGrantOnTopOfTheOldDacl) {
    const RightsCase cases[] = {
        {u"group.txt", false, "640", kGroup, RightsBit::kWrite},
        {u"everyone.txt", false, "640", kEveryone, RightsBit::kRead | RightsBit::kWrite},
        {u"execute.txt", false, "600", kOwner, RightsBit::kExecute},
        {u"folder", true, "750", kEveryone, RightsBit::kExecute},
    };
    std::string notKept;
    for (const RightsCase& c : cases) {
        SCOPED_TRACE(Narrow(c.item));
        prepare(c);
        const ItemSecurity before = Everything(path(c.item));
        const std::vector<std::string> entriesBefore = EntryTexts(before.dacl);
        const ACCESS_MASK held = EffectiveMask(c.trustee.whose, before);
        const ACCESS_MASK missing = AccessMaskAddingRights(held, c.rights) & ~held;
        ASSERT_NE(missing, 0u);

        // The DACL the set writes: every old entry as it was (inherited ones still inherited),
        // plus the missing rights, and only those, in the trustee's own plain grant.
        std::vector<BYTE> dacl = DaclAddingRights(c.trustee.whose, before, c.rights, "t");
        ASSERT_FALSE(dacl.empty());
        auto* newDacl = reinterpret_cast<PACL>(dacl.data());
        ASSERT_TRUE(IsValidAcl(newDacl));
        const std::string sid = SidText(c.trustee.whose == Whose::kOwner ? before.owner
                                        : c.trustee.whose == Whose::kGroup
                                            ? before.group
                                            : Trustee(Whose::kEveryone, before).ptstrName);
        // Take the missing rights away again and the old DACL is left.
        std::vector<std::string> withoutGrant;
        int grants = 0;
        for (const std::string& entry : EntryTexts(newDacl)) {
            unsigned type = 0;
            unsigned flags = 0;
            unsigned long mask = 0;
            char entrySid[200] = {};
            sscanf(entry.c_str(), "%u %x %lx %199s", &type, &flags, &mask, entrySid);
            if (type == 0 && flags == 0 && entrySid == sid && (mask & missing) == missing &&
                grants++ == 0) {
                if (mask != missing) {
                    char text[64];
                    snprintf(text, sizeof text, "0 00 %08lx ", mask & ~missing);
                    withoutGrant.push_back(text + sid);
                }
                continue;
            }
            withoutGrant.push_back(entry);
        }
        EXPECT_EQ(grants, 1) << "the trustee's rights are granted in one entry";
        EXPECT_EQ(withoutGrant, entriesBefore);
        const ItemSecurity computed{UniqueSecurityDescriptor(), before.owner, before.group,
                                    newDacl};
        EXPECT_EQ(EffectiveMask(c.trustee.whose, computed), held | missing);

        (manager_.*c.trustee.set)(at(c.item), c.rights);
        const std::vector<std::string> written = EntryTexts(Everything(path(c.item)).dacl);
        if (written != EntryTexts(newDacl)) {
            notKept += " " + Narrow(c.item) + " (mode " + c.unixMode + " -> " +
                       HostUnixMode(path(c.item)).value_or("?") + ")";
        }
    }
    // Windows keeps the DACL written; Wine keeps none of its own on this file system: it
    // derives the Unix mode from the DACL and answers a DACL derived from that mode.
    if (!notKept.empty()) {
        GTEST_SKIP() << "the system did not keep the DACL written for" << notKept;
    }
}

// What a rewrite of an item's security changes: its change time and its DACL.
std::string SecurityStamp(const std::u16string& path) {
    const UniqueFileHandle item(CreateFileW(
        Wide(path), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
        nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    FILE_BASIC_INFO basic{};
    if (!item.valid() ||
        !GetFileInformationByHandleEx(item.get(), FileBasicInfo, &basic, sizeof basic)) {
        return "unreadable";
    }
    std::string stamp = std::to_string(basic.ChangeTime.QuadPart);
    for (const std::string& entry : EntryTexts(Everything(path).dacl)) {
        stamp += " | " + entry;
    }
    return stamp;
}

// The new entry belongs to the folder alone: nothing below it may be rewritten (on Windows the
// named-object call re-applies inheritance to the whole tree, at a cost that grows with it).
TEST_F(RightsTest, AFoldersNewRightRewritesNothingBelowIt) {
    const auto stampsBelow = [&](const std::u16string& folder) {
        std::vector<std::string> stamps;
        for (const char16_t* below : {u"\\sub", u"\\a.txt", u"\\sub\\b.txt"}) {
            stamps.push_back(SecurityStamp(path(folder + below)));
        }
        return stamps;
    };
    // A folder with a file in it and one in a folder below, and Everyone without rights on it.
    const auto makeTree = [&](const std::u16string& folder) {
        makeFolder(folder);
        makeFolder(folder + u"\\sub");
        writeFile(folder + u"\\a.txt", "a");
        writeFile(folder + u"\\sub\\b.txt", "b");
        SetHostUnixMode(path(folder), "700");
        return stampsBelow(folder);
    };
    const std::vector<std::string> before = makeTree(u"tree");
    const ItemSecurity folder = Everything(path(u"tree"));
    std::vector<BYTE> expected = DaclAddingRights(Whose::kEveryone, folder, RightsBit::kRead, "t");
    ASSERT_FALSE(expected.empty()) << "Everyone may not read the folder's permissions yet";
    Sleep(20);  // a rewrite would then move the change times
    manager_.setEveryoneRights(at(u"tree"), RightsBit::kRead);
    EXPECT_EQ(stampsBelow(u"tree"), before);
    const bool kept = EntryTexts(Everything(path(u"tree")).dacl) ==
                      EntryTexts(reinterpret_cast<PACL>(expected.data()));

    // Whether a rewrite below could be seen here at all: the propagating call on a twin tree.
    const std::vector<std::string> twinBefore = makeTree(u"twin");
    const ItemSecurity twin = Everything(path(u"twin"));
    std::vector<BYTE> dacl =
        DaclAddingRights(Whose::kEveryone, twin, RightsBit::kRead | RightsBit::kExecute, "t");
    ASSERT_FALSE(dacl.empty());
    Sleep(20);
    std::vector<wchar_t> name = PathBuffer(at(u"twin"));
    ASSERT_EQ(
        SetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT,
                              DACL_SECURITY_INFORMATION | UNPROTECTED_DACL_SECURITY_INFORMATION,
                              nullptr, nullptr, reinterpret_cast<PACL>(dacl.data()), nullptr),
        static_cast<DWORD>(ERROR_SUCCESS));
    // Wine keeps no DACLs of its own (it derives the Unix mode from the one written and answers
    // one derived from that mode) and rewrites nothing below a folder either way.
    if (stampsBelow(u"twin") == twinBefore) {
        GTEST_SKIP() << "this system rewrites nothing below a folder whose DACL is set by name, so "
                        "a rewrite below could not show here (the folder's DACL was "
                     << (kept ? "kept" : "not kept as written") << ")";
    }
    EXPECT_TRUE(kept) << "the folder's DACL is the one computed, no more";
}

// "DOMAIN\name" of a SID, as the system names it.
std::string QualifiedName(PSID sid) {
    wchar_t name[256];
    wchar_t domain[256];
    DWORD nameLength = 256;
    DWORD domainLength = 256;
    SID_NAME_USE use;
    if (!LookupAccountSidW(nullptr, sid, name, &nameLength, domain, &domainLength, &use)) {
        return "?";
    }
    return Narrow(FromWide(domain)) + "\\" + Narrow(FromWide(name));
}

TEST_F(AttributeTest, AccountsResolveByNameQualifiedNameAndSidString) {
    writeFile(u"a.txt", "x");
    const ItemSecurity before = Everything(path(u"a.txt"));
    const std::string owner = Narrow(manager_.getOwnerName(at(u"a.txt"))->units());
    const std::string group = Narrow(manager_.getGroupName(at(u"a.txt"))->units());
    const std::string ownerSid = SidText(before.owner);
    std::string lowerSid = ownerSid;
    lowerSid[0] = 's';
    // The size query of the lookup fails by design: that is no reason to stop.
    DWORD sidSize = 0;
    DWORD domainSize = 0;
    SID_NAME_USE use;
    ASSERT_FALSE(LookupAccountNameW(nullptr, Wide(String::FromUtf8(owner)->units()), nullptr,
                                    &sidSize, nullptr, &domainSize, &use));
    ASSERT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));

    // Every form of the item's own owner and group sets them to themselves.
    const struct {
        bool owner;
        std::string name;
    } same[] = {{true, owner},
                {true, QualifiedName(before.owner)},
                {true, ownerSid},
                {true, lowerSid},
                {false, group},
                {false, QualifiedName(before.group)},
                {false, SidText(before.group)}};
    std::string unresolved;
    for (const auto& c : same) {
        const String name(String::FromUtf8(c.name)->units());
        // Wine names its group account "None" but cannot look that name up again: proven here,
        // by the system's own size query refusing it as unknown.
        if (c.name.rfind("S-", 0) != 0 && c.name.rfind("s-", 0) != 0 &&
            !LookupAccountNameW(nullptr, name.wide(), nullptr, &sidSize, nullptr, &domainSize,
                                &use) &&
            GetLastError() == ERROR_NONE_MAPPED) {
            unresolved += " " + c.name;
            continue;
        }
        EXPECT_EQ(FailureOf([&] {
                      c.owner ? manager_.setOwner(at(u"a.txt"), name)
                              : manager_.setGroup(at(u"a.txt"), name);
                  }),
                  "")
            << c.name;
    }
    const ItemSecurity after = Everything(path(u"a.txt"));
    EXPECT_TRUE(EqualSid(after.owner, before.owner));
    EXPECT_TRUE(EqualSid(after.group, before.group));

    // Unknown names and malformed SID strings are no accounts; nothing changes.
    const std::string unknown = "No such account / " + std::to_string(ERROR_NONE_MAPPED);
    for (const char* name : {"no-such-account-vf", "S-1-5-21-x", "NOWHERE\\nobody", ""}) {
        EXPECT_EQ(SystemFailureOf([&] {
                      manager_.setOwner(at(u"a.txt"), String(String::FromUtf8(name)->units()));
                  }),
                  unknown)
            << name;
    }
    EXPECT_EQ(SystemFailureOf([&] { manager_.setGroup(at(u"missing"), String(u"S-1-1-0")); }),
              "Cannot change group of item / " + std::to_string(ERROR_FILE_NOT_FOUND));

    // Another group, by SID string: Windows keeps it; Wine answers success and keeps the group
    // it derives itself.
    manager_.setGroup(at(u"a.txt"), String(u"S-1-5-32-545"));
    const ItemSecurity regrouped = Everything(path(u"a.txt"));
    if (SidText(regrouped.group) != "S-1-5-32-545") {
        ASSERT_TRUE(EqualSid(regrouped.group, before.group));
        GTEST_SKIP() << "the system answered success and kept group " << SidText(regrouped.group)
                     << "; names it gives but cannot look up:" << unresolved;
    }
    if (!unresolved.empty()) {
        GTEST_SKIP() << "names the system gives but cannot look up:" << unresolved;
    }
    EXPECT_EQ(Narrow(manager_.getGroupName(at(u"a.txt"))->units()), "Users");
}

}  // namespace
}  // namespace test
}  // namespace slib
