#include "bridge/write_contents.h"

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
            return Bytes(slib::DecodeHexDump(fmlib::TextUnits(text)));
        case encoding::kBase64:
            return Bytes(slib::DecodeBase64(fmlib::TextUnits(text)));
        default:
            slib::Throw(slib::kBadParameter, "Unknown encoding");
    }
}

}  // namespace bridge
