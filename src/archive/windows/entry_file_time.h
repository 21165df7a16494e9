#pragma once
// An entry's time from and to a file's modification time: the exact file time, the DOS fields in
// local time (clamped to their range), as every zip tool reads them, and the Unix seconds of the
// extended-timestamp field where they fit.

#include <windows.h>

#include <optional>

#include "archive/entry_time.h"

namespace archive {

EntryTime EntryTimeFromFileTime(const FILETIME& time);
// The exact file time when the entry has one, else the Unix seconds (no time-zone guess), else
// the DOS fields read as local time; nothing when none gives a valid time.
std::optional<FILETIME> FileTimeFromEntryTime(const EntryTime& time);

// The read-only and hidden bits of a file's attributes (INVALID_FILE_ATTRIBUTES gives none).
uint8_t KeptAttributes(DWORD attributes);

}  // namespace archive
