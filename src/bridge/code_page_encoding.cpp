#include "bridge/code_page_encoding.h"

#include <utility>

#include "bridge/encoding_keywords.h"

namespace bridge {

int32_t HostEncodingOfCodePage(uint32_t codePage) {
    // Each named code page, never "default" or "dos": those are whatever the system's are.
    static const std::pair<uint32_t, int32_t> kEncodings[] = {
        {65001, encoding::kUtf8},
        {1252, 3},
        {10000, 4},
        {28591, 5},
        {10001, 6},
        {932, 7},
        {10003, 8},
        {949, 9},
        {1361, 10},
        {10002, 11},
        {950, 12},
        {10008, 13},
        {936, 14},
        {10007, 15},
        {1251, 16},
        {28595, 17},
        {10029, 18},
        {1250, 19},
        {28592, 20},
        {10081, 21},
        {1254, 22},
        {28593, 23},
        {28599, 24},
        {1257, 25},
        {28594, 26},
        {10004, 27},
        {1256, 28},
        {28596, 29},
        {10006, 30},
        {1253, 31},
        {28597, 32},
        {10005, 33},
        {1255, 34},
        {28598, 35},
        {28605, 36},
    };
    for (const auto& [page, number] : kEncodings) {
        if (page == codePage) {
            return number;
        }
    }
    return -1;
}

}  // namespace bridge
