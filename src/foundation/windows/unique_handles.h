#pragma once
// The system resource kinds the plug-in owns, each an slib::UniqueResource. New kinds join here
// (GDI+ objects, security descriptors, windows, ...) rather than as classes of their own.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <objidl.h>
#include <shlobj.h>

#include <gdiplus.h>

#include "foundation/unique_resource.h"

namespace slib {

inline HANDLE InvalidHandleValue() {
    return INVALID_HANDLE_VALUE;
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
// A window this thread created (it must also be destroyed on this thread).
using UniqueWindow = UniqueResource<HWND, &DestroyWindow>;

// --- contents ---
// A library loaded with LoadLibraryW (the rich-edit control's "Msftedit.dll").
using UniqueModule = UniqueResource<HMODULE, &FreeLibrary>;

// --- pictures ---
inline void DisposeGdipBitmap(Gdiplus::GpBitmap* bitmap) {
    Gdiplus::DllExports::GdipDisposeImage(bitmap);
}
inline void DeleteGdipGraphics(Gdiplus::GpGraphics* graphics) {
    Gdiplus::DllExports::GdipDeleteGraphics(graphics);
}
inline void ReleaseStream(IStream* stream) {
    stream->Release();
}
inline void DisposeGdipImageAttributes(Gdiplus::GpImageAttributes* attributes) {
    Gdiplus::DllExports::GdipDisposeImageAttributes(attributes);
}
// A GDI+ bitmap (decoded picture or one we draw into).
using UniqueGdipBitmap = UniqueResource<Gdiplus::GpBitmap*, &DisposeGdipBitmap>;
// A GDI+ drawing context on a bitmap.
using UniqueGdipGraphics = UniqueResource<Gdiplus::GpGraphics*, &DeleteGdipGraphics>;
// How a picture is drawn (its wrap mode at the edges).
using UniqueGdipImageAttributes =
    UniqueResource<Gdiplus::GpImageAttributes*, &DisposeGdipImageAttributes>;
// A COM stream (memory streams that pictures are decoded from and encoded into).
using UniqueStream = UniqueResource<IStream*, &ReleaseStream>;
// The process's GDI+ start-up token. Never a static object: its destructor would run at DLL
// detach, where GDI+ must not be shut down.
using UniqueGdiplusToken = UniqueResource<ULONG_PTR, &Gdiplus::GdiplusShutdown>;

}  // namespace slib
