#include "system_answers.h"

#include <windows.h>

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

}  // namespace contents_test
