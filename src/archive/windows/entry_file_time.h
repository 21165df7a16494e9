#pragma once
// An entry's time from and to a file's modification time: the DOS fields in local time, as
// every zip tool reads them, and the Unix seconds of the extended-timestamp field.

#include <windows.h>

#include <optional>

#include "archive/entry_time.h"

namespace archive {

EntryTime EntryTimeFromFileTime(const FILETIME& time);
// The Unix seconds when the entry has them (no time-zone guess), else the DOS fields read as
// local time; nothing when neither gives a valid time.
std::optional<FILETIME> FileTimeFromEntryTime(const EntryTime& time);

}  // namespace archive
