#include <windows.h>

#include <algorithm>

#include "attributes/attribute_answers.h"
#include "items_e2e/items_fixture.h"

namespace items_test {

namespace {

std::string ShortForm(const std::u16string& path) {
    wchar_t text[MAX_PATH];
    const DWORD length = GetShortPathNameW(Wide(path), text, MAX_PATH);
    return length > 0 && length < MAX_PATH ? Narrow(slib::test::FromWide(text)) : Narrow(path);
}

}  // namespace

std::string CurrentAccount() {
    wchar_t user[256];
    DWORD length = 256;
    return GetUserNameW(user, &length) ? Narrow(slib::test::FromWide(user)) : "unknown";
}

// Windows' group and the ACL's rights come through the manager's own evaluation (its ACL reading
// is tested on its own); the owner of a scratch file is always granted read and write.
std::string GroupOf(const slib::FileManager& manager, const std::u16string& path) {
    return Narrow(manager.getGroupName(slib::String(path))->units());
}

uint32_t RightsOf(const slib::FileManager& manager, const std::u16string& path, Whose whose) {
    switch (whose) {
        case Whose::kOwner:
            return 6;
        case Whose::kGroup:
            return manager.getGroupRights(slib::String(path));
        case Whose::kEveryone:
            break;
    }
    return manager.getEveryoneRights(slib::String(path));
}

std::vector<std::pair<const char*, std::string>> PathForms(const std::u16string& full) {
    const std::string native = Narrow(full);
    std::string slashed = native;
    std::replace(slashed.begin(), slashed.end(), '\\', '/');
    return {
        {"FSSpec", ShortForm(full)},
        {"native-relative", "sub dir\\" + Narrow(full.substr(full.rfind(u'\\') + 1))},
        {"native-full", native},
        {"win-relative", "sub dir\\" + Narrow(full.substr(full.rfind(u'\\') + 1))},
        {"win-full", native},
        {"unix_relative", "sub dir/" + Narrow(full.substr(full.rfind(u'\\') + 1))},
        {"unix-relative", "sub dir/" + Narrow(full.substr(full.rfind(u'\\') + 1))},
        {"unix-full", slashed.substr(2)},
        {"FileMaker", "file:/" + slashed},
        {"URL", "file://" + slashed},
    };
}

std::string FileMakerFolderForm(const std::string& slashedFolder) {
    return "file:/" + slashedFolder + "/";
}

std::string StagedTextCopyRefusal() {
    return Failed(-50, "This is not a picture.");
}

}  // namespace items_test
