// Shared pieces of the tests that drive the built plug-in through the emulated host in-process.
#pragma once

#include <cstdint>
#include <string>

#include "fmhost/host_driver.h"

namespace vftest {

// The shipped plug-in, and the two instrumented builds of it (shell/call_probe.h).
std::wstring ShippedPlugin();
std::wstring ProbePlugin();
std::wstring UnlockedProbePlugin();

// A calculation's outcome with the native type of its value (0 when the calculation failed).
struct TypedValue {
    int16_t error = 0;
    int32_t type = 0;
    std::string text;
};
TypedValue Evaluate(const std::u16string& expression);

std::u16string Utf16(const std::string& utf8);
std::string Utf8(const std::u16string& utf16);

}  // namespace vftest
