#include "archive/archive_failures.h"

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/utf_conversion.h"

namespace archive {

void FailTargetIsArchive() {
    slib::Throw(slib::kItemExists, "File of the same name already exists.");
}
void FailArchiveNotCreated() {
    slib::Throw(slib::kFileNotOpen, "Unable to open zip.");
}
void FailArchiveNotCreated(std::u16string_view strandedOriginal) {
    const std::string message =
        "Unable to open zip. The original file could not be put back and is kept as \"" +
        slib::Utf16ToUtf8(std::u16string(strandedOriginal)) + "\"";
    slib::Throw(slib::kFileNotOpen, message.c_str());
}
void FailNothingToAdd() {
    slib::Throw(slib::kItemNotFound, "Nothing to add.");
}
void FailFileNotAdded() {
    slib::Throw(slib::kItemNotFound, "Unable to add file to zip.");
}
void FailArchiveNotOpened() {
    slib::Throw(slib::kItemNotFound, "Invalid archive path.");
}
void FailEntryCountUnreadable() {
    slib::Throw(slib::kBadParameter, "Could not read properties of archive");
}
void FailEntryUnreadable() {
    slib::Throw(slib::kBadParameter, "Invalid or missing zip item");
}
void FailEntryNotExtracted() {
    slib::Throw(slib::kBadParameter, "Unable to get zip item");
}

void FailEntryRefused(std::u16string_view name, const std::string& reason) {
    std::u16string shown;
    for (const char16_t unit : name) {
        shown += unit == u'\0' ? std::u16string(u"\\0") : std::u16string(1, unit);
    }
    const std::string message =
        "Unable to get zip item \"" + slib::Utf16ToUtf8(shown) + "\": " + reason;
    slib::Throw(slib::kBadParameter, message.c_str());
}

}  // namespace archive
