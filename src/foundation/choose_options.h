#pragma once
// The name/value pairs that follow the item kind in VFile_Choose( itemKind { ; name ; value } ...):
//   "title"       the dialog's title
//   "folder"      the folder the dialog opens in (a path argument, resolved by the caller)
//   "extensions"  the file-name extensions the open dialog lists, separated by blanks, commas,
//                 semicolons or line ends; a leading "*" or "." is dropped ("*.txt", ".txt", "txt")
// Names are matched without regard to case. A later pair replaces an earlier one of the same
// name; an empty value counts as not given; a name without a value at the end is ignored.

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace slib {

struct ChooseOptions {
    std::optional<std::u16string> title;
    // Index in the parsed texts of the folder's value, so the caller can resolve that argument
    // as a path with its own checks.
    std::optional<size_t> folderValue;
    std::vector<std::u16string> extensions;
};

// `pairs` are the call's arguments after the item kind, as text. An unknown name raises -50
// "Unknown option: <name>".
ChooseOptions ParseChooseOptions(const std::vector<std::u16string>& pairs);

// "txt, .csv;*.PDF" gives {"txt", "csv", "PDF"}; empty pieces are dropped.
std::vector<std::u16string> SplitExtensionList(const std::u16string& list);

}  // namespace slib
