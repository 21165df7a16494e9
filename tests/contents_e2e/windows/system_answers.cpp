#include "system_answers.h"

#include <windows.h>

#include <richedit.h>

#include <algorithm>
#include <cstring>

#include "file_manager/scratch_folder.h"

namespace contents_test {

std::string NativeText(const std::string& bytes) {
    const int units =
        MultiByteToWideChar(CP_ACP, 0, bytes.data(), static_cast<int>(bytes.size()), nullptr, 0);
    std::wstring wide(static_cast<size_t>(units), L'\0');
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), static_cast<int>(bytes.size()), &wide[0], units);
    return slib::test::Narrow(slib::test::FromWide(wide.c_str()));
}

const std::set<std::string> kKeywordsWithoutConverter = {};

const RtfReader kRtfReader = RtfReader::kSystemControl;

// Whether the system's rich-edit reader keeps small and all capitals: asked of the control itself.
bool RtfReaderKeepsCapitals() {
    const HMODULE library = LoadLibraryW(L"Msftedit.dll");
    const HWND window = CreateWindowExW(0, MSFTEDIT_CLASS, L"", ES_MULTILINE, 0, 0, 0, 0,
                                        HWND_MESSAGE, nullptr, nullptr, nullptr);
    std::string rtf = "{\\rtf1 {\\scaps a}{\\caps b}}";
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&rtf), 0,
                      [](DWORD_PTR cookie, LPBYTE bytes, LONG count, LONG* done) -> DWORD {
                          std::string& left = *reinterpret_cast<std::string*>(cookie);
                          *done = static_cast<LONG>(std::min<size_t>(left.size(), count));
                          std::memcpy(bytes, left.data(), static_cast<size_t>(*done));
                          left.erase(0, static_cast<size_t>(*done));
                          return 0;
                      }};
    SendMessageW(window, EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
    DWORD effects = 0;
    for (const int at : {0, 1}) {
        SendMessageW(window, EM_SETSEL, at, at + 1);
        CHARFORMAT2W format{};
        format.cbSize = sizeof format;
        SendMessageW(window, EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
        effects |= format.dwEffects & (at == 0 ? CFE_SMALLCAPS : CFE_ALLCAPS);
    }
    DestroyWindow(window);
    FreeLibrary(library);
    return effects == (CFE_SMALLCAPS | CFE_ALLCAPS);
}

}  // namespace contents_test
