// Strings of the plug-in's own string table (see resources/resource_ids.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "fmx_functions.h"

namespace fmlib {

// String `id` of the plug-in's string table (on Windows the module named by the latest
// extern-call record), truncated to `capacity` - 1 units as the system's string loader does.
// Empty when the string is missing.
std::u16string LoadResourceString(uint32_t id, size_t capacity = 1024);

// Fills `text` with string `id`. With `nameOnly`, everything from the first "(" on is removed
// (the host's Find and DeleteText), which turns a prototype into the function's name.
void LoadResourceText(uint32_t id, FmxText& text, bool nameOnly);

}  // namespace fmlib
