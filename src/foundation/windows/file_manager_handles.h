#pragma once
// Owners for the system resources the file manager touches, so every exit path (including a
// throw) gives them back. Internal to the file manager's sources.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include <string>

#include "foundation/utf16_string.h"

namespace slib {
namespace file_manager_detail {

inline const wchar_t* Wide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

// A kernel handle from CreateFileW, CreateProcessW, ...; INVALID_HANDLE_VALUE and null are empty.
class UniqueHandle {
  public:
    explicit UniqueHandle(HANDLE handle = nullptr) : handle_(handle) {}
    ~UniqueHandle() {
        if (valid()) {
            CloseHandle(handle_);
        }
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;

    bool valid() const { return handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }

  private:
    HANDLE handle_;
};

// A search started by FindFirstFileW.
class FindHandle {
  public:
    explicit FindHandle(HANDLE handle) : handle_(handle) {}
    ~FindHandle() {
        if (valid()) {
            FindClose(handle_);
        }
    }
    FindHandle(const FindHandle&) = delete;
    FindHandle& operator=(const FindHandle&) = delete;

    bool valid() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }

  private:
    HANDLE handle_;
};

// A shell item identifier list from ILCreateFromPathW.
class ItemIdList {
  public:
    explicit ItemIdList(PIDLIST_ABSOLUTE list) : list_(list) {}
    ~ItemIdList() {
        if (list_ != nullptr) {
            ILFree(list_);
        }
    }
    ItemIdList(const ItemIdList&) = delete;
    ItemIdList& operator=(const ItemIdList&) = delete;

    PIDLIST_ABSOLUTE get() const { return list_; }

  private:
    PIDLIST_ABSOLUTE list_;
};

// COM for the calling thread while a shell call runs. A thread the host already set up in another
// apartment model keeps it (RPC_E_CHANGED_MODE): the shell works there too, and we must not
// balance an initialisation we did not make.
class ComScope {
  public:
    ComScope()
        : initialised_(SUCCEEDED(
              CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))) {}
    ~ComScope() {
        if (initialised_) {
            CoUninitialize();
        }
    }
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;

  private:
    bool initialised_;
};

}  // namespace file_manager_detail
}  // namespace slib
