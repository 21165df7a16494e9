#pragma once
// The item paths the file manager's item bodies act on: the bytes the system is given (through
// SystemPath, the one conversion) or a refusal, and the split into the folder a walk opens and
// the name it acts on.

#include <string>

#include "foundation/utf16_string.h"

namespace slib {

// SystemPath's bytes of `path`. Text no name can hold (a NUL, a lone surrogate) throws -50 with
// `message`: no system call ever sees a cut or altered path.
std::string ItemPathBytes(const String& path, const char* message);

// A path split into its folder and last name, trailing "/" dropped: "/a/b/" is {"/a", "b"},
// "/a" is {"/", "a"}, "b" is {".", "b"}. The root, "." and ".." have no name of their own: their
// `name` is empty, and nothing can be deleted, moved or created through them.
struct PathParts {
    std::string folder;
    std::string name;
};
PathParts SplitPath(const std::string& path);

}  // namespace slib
