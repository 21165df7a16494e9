// Owner, group and the three rights values as the mode's owner, group and other bits (read 4,
// write 2, execute 1). Rights are only ever added, and nothing is written when none is missing,
// so someone who may not change the mode still succeeds then, as on Windows.

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <vector>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/file_name_bytes.h"
#include "foundation/posix/item_path.h"

namespace slib {

namespace {

constexpr char kSecurityMessage[] = "Cannot read file security info";

// How far each class's three bits sit from the right of the mode.
enum class Whose { kOwner = 6, kGroup = 3, kEveryone = 0 };

struct stat StatOf(const String& path, const char* message) {
    struct stat info;
    if (::stat(ItemPathBytes(path, message).c_str(), &info) != 0) {
        ThrowErrno(message, errno);
    }
    return info;
}

uint32_t GetRights(const String& path, Whose whose) {
    return (StatOf(path, kSecurityMessage).st_mode >> static_cast<int>(whose)) & 7;
}

void AddRights(const String& path, Whose whose, uint32_t rights, const char* message) {
    const mode_t mode = StatOf(path, message).st_mode & 07777;
    const mode_t wanted = mode | static_cast<mode_t>((rights & 7) << static_cast<int>(whose));
    if (wanted != mode && ::chmod(ItemPathBytes(path, message).c_str(), wanted) != 0) {
        ThrowErrno(message, errno);
    }
}

std::optional<uint32_t> NumericId(const std::string& text) {
    if (text.empty() || text.size() > 10 ||
        !std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        return std::nullopt;
    }
    const unsigned long long value = std::stoull(text);
    if (value >= UINT32_MAX) {
        return std::nullopt;
    }
    return static_cast<uint32_t>(value);
}

// The account database's answer for one name or id; the lookups want a buffer of their own.
template <typename Entry, typename Lookup>
std::optional<Entry> LookUp(Lookup lookup) {
    std::vector<char> buffer(16384);
    Entry entry{};
    Entry* found = nullptr;
    if (lookup(&entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr) {
        return std::nullopt;
    }
    return entry;  // only its id is used once the buffer is gone
}

std::shared_ptr<const String> AccountName(const String& path, bool owner) {
    const struct stat info = StatOf(path, kSecurityMessage);
    std::vector<char> buffer(16384);
    std::string name;
    if (owner) {
        passwd entry{};
        passwd* found = nullptr;
        ::getpwuid_r(info.st_uid, &entry, buffer.data(), buffer.size(), &found);
        if (found != nullptr) {
            name = entry.pw_name;
        }
    } else {
        group entry{};
        group* found = nullptr;
        ::getgrgid_r(info.st_gid, &entry, buffer.data(), buffer.size(), &found);
        if (found != nullptr) {
            name = entry.gr_name;
        }
    }
    if (name.empty()) {
        Throw(kUnclassified, "Cannot get file owner");
    }
    return std::make_shared<String>(FileNameBytesToText(name));
}

// The id an account name stands for: a name through the account database, else a number as
// it is (as a SID string is taken on Windows).
uint32_t AccountId(const String& accountName, bool owner) {
    const std::optional<std::string> name = TextToFileNameBytes(accountName.units());
    if (name && !name->empty()) {
        if (owner) {
            const auto entry = LookUp<passwd>([&](passwd* e, char* b, size_t n, passwd** f) {
                return ::getpwnam_r(name->c_str(), e, b, n, f);
            });
            if (entry) {
                return entry->pw_uid;
            }
        } else {
            const auto entry = LookUp<group>([&](group* e, char* b, size_t n, group** f) {
                return ::getgrnam_r(name->c_str(), e, b, n, f);
            });
            if (entry) {
                return entry->gr_gid;
            }
        }
        if (const std::optional<uint32_t> id = NumericId(*name)) {
            return *id;
        }
    }
    Throw(kUnclassified, "No such account");
}

void SetAccount(const String& path, const String& accountName, bool owner) {
    const char* message = owner ? "Cannot change owner of item" : "Cannot change group of item";
    const std::string item = ItemPathBytes(path, message);
    const uint32_t id = AccountId(accountName, owner);
    const uid_t uid = owner ? static_cast<uid_t>(id) : static_cast<uid_t>(-1);
    const gid_t gid = owner ? static_cast<gid_t>(-1) : static_cast<gid_t>(id);
    if (::chown(item.c_str(), uid, gid) != 0) {
        ThrowErrno(message, errno);
    }
}

}  // namespace

std::shared_ptr<const String> FileManager::getOwnerName(const String& path) const {
    return AccountName(path, true);
}

std::shared_ptr<const String> FileManager::getGroupName(const String& path) const {
    return AccountName(path, false);
}

uint32_t FileManager::getOwnerRights(const String& path) const {
    return GetRights(path, Whose::kOwner);
}

uint32_t FileManager::getGroupRights(const String& path) const {
    return GetRights(path, Whose::kGroup);
}

uint32_t FileManager::getEveryoneRights(const String& path) const {
    return GetRights(path, Whose::kEveryone);
}

void FileManager::setOwner(const String& path, const String& accountName) const {
    SetAccount(path, accountName, true);
}

void FileManager::setGroup(const String& path, const String& accountName) const {
    SetAccount(path, accountName, false);
}

void FileManager::setOwnerRights(const String& path, uint32_t rights) const {
    AddRights(path, Whose::kOwner, rights, "Cannot set new owner rights");
}

void FileManager::setGroupRights(const String& path, uint32_t rights) const {
    AddRights(path, Whose::kGroup, rights, "Cannot set new group rights");
}

void FileManager::setEveryoneRights(const String& path, uint32_t rights) const {
    AddRights(path, Whose::kEveryone, rights, "Cannot set new everyone rights");
}

}  // namespace slib
