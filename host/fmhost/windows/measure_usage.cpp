#include "process_usage.h"

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <vector>

namespace fmhost::cli {

namespace {

// One entry of the system's handle list (SystemHandleInformation); the layout is the system's.
struct SystemHandleEntry {
    ULONG processId;
    BYTE objectType;
    BYTE flags;
    USHORT handle;
    PVOID object;
    ACCESS_MASK access;
};

struct SystemHandleList {
    ULONG count;
    SystemHandleEntry entries[1];
};

using QuerySystemInformation = LONG(WINAPI*)(ULONG, PVOID, ULONG, PULONG);

constexpr ULONG kSystemHandleInformation = 16;
constexpr LONG kInfoLengthMismatch = static_cast<LONG>(0xC0000004);

// The system's handle list, counted for this process: where GetProcessHandleCount answers 0
// (Wine), this is the count that still works.
std::optional<uint32_t> HandlesFromSystemList() {
    const auto query = reinterpret_cast<QuerySystemInformation>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
    if (query == nullptr) {
        return std::nullopt;
    }
    std::vector<char> buffer(1 << 16);
    ULONG needed = 0;
    LONG status;
    while ((status = query(kSystemHandleInformation, buffer.data(),
                           static_cast<ULONG>(buffer.size()), &needed)) == kInfoLengthMismatch &&
           buffer.size() < (1u << 30)) {
        buffer.resize(buffer.size() * 2);
    }
    if (status != 0) {
        return std::nullopt;
    }
    const auto* list = reinterpret_cast<const SystemHandleList*>(buffer.data());
    const ULONG self = GetCurrentProcessId();
    uint32_t count = 0;
    for (ULONG i = 0; i < list->count; ++i) {
        count += list->entries[i].processId == self ? 1 : 0;
    }
    return count;
}

std::optional<uint32_t> CountHandles() {
    DWORD count = 0;
    if (GetProcessHandleCount(GetCurrentProcess(), &count) && count != 0) {
        return count;
    }
    return HandlesFromSystemList();
}

std::optional<uint32_t> CountGuiObjects(DWORD kind, uint32_t& error) {
    SetLastError(0);
    const DWORD count = GetGuiResources(GetCurrentProcess(), kind);
    if (count == 0 && GetLastError() != 0) {
        error = GetLastError();
        return std::nullopt;
    }
    return count;
}

// Committed private memory, region by region: the figure the system calls private bytes, taken
// in a way that also works where the process counters report 0 (Wine).
uint64_t PrivateBytes() {
    SYSTEM_INFO system;
    GetSystemInfo(&system);
    const auto* address = static_cast<const char*>(system.lpMinimumApplicationAddress);
    const auto* end = static_cast<const char*>(system.lpMaximumApplicationAddress);
    uint64_t total = 0;
    MEMORY_BASIC_INFORMATION region;
    while (address < end && VirtualQuery(address, &region, sizeof(region)) != 0) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) {
            total += region.RegionSize;
        }
        address = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
    }
    return total;
}

}  // namespace

ProcessUsage MeasureProcessUsage() {
    ProcessUsage usage;
    usage.handles = CountHandles();
    usage.gdiObjects = CountGuiObjects(GR_GDIOBJECTS, usage.guiError);
    usage.userObjects = CountGuiObjects(GR_USEROBJECTS, usage.guiError);
    usage.privateBytes = PrivateBytes();
    return usage;
}

}  // namespace fmhost::cli
