#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "attributes/attribute_answers.h"
#include "foundation/file_name_bytes.h"
#include "items_e2e/items_fixture.h"

namespace items_test {

namespace {

struct stat StatOf(const std::u16string& path) {
    struct stat info {};
    ::stat(slib::TextToFileNameBytes(path).value_or("").c_str(), &info);
    return info;
}

}  // namespace

std::string CurrentAccount() {
    const passwd* account = ::getpwuid(::geteuid());
    return account != nullptr ? account->pw_name : "unknown";
}

std::string GroupOf(const slib::FileManager&, const std::u16string& path) {
    const group* entry = ::getgrgid(StatOf(path).st_gid);
    return entry != nullptr ? entry->gr_name : "unknown";
}

uint32_t RightsOf(const slib::FileManager&, const std::u16string& path, Whose whose) {
    const mode_t mode = StatOf(path).st_mode;
    switch (whose) {
        case Whose::kOwner:
            return (mode & S_IRWXU) >> 6;
        case Whose::kGroup:
            return (mode & S_IRWXG) >> 3;
        case Whose::kEveryone:
            break;
    }
    return mode & S_IRWXO;
}

// No short names, no drives: every full form is the path itself, the relative ones the part
// below the database's folder.
std::vector<std::pair<const char*, std::string>> PathForms(const std::u16string& full) {
    const std::string path = Narrow(full);
    const std::string relative = "sub dir/" + path.substr(path.rfind('/') + 1);
    return {
        {"FSSpec", path},
        {"native-relative", relative},
        {"native-full", path},
        {"win-relative", relative},
        {"win-full", path},
        {"unix_relative", relative},
        {"unix-relative", relative},
        {"unix-full", path},
        {"FileMaker", "filelinux:" + path},
        {"URL", "file://" + path},
    };
}

std::string FileMakerFolderForm(const std::string& slashedFolder) {
    return "filelinux:" + slashedFolder + "/";
}

std::string StagedTextCopyRefusal() {
    return Failed(-50, "This is not a picture.");
}

}  // namespace items_test
