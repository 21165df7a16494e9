#pragma once
// The handful of operating-system queries that path parsing and formatting need. Kept behind an
// interface so the text rules of slib::Path can be exercised without a Windows file system.

#include <optional>
#include <string>

namespace slib {

class PathSystem {
  public:
    virtual ~PathSystem() = default;

    // The process's current directory.
    virtual std::u16string currentDirectory() const = 0;
    // The user's profile folder, without a trailing separator. Throws slib::Exception
    // "Cannot get home folder of user" when the system has none.
    virtual std::u16string profileFolder() const = 0;
    // Long form of an existing path; none when the system cannot expand it.
    virtual std::optional<std::u16string> longPathName(const std::u16string& path) const = 0;
    // Short (8.3) form of an existing path; none when the system gives no short form.
    virtual std::optional<std::u16string> shortPathName(const std::u16string& path) const = 0;
    // True for an existing folder, false for a file or a missing item. Throws slib::Exception
    // -54 "Insufficent file permissions" when the system cannot tell.
    virtual bool isExistingFolder(const std::u16string& path) const = 0;
};

// The real system, used by the plug-in. Only the Windows build provides it.
const PathSystem& DefaultPathSystem();

}  // namespace slib
