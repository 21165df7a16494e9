// What VFile_Get and VFile_Set answer differently on each system, as data and as the system's
// own view of an item (read without the plug-in): windows/ and posix/ hold the bodies, chosen by
// the build.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "foundation/file_manager.h"

namespace items_test {

enum class Whose { kOwner, kGroup, kEveryone };

// The account running the tests and the group `path` belongs to, as VFile_Get names them.
std::string CurrentAccount();
std::string GroupOf(const slib::FileManager& manager, const std::u16string& path);
// The rights (read 4, write 2, execute 1) the system gives `whose` on `path`.
uint32_t RightsOf(const slib::FileManager& manager, const std::u16string& path, Whose whose);

// Every path form VFile_Get gives for `full`, an item in the scratch folder at "sub dir/<name>".
std::vector<std::pair<const char*, std::string>> PathForms(const std::u16string& full);
// The "FileMaker" form of a folder, given its path with "/" separators and no trailing one.
std::string FileMakerFolderForm(const std::string& slashedFolder);

// A staged picture copy of a text file: "code | code | message".
std::string StagedTextCopyRefusal();

}  // namespace items_test
