#include "modified_time.h"

#include <sys/stat.h>

#include <limits>

#include "foundation/file_name_bytes.h"

namespace items_test {

double ModifiedSeconds(const std::u16string& path) {
    struct stat info;
    const std::string bytes = slib::TextToFileNameBytes(path).value_or(std::string());
    if (::stat(bytes.c_str(), &info) != 0) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return static_cast<double>(info.st_mtim.tv_sec) + info.st_mtim.tv_nsec / 1e9;
}

}  // namespace items_test
