#include "bridge/write_contents.h"

#include <algorithm>
#include <string>

#include "bridge/container_bytes.h"
#include "bridge/encoding_keywords.h"
#include "bridge/rtf_conversion.h"
#include "bridge/text_conversion.h"
#include "fmx_constants.h"
#include "foundation/base64.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/hex_dump.h"
#include "shell/host_data.h"
#include "shell/host_text.h"

namespace bridge {

namespace {

std::shared_ptr<const slib::Data> Bytes(std::vector<uint8_t> bytes) {
    return std::make_shared<slib::Data>(std::move(bytes));
}

// Decodes the host's text a range at a time: a 100 MB file as hex-dump is 600 MB of host text,
// and a whole copy of it would double the host's peak memory.
template <typename Decoder>
std::vector<uint8_t> DecodeHostText(const FmxText& text) {
    constexpr uint32_t kPieceUnits = 64 * 1024;
    const uint32_t size = fmlib::TextSize(text);
    Decoder decoder(size);
    std::u16string piece(std::min(size, kPieceUnits), u'\0');
    for (uint32_t position = 0; position < size;) {
        const uint32_t count = std::min(kPieceUnits, size - position);
        fmlib::TextGetUnicode(text, piece.data(), position, count);
        decoder.Feed(std::u16string_view(piece.data(), count));
        position += count;
    }
    return decoder.Finish();
}

}  // namespace

std::shared_ptr<const slib::Data> BytesToWrite(const FmxData& data, int32_t encoding,
                                               PathContext& paths, const FmxExprEnv& env) {
    if (fmlib::DataGetNativeType(data) == fmx::kDTBinary) {
        return ContainerFileBytes(fmlib::DataGetBinaryData(data), encoding, paths);
    }
    const FmxText& text = fmlib::DataGetAsText(data);
    if (encoding == encoding::kNone) {
        return Bytes(EncodeText(text, encoding::kUtf8));
    }
    if (IsTextEncoding(encoding)) {
        return Bytes(EncodeText(text, encoding));
    }
    switch (encoding) {
        case encoding::kUtf16:
            return Bytes(Utf16Bytes(text));
        case encoding::kRtf:
            return Bytes(StyledTextToRtf(text, data, env));
        case encoding::kHexDump:
            return Bytes(DecodeHostText<slib::HexDumpDecoder>(text));
        case encoding::kBase64:
            return Bytes(DecodeHostText<slib::Base64Decoder>(text));
        default:
            slib::Throw(slib::kBadParameter, "Unknown encoding");
    }
}

}  // namespace bridge
