#pragma once
// The two archive operations behind VFile_Compress and VFile_DeCompress, with their failures in
// the order users' scripts see them. Paths are absolute, in the system's own style.

#include "foundation/utf16_string.h"

namespace archive {

// Packs a file, or a folder's contents (not the folder itself), into a new archive `target`.
//   -48 "File of the same name already exists."  the target opens as a zip archive (untouched)
//   -38 "Unable to open zip."                      the target cannot be created
//   -43 "Nothing to add."                          an empty folder (no target is left)
//   -43 "Unable to add file to zip."               a file cannot be read (no target is left)
// A target that exists but is not an archive is replaced. The archive being written is never
// added to itself, and a source file is never replaced by the archive of itself.
void CompressItem(const slib::String& source, const slib::String& target);

// Unpacks every entry of `archive` below the folder `target`, creating it when missing.
//   -43 "Invalid archive path."                   missing, unreadable or not a zip archive
//   -50 "Could not read properties of archive"   the entry count cannot be right
//   -50 "Invalid or missing zip item"            a damaged central directory entry
//   -50 "Unable to get zip item"                 an entry that cannot be extracted or fails its
//                                                checks; entries before it stay
// Nothing is written through a link below `target` (that entry fails, and says why); each file
// is whole under its name or absent, even if the process dies meanwhile.
void DecompressArchive(const slib::String& archive, const slib::String& target);

}  // namespace archive
