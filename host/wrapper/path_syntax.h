// The host's path syntax: "/C:/Data/a.fmp12" for a local path, "//server/share/a" for a network
// share, optionally prefixed by "file:" (or "filewin:", "filemac:"); "fmnet:/host/a.fmp12" for
// a database opened from a network host.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace fmwrapper {

// C:\Data\a.fmp12 -> /C:/Data/a.fmp12;  \\server\share\a -> //server/share/a
std::u16string HostPathFromNative(std::u16string_view native);

// Back to a Windows path; nothing for a network-host path or one with an unknown prefix.
std::optional<std::u16string> NativeFromHostPath(std::u16string_view hostPath);

// The Get(FilePath) text of a database on a network host, from "fmnet:/host/db.fmp12",
// "fmp://host/db.fmp12" or "host/db.fmp12".
std::u16string NetworkFilePath(std::u16string_view url);

// Path formats of the conversion functions.
enum class PathFormat { kPosix = 1, kWindows = 2, kUrl = 3 };

// Native path of `format` -> host syntax with "file:"; nothing when it is not such a path.
std::optional<std::u16string> ToHostPath(std::u16string_view path, int format);
// Host syntax -> native path of `format`; nothing when it cannot be converted.
std::optional<std::u16string> FromHostPath(std::u16string_view hostPath, int format);

}  // namespace fmwrapper
