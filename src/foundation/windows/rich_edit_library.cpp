#include "foundation/windows/rich_edit_library.h"

#include "foundation/windows/unique_handles.h"

namespace slib {

namespace {

// Made once and never destroyed: a static owner would free the library at DLL detach.
UniqueModule& Library() {
    static auto* library = new UniqueModule;
    return *library;
}

}  // namespace

bool LoadRichEditLibrary() {
    if (!Library()) {
        Library().reset(LoadLibraryW(L"Msftedit.dll"));
    }
    return Library().valid();
}

void ReleaseRichEditLibrary() {
    Library().reset();
}

}  // namespace slib
