#include "encoding.h"

#include <windows.h>

#include <limits>
#include <stdexcept>

namespace fmwrapper {
namespace {

// Indexed by encoding number.
constexpr uint32_t kCodePages[] = {
    CP_ACP,    // 0 native
    CP_UTF8,   // 1 UTF-8
    CP_OEMCP,  // 2 DOS
    1252,      // 3 Windows Western
    10000,     // 4 Mac Roman
    28591,     // 5 ISO 8859-1
    10001,     // 6 Shift-JIS, Mac
    932,       // 7 Shift-JIS, Windows
    10003,     // 8 Korean, Mac
    949,       // 9 Korean, Windows
    1361,      // 10 Korean Johab
    10002,     // 11 Traditional Chinese, Mac
    950,       // 12 Traditional Chinese, Windows
    10008,     // 13 Simplified Chinese, Mac
    936,       // 14 Simplified Chinese, Windows
    10007,     // 15 Cyrillic, Mac
    1251,      // 16 Cyrillic, Windows
    28595,     // 17 ISO 8859-5
    10029,     // 18 Central European, Mac
    1250,      // 19 Central European, Windows
    28592,     // 20 ISO 8859-2
    10081,     // 21 Turkish, Mac
    1254,      // 22 Turkish, Windows
    28593,     // 23 ISO 8859-3
    28599,     // 24 ISO 8859-9
    1257,      // 25 Baltic, Windows
    28594,     // 26 ISO 8859-4
    10004,     // 27 Arabic, Mac
    1256,      // 28 Arabic, Windows
    28596,     // 29 ISO 8859-6
    10006,     // 30 Greek, Mac
    1253,      // 31 Greek, Windows
    28597,     // 32 ISO 8859-7
    10005,     // 33 Hebrew, Mac
    1255,      // 34 Hebrew, Windows
    28598,     // 35 ISO 8859-8
    28605,     // 36 ISO 8859-15
};
constexpr int32_t kEncodingCount = static_cast<int32_t>(sizeof(kCodePages) / sizeof(kCodePages[0]));
static_assert(kEncodingCount == 37, "encodings 0..36");

int CheckedLength(size_t length) {
    if (length > static_cast<size_t>(std::numeric_limits<int>::max())) {
        throw std::length_error("text too long to convert");
    }
    return static_cast<int>(length);
}

}  // namespace

// Throws std::invalid_argument for a number outside 0..36 or a code page this system lacks.
uint32_t CodePageOf(int32_t encoding) {
    if (encoding < 0 || encoding >= kEncodingCount) {
        throw std::invalid_argument("unknown text encoding");
    }
    const uint32_t codePage = kCodePages[encoding];
    if (codePage != CP_ACP && codePage != CP_OEMCP && !IsValidCodePage(codePage)) {
        throw std::invalid_argument("code page not installed");
    }
    return codePage;
}

std::u16string Decode(const char* bytes, size_t length, int32_t encoding) {
    const uint32_t codePage = CodePageOf(encoding);
    if (length == 0)
        return {};
    if (bytes == nullptr)
        throw std::invalid_argument("null string");
    const int byteCount = CheckedLength(length);
    const int units = MultiByteToWideChar(codePage, 0, bytes, byteCount, nullptr, 0);
    if (units <= 0)
        throw std::runtime_error("cannot decode text");
    std::u16string out(static_cast<size_t>(units), u'\0');
    MultiByteToWideChar(codePage, 0, bytes, byteCount, reinterpret_cast<wchar_t*>(&out[0]), units);
    return out;
}

std::string Encode(std::u16string_view units, int32_t encoding) {
    const uint32_t codePage = CodePageOf(encoding);
    if (units.empty())
        return {};
    const int unitCount = CheckedLength(units.size());
    const auto* wide = reinterpret_cast<const wchar_t*>(units.data());
    const int bytes =
        WideCharToMultiByte(codePage, 0, wide, unitCount, nullptr, 0, nullptr, nullptr);
    if (bytes <= 0)
        throw std::runtime_error("cannot encode text");
    std::string out(static_cast<size_t>(bytes), '\0');
    WideCharToMultiByte(codePage, 0, wide, unitCount, &out[0], bytes, nullptr, nullptr);
    return out;
}

}  // namespace fmwrapper
