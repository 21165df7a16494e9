// The item-kind keywords of VFile_New and VFile_Choose, matched without regard to case. Their
// positions are those slib::CreateKind names.
#pragma once

namespace bridge {

inline const char* const kItemKindKeywords[] = {"file", "folder", "new", "files", "folders"};

}  // namespace bridge
