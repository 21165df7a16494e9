#pragma once
// Helpers internal to the file manager's sources: wide-text access and the COM scope. The
// resource owners themselves are in unique_handles.h.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include <string>

#include "foundation/utf16_string.h"
#include "foundation/windows/unique_handles.h"
#include "foundation/windows/wide_text.h"

namespace slib {
namespace file_manager_detail {

using slib::Wide;

// 0 file, 1 folder, 2 no such item for a path in the form the system gets it (prefixed or not);
// -54 "Insufficent file permissions" when the system cannot tell.
uint32_t QueryItemKind(const wchar_t* systemPath);

// COM for the calling thread while a shell call runs. A thread the host already set up in another
// apartment model keeps it (RPC_E_CHANGED_MODE): the shell works there too, and we must not
// balance an initialisation we did not make.
class ComScope {
  public:
    ComScope()
        : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)) {}
    ~ComScope() {
        if (SUCCEEDED(result_)) {
            CoUninitialize();
        }
    }
    // The thread was already in the multithreaded apartment.
    bool inOtherApartment() const { return result_ == RPC_E_CHANGED_MODE; }
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;

  private:
    HRESULT result_;
};

}  // namespace file_manager_detail
}  // namespace slib
