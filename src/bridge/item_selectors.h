// The item selectors of VFile_Get and VFile_Set, and the rights value as users write it.
#pragma once

#include <cstdint>
#include <string>

#include "fmx_functions.h"

namespace bridge {

// Positions 0 to 10 are the file manager's attribute ids (slib::AttributeId).
enum ItemSelector : int32_t {
    kSelectCreated = 0,
    kSelectModified = 1,
    kSelectSize = 2,
    kSelectAvailableSpace = 5,
    kSelectOwner = 6,
    kSelectGroup = 7,
    kSelectOwnerRights = 8,
    kSelectEveryoneRights = 10,
    kSelectFirstPathForm = 11,  // "FSSpec"
    kSelectLastPathForm = 20,   // "URL"
    kSelectKind = 21,
};

inline const char* const kItemSelectors[] = {"created",
                                             "modified",
                                             "size",
                                             "data-size",
                                             "resource-size",
                                             "available-space",
                                             "owner",
                                             "group",
                                             "owner-rights",
                                             "group-rights",
                                             "everyone-rights",
                                             "FSSpec",
                                             "native-relative",
                                             "native-full",
                                             "win-relative",
                                             "win-full",
                                             "unix_relative",
                                             "unix-relative",
                                             "unix-full",
                                             "FileMaker",
                                             "URL",
                                             "kind"};

// The slib::PathStyle a path-form selector (kSelectFirstPathForm to kSelectLastPathForm) asks for.
int PathStyleOfSelector(int32_t selector);

// "read|write|execute" and its subsets in that order; empty for 0.
std::u16string RightsText(uint32_t rights);
// 4 for "read", 2 for "write", 1 for "execute", each added when the word occurs anywhere in the
// text, in any case ("Read, Write" is 6, "none" is 0).
uint32_t RightsFromWords(const FmxText& text);

}  // namespace bridge
