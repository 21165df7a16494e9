#pragma once
// The failures of packing and unpacking, each with the code and message users' scripts test for.

#include <string>
#include <string_view>

namespace archive {

[[noreturn]] void FailTargetIsArchive();    // -48 "File of the same name already exists."
[[noreturn]] void FailArchiveNotCreated();  // -38 "Unable to open zip."
// -38 "Unable to open zip." and where the file the archive was to replace had to stay.
[[noreturn]] void FailArchiveNotCreated(std::u16string_view strandedOriginal);
[[noreturn]] void FailNothingToAdd();          // -43 "Nothing to add."
[[noreturn]] void FailFileNotAdded();          // -43 "Unable to add file to zip."
[[noreturn]] void FailArchiveNotOpened();      // -43 "Invalid archive path."
[[noreturn]] void FailEntryCountUnreadable();  // -50 "Could not read properties of archive"
[[noreturn]] void FailEntryUnreadable();       // -50 "Invalid or missing zip item"
[[noreturn]] void FailEntryNotExtracted();     // -50 "Unable to get zip item"
// -50 "Unable to get zip item "<name>": <reason>", a NUL in the name shown as "\0".
[[noreturn]] void FailEntryRefused(std::u16string_view name, const std::string& reason);

}  // namespace archive
