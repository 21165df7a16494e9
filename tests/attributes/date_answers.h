// How each system's own time-zone data stands to the zones' history, and the system's view of a
// file's time, read without the plug-in: windows/ and posix/ hold the bodies.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "attributes/zone_dates.h"

namespace items_test {

// Why this system cannot stand for `zone` (it has no data for it), or none when it can.
std::optional<std::string> MissingZone(const Zone& zone);
// Whether the system's data is the zones' whole history (a case listed as differing then
// agrees with it too).
extern const bool kSystemKeepsZoneHistory;
// The UTC time ("YYYY-MM-DD HH:MM") this system's own rules give the case's local time.
std::string SystemUtc(const DateCase& c);
// A file's modification time in UTC as "YYYY-MM-DD HH:MM", or "unreadable".
std::string UtcModified(const std::u16string& path);
// Host values the file at `probe` cannot keep as its modification time, found out on that file's
// own file system (the probe may be changed).
std::vector<std::u16string> DatesTheFileCannotKeep(const std::u16string& probe);

}  // namespace items_test
