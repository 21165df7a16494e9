#pragma once
// An entry's time and attributes from and to a file's status: the exact modification time (as the
// NTFS field's ticks, so archives match the Windows build's), the DOS fields in local time
// (clamped to their range), the Unix seconds where they fit, and the Unix mode.

#include <sys/stat.h>
#include <time.h>

#include <optional>

#include "archive/entry_time.h"

namespace archive {

// Time, read-only bit (no write right for the owner) and mode of an item.
EntryTime EntryTimeFromStatus(const struct stat& status);
// The exact file time when the entry has one, else the Unix seconds (no time-zone guess), else
// the DOS fields read as local time; nothing when none gives a valid time.
std::optional<timespec> ModificationFromEntryTime(const EntryTime& time);

// The permission bits a file unpacked from `time` gets: the stored Unix mode's, never set-id or
// sticky; without one the default (0666 less `umask`), read-only taking the write rights away.
mode_t UnpackedFileMode(const EntryTime& time, mode_t umask);

}  // namespace archive
