#pragma once
// The system resource kinds the plug-in owns, each an slib::UniqueResource. New kinds join here
// (GDI+ objects, security descriptors, windows, ...) rather than as classes of their own.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <objidl.h>
#include <shlobj.h>

// GDI+ needs min and max in scope; the system headers' macros are off in this project.
#include <algorithm>
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus
#include <gdiplus.h>

#include "foundation/unique_resource.h"

namespace slib {

inline HANDLE InvalidHandleValue() {
    return INVALID_HANDLE_VALUE;
}

inline void ReleaseComObject(IUnknown* object) {
    object->Release();
}

inline void ReleaseVirtualMemory(void* memory) {
    VirtualFree(memory, 0, MEM_RELEASE);
}

// A kernel handle whose failure value is null (processes, threads, events, ...).
using UniqueHandle = UniqueResource<HANDLE, &CloseHandle>;
// A handle from CreateFileW, whose failure value is INVALID_HANDLE_VALUE.
using UniqueFileHandle = UniqueResource<HANDLE, &CloseHandle, &InvalidHandleValue>;
// A search started by FindFirstFileW.
using UniqueFindHandle = UniqueResource<HANDLE, &FindClose, &InvalidHandleValue>;
// A shell item identifier list (ILCreateFromPathW, SHBrowseForFolderW, ...).
using UniqueItemIdList = UniqueResource<PIDLIST_ABSOLUTE, &ILFree>;
// Memory the system allocated with LocalAlloc for us (security descriptors, FormatMessage, ...).
using UniqueLocalMemory = UniqueResource<HLOCAL, &LocalFree>;
// A security descriptor the security API allocated (GetNamedSecurityInfoW); the owner, group and
// ACL pointers it hands out point into it.
using UniqueSecurityDescriptor = UniqueResource<PSECURITY_DESCRIPTOR, &LocalFree>;
// An ACL the security API allocated (SetEntriesInAclW).
using UniqueAcl = UniqueResource<PACL, &LocalFree>;
// A window we created (the rich-edit control of the "rtf" conversion).
using UniqueWindow = UniqueResource<HWND, &DestroyWindow>;
// A library loaded with LoadLibraryW.
using UniqueModule = UniqueResource<HMODULE, &FreeLibrary>;
// A COM stream (SHCreateMemStream, ...).
using UniqueStream = UniqueResource<IStream*, &ReleaseComObject>;
// GDI+ for the calling code's duration: the token of GdiplusStartup.
using UniqueGdiplusSession = UniqueResource<ULONG_PTR, &Gdiplus::GdiplusShutdown>;
// A GDI+ image or bitmap.
using UniqueGdiplusImage =
    UniqueResource<Gdiplus::GpImage*, &Gdiplus::DllExports::GdipDisposeImage>;
// Pages reserved and committed with VirtualAlloc: zero-filled, and only the pages touched take
// physical memory.
using UniqueVirtualMemory = UniqueResource<void*, &ReleaseVirtualMemory>;

}  // namespace slib
