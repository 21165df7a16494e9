#pragma once
// Error numbers shared by the whole plug-in: the classic negative system error numbers, plus
// 2400 for a failure that has no better classification.

#include <cstdint>

namespace slib {

constexpr int32_t kNoError = 0;
constexpr int32_t kNotAvailable = -4;       // an operation this build cannot do
constexpr int32_t kIoError = -36;           // a failure the system did not explain
constexpr int32_t kVolumeFull = -34;        // no room left on the volume
constexpr int32_t kFileNotOpen = -38;       // a zip archive that cannot be opened
constexpr int32_t kItemNotFound = -43;      // file or folder missing
constexpr int32_t kItemExists = -48;        // an item of that name already exists
constexpr int32_t kBadParameter = -50;      // bad argument or unsupported input
constexpr int32_t kPermissionDenied = -54;  // the system refused access
constexpr int32_t kUserCancelled = -128;    // returned as text by the choosers, never thrown
constexpr int32_t kUnclassified = 2400;     // anything else (positive, unlike the rest)

}  // namespace slib
