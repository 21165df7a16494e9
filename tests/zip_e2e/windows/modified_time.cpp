#include "modified_time.h"

#include <windows.h>

#include <limits>

#include "file_manager/scratch_folder.h"

namespace items_test {

double ModifiedSeconds(const std::u16string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    if (!GetFileAttributesExW(slib::test::Wide(path), GetFileExInfoStandard, &data)) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    const int64_t ticks = (static_cast<int64_t>(data.ftLastWriteTime.dwHighDateTime) << 32) |
                          data.ftLastWriteTime.dwLowDateTime;
    return static_cast<double>(ticks - 116444736000000000LL) / 1e7;  // from 1601 to 1970
}

}  // namespace items_test
