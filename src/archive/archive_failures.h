#pragma once
// The failures of packing and unpacking, each with the code and message users' scripts test for.

namespace archive {

[[noreturn]] void FailTargetIsArchive();       // -48 "File of the same name already exists."
[[noreturn]] void FailArchiveNotCreated();     // -38 "Unable to open zip."
[[noreturn]] void FailNothingToAdd();          // -43 "Nothing to add."
[[noreturn]] void FailFileNotAdded();          // -43 "Unable to add file to zip."
[[noreturn]] void FailArchiveNotOpened();      // -43 "Invalid archive path."
[[noreturn]] void FailEntryCountUnreadable();  // -50 "Could not read properties of archive"
[[noreturn]] void FailEntryUnreadable();       // -50 "Invalid or missing zip item"
[[noreturn]] void FailEntryNotExtracted();     // -50 "Unable to get zip item"

}  // namespace archive
