#include "shell/about_box.h"

#include <windows.h>

namespace fmlib {

void ShowAboutBox(const std::u16string& title, const std::u16string& body) {
    MessageBoxW(nullptr, reinterpret_cast<const wchar_t*>(body.c_str()),
                reinterpret_cast<const wchar_t*>(title.c_str()), MB_OK | MB_ICONINFORMATION);
}

}  // namespace fmlib
