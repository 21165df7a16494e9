#include <errno.h>
#include <iconv.h>

#include <algorithm>
#include <stdexcept>

#include "core/utf.h"
#include "encoding.h"
#include "foundation/unique_resource.h"

namespace fmwrapper {
namespace {

iconv_t NoConverter() {
    return reinterpret_cast<iconv_t>(-1);
}
using UniqueConverter = slib::UniqueResource<iconv_t, &iconv_close, &NoConverter>;

constexpr int32_t kUtf8 = 1;

// Indexed by encoding number: glibc's names for the tables our Windows host's code pages use.
// 0 and 2 are what the Windows host's ANSI and OEM code pages are in an English system (1252,
// 437). Mac encodings glibc lacks are left empty.
constexpr const char* kCharsets[] = {
    "CP1252",             // 0 native
    "UTF-8",              // 1
    "CP437",              // 2 DOS
    "CP1252",             // 3 Windows Western
    "MACINTOSH",          // 4 Mac Roman
    "ISO-8859-1",         // 5
    "SHIFT_JIS",          // 6 Shift-JIS, Mac
    "CP932",              // 7 Shift-JIS, Windows
    "EUC-KR",             // 8 Korean, Mac
    "CP949",              // 9 Korean, Windows
    "JOHAB",              // 10 Korean Johab
    "BIG5",               // 11 Traditional Chinese, Mac
    "CP950",              // 12 Traditional Chinese, Windows
    "GB2312",             // 13 Simplified Chinese, Mac
    "CP936",              // 14 Simplified Chinese, Windows
    "MAC-CYRILLIC",       // 15 Cyrillic, Mac
    "CP1251",             // 16 Cyrillic, Windows
    "ISO-8859-5",         // 17
    "MAC-CENTRALEUROPE",  // 18 Central European, Mac
    "CP1250",             // 19 Central European, Windows
    "ISO-8859-2",         // 20
    "",                   // 21 Turkish, Mac
    "CP1254",             // 22 Turkish, Windows
    "ISO-8859-3",         // 23
    "ISO-8859-9",         // 24
    "CP1257",             // 25 Baltic, Windows
    "ISO-8859-4",         // 26
    "",                   // 27 Arabic, Mac
    "CP1256",             // 28 Arabic, Windows
    "ISO-8859-6",         // 29
    "",                   // 30 Greek, Mac
    "CP1253",             // 31 Greek, Windows
    "ISO-8859-7",         // 32
    "",                   // 33 Hebrew, Mac
    "CP1255",             // 34 Hebrew, Windows
    "ISO-8859-8",         // 35
    "ISO-8859-15",        // 36
};
constexpr int32_t kEncodingCount = static_cast<int32_t>(sizeof(kCharsets) / sizeof(kCharsets[0]));
static_assert(kEncodingCount == 37, "encodings 0..36");

// The units in memory order: x86-64 and arm64 are both little-endian.
constexpr char kUtf16[] = "UTF-16LE";

UniqueConverter OpenConverter(const char* to, const char* from) {
    UniqueConverter converter(iconv_open(to, from));
    if (!converter)
        throw std::invalid_argument("text encoding not installed");
    return converter;
}

const char* CharsetOf(int32_t encoding) {
    if (encoding < 0 || encoding >= kEncodingCount)
        throw std::invalid_argument("unknown text encoding");
    if (*kCharsets[encoding] == '\0')
        throw std::invalid_argument("text encoding not installed");
    return kCharsets[encoding];
}

// Runs `converter` over all of `in`; `onError` handles the input iconv stops at (it returns how
// many bytes to skip and appends what stands for them).
template <typename OnError>
std::string Convert(iconv_t converter, const char* in, size_t length, OnError onError) {
    std::string out(length * 2 + 16, '\0');
    size_t written = 0;
    char* input = const_cast<char*>(in);
    size_t inputLeft = length;
    while (true) {
        char* output = &out[written];
        size_t outputLeft = out.size() - written;
        // With the input used up, one more call without input writes what a stateful table
        // still holds (1255 waits for a combining mark after each letter).
        const bool flushing = inputLeft == 0;
        const size_t result = iconv(converter, flushing ? nullptr : &input,
                                    flushing ? nullptr : &inputLeft, &output, &outputLeft);
        written = out.size() - outputLeft;
        if (result != static_cast<size_t>(-1)) {
            if (flushing)
                break;
            continue;
        }
        if (errno == E2BIG) {
            out.resize(out.size() * 2);
            continue;
        }
        out.resize(written);
        const size_t skip = onError(input, inputLeft, out);
        written = out.size();
        out.resize(written + inputLeft * 2 + 16);
        input += skip;
        inputLeft -= skip;
    }
    out.resize(written);
    return out;
}

bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

}  // namespace

std::u16string Decode(const char* bytes, size_t length, int32_t encoding) {
    const char* charset = CharsetOf(encoding);
    if (length == 0)
        return {};
    if (bytes == nullptr)
        throw std::invalid_argument("null string");
    if (encoding == kUtf8)
        return fmhost::Utf8ToUtf16(std::string_view(bytes, length));
    const UniqueConverter converter = OpenConverter(kUtf16, charset);
    // A byte the table leaves undefined: Windows gives the C1 control of the same number for
    // 0x80-0x9F (0x81 in 1252 is U+0081), and U+FFFD stands for anything else.
    const std::string units =
        Convert(converter.get(), bytes, length, [](const char* at, size_t, std::string& out) {
            const auto byte = static_cast<unsigned char>(*at);
            const char16_t unit = byte >= 0x80 && byte <= 0x9F ? byte : 0xFFFD;
            out.push_back(static_cast<char>(unit & 0xFF));
            out.push_back(static_cast<char>(unit >> 8));
            return size_t{1};
        });
    std::u16string out(units.size() / 2, u'\0');
    for (size_t i = 0; i < out.size(); ++i) {
        out[i] = static_cast<char16_t>(static_cast<unsigned char>(units[2 * i]) |
                                       static_cast<unsigned char>(units[2 * i + 1]) << 8);
    }
    return out;
}

std::string Encode(std::u16string_view units, int32_t encoding) {
    const char* charset = CharsetOf(encoding);
    if (units.empty())
        return {};
    if (encoding == kUtf8)
        return fmhost::Utf16ToUtf8(units);
    std::string in(units.size() * 2, '\0');
    for (size_t i = 0; i < units.size(); ++i) {
        in[2 * i] = static_cast<char>(units[i] & 0xFF);
        in[2 * i + 1] = static_cast<char>(units[i] >> 8);
    }
    const UniqueConverter converter = OpenConverter(charset, kUtf16);
    return Convert(converter.get(), in.data(), in.size(),
                   [](const char* at, size_t left, std::string& out) {
                       const auto unitAt = [&](size_t i) {
                           return static_cast<char16_t>(static_cast<unsigned char>(at[i]) |
                                                        static_cast<unsigned char>(at[i + 1]) << 8);
                       };
                       // A whole pair the table lacks is two units, so two "?"; a C1 control
                       // goes back to the byte of the same number, as decoding gave it.
                       const bool pair = left >= 4 && IsHighSurrogate(unitAt(0)) &&
                                         unitAt(2) >= 0xDC00 && unitAt(2) <= 0xDFFF;
                       const char16_t unit = unitAt(0);
                       if (unit >= 0x80 && unit <= 0x9F) {
                           out.push_back(static_cast<char>(unit));
                       } else {
                           out.append(pair ? 2 : 1, '?');
                       }
                       return std::min(left, size_t{pair ? 4u : 2u});
                   });
}

}  // namespace fmwrapper
