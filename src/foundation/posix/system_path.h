#pragma once
<<<<<<< HEAD
// Our paths are UTF-16 text; Linux names are bytes. Every POSIX body turns a path into the bytes
// the system is given here (TextToFileNameBytes, so that every name read from the disk comes back
// to the same bytes), and splits it into the folder a walk opens and the name it acts on.
=======
// Our paths are UTF-16 text, Linux's are bytes: the one conversion between them
// (TextToFileNameBytes), so that every name read from the disk comes back to the same bytes.
>>>>>>> linux-items

#include <optional>
#include <string>

#include "foundation/utf16_string.h"

namespace slib {

// Empty for text no path can hold (a NUL, a lone surrogate that stands for no byte).
std::optional<std::string> SystemPath(const std::u16string& path);

// The bytes of `path`. Text no name can hold, or none, throws -50 with `message`: no system call
// ever sees a cut or altered path.
std::string SystemPath(const String& path, const char* message);

// The folder part of a system path ("." for a bare name, "/" for an item at the root).
std::string FolderOf(const std::string& path);
<<<<<<< HEAD

// A path split into its folder and last name, trailing "/" dropped: "/a/b/" is {"/a", "b"},
// "/a" is {"/", "a"}, "b" is {".", "b"}. The root, "." and ".." have no name of their own: their
// `name` is empty, and nothing can be deleted, moved or created through them.
struct PathParts {
    std::string folder;
    std::string name;
};
PathParts SplitPath(const std::string& path);
=======
>>>>>>> linux-items

}  // namespace slib
