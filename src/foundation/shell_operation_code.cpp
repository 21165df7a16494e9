#include "foundation/shell_operation_code.h"

#include "foundation/error.h"
#include "foundation/error_codes.h"

namespace slib {

namespace {

struct ShellResult {
    int32_t value;
    int32_t code;
};

// The shell's own failure numbers (shellapi's DE_* values, which the SDK does not declare).
constexpr ShellResult kShellResults[] = {
    {0x71, kBadParameter},      // source and destination are the same file
    {0x72, kBadParameter},      // several sources, one destination file
    {0x73, kBadParameter},      // rename into another folder
    {0x74, kBadParameter},      // source is a root folder
    {0x75, kIoError},           // cancelled (silently, when no one may be asked)
    {0x76, kBadParameter},      // destination inside the source's tree
    {0x78, kPermissionDenied},  // access to the source denied
    {0x79, kBadParameter},      // path too deep
    {0x7A, kBadParameter},      // several destinations
    {0x7C, kItemNotFound},      // source missing or invalid
    {0x7D, kBadParameter},      // source and destination in the same tree
    {0x7E, kItemExists},        // a folder onto an existing file
    {0x80, kItemExists},        // a file onto an existing folder
    {0x81, kBadParameter},      // name too long
    {0x82, kPermissionDenied},  // destination is read-only media (CD-ROM)
    {0x83, kPermissionDenied},  // (DVD)
    {0x84, kPermissionDenied},  // (recordable CD)
    {0x85, kVolumeFull},        // file too large for the destination's file system
    {0x86, kPermissionDenied},  // source is read-only media (CD-ROM)
    {0x87, kPermissionDenied},  // (DVD)
    {0x88, kPermissionDenied},  // (recordable CD)
    {0xB7, kBadParameter},      // a path grew past MAX_PATH (the shell's meaning, not 183's)
    {0x402, kIoError},          // unknown error, usually an invalid path
    {0x10000, kIoError},        // unspecified error on the destination
    {0x10074, kBadParameter},   // destination is a root folder
};

}  // namespace

int32_t ShellOperationCode(int32_t result) {
    for (const ShellResult& known : kShellResults) {
        if (known.value == result) {
            return known.code;
        }
    }
    const int32_t code = WindowsLastError(static_cast<uint32_t>(result)).code();
    return code == kNoError || code == kUnclassified ? kIoError : code;
}

}  // namespace slib
