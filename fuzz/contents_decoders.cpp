// The decoders and sniffers that VFile_Read and VFile_Write run on untrusted input: hex-dump and
// Base64 text (as UTF-16 units), file heads for pictures, MIME types and UTF-8, RTF made plain
// ASCII, and RTF font names swapped for placeholders. A decode either throws slib::Exception or
// returns bytes that encode back to an equivalent text; decoding in pieces (as from a large host
// text) gives the same outcome.
// fuzz-sources: src/foundation/*.cpp
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "foundation/base64.h"
#include "foundation/exception.h"
#include "foundation/hex_dump.h"
#include "foundation/mime_sniffing.h"
#include "foundation/picture_sniffing.h"
#include "foundation/rtf_escape.h"
#include "foundation/rtf_font_names.h"
#include "foundation/text_detection.h"

namespace {

std::u16string Units(const uint8_t* data, size_t size) {
    std::u16string units(size / 2, u'\0');
    std::memcpy(&units[0], data, units.size() * 2);
    return units;
}

void CheckRoundTrip(const std::vector<uint8_t>& bytes, bool base64) {
    const std::string text = base64 ? slib::EncodeBase64(bytes.data(), bytes.size())
                                    : slib::EncodeHexDump(bytes.data(), bytes.size());
    const std::u16string wide(text.begin(), text.end());
    if ((base64 ? slib::DecodeBase64(wide) : slib::DecodeHexDump(wide)) != bytes) {
        std::abort();
    }
}

template <typename Decoder>
std::string OutcomeInPieces(const std::u16string& text, size_t pieceSize) {
    try {
        Decoder decoder(text.size());
        for (size_t start = 0; start < text.size(); start += pieceSize) {
            decoder.Feed(std::u16string_view(text).substr(start, pieceSize));
        }
        const std::vector<uint8_t> bytes = decoder.Finish();
        return "ok:" + std::string(bytes.begin(), bytes.end());
    } catch (const slib::Exception& exception) {
        return std::string("failed:") + exception.what();
    }
}

template <typename Decoder>
void CheckPieces(const std::u16string& text, size_t pieceSize) {
    if (OutcomeInPieces<Decoder>(text, pieceSize) !=
        OutcomeInPieces<Decoder>(text, text.size() + 1)) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::u16string units = Units(data, size);
    // Mostly-ASCII input reaches deeper into the decoders than raw UTF-16 pairs would.
    const std::u16string ascii(data, data + size);
    for (const std::u16string* text : {&units, &ascii}) {
        for (const bool base64 : {false, true}) {
            try {
                const std::vector<uint8_t> bytes =
                    base64 ? slib::DecodeBase64(*text) : slib::DecodeHexDump(*text);
                CheckRoundTrip(bytes, base64);
            } catch (const slib::Exception&) {
            }
        }
        const size_t pieceSize = size == 0 ? 1 : data[0] % 7 + 1;
        CheckPieces<slib::Base64Decoder>(*text, pieceSize);
        CheckPieces<slib::HexDumpDecoder>(*text, pieceSize);
    }
    slib::SniffPicture(data, size);
    slib::SniffMimeType(data, size, u"fuzz.bin");
    slib::IsValidUtf8(data, size, size % 2 == 0);
    const std::string rtf(reinterpret_cast<const char*>(data), size);
    const std::string escaped = slib::StandardRtfOpening(slib::EscapeRtfNonAscii(rtf));
    for (const char c : escaped) {
        if (static_cast<unsigned char>(c) >= 0x80) {
            std::abort();  // the escaped form must be plain ASCII
        }
    }
    // Swapping font names keeps everything else: with no name swapped the text is unchanged,
    // and each placeholder stands in the result.
    const slib::PlaceholderFontNames swapped = slib::ReplaceUnicodeFontNames(rtf);
    if (swapped.names.empty() && swapped.rtf != rtf) {
        std::abort();
    }
    for (const auto& [placeholder, name] : swapped.names) {
        const std::string ascii(placeholder.begin(), placeholder.end());
        if (name.empty() || swapped.rtf.find(ascii) == std::string::npos) {
            std::abort();
        }
    }
    return 0;
}
