// Our own reader and writer; code-page bytes are decoded by the host's own conversion.
#include "bridge/rtf_engine.h"

#include "bridge/code_page_encoding.h"
#include "bridge/text_conversion.h"
#include "foundation/rtf_reader.h"
#include "foundation/rtf_writer.h"
#include "shell/host_text.h"

namespace bridge {

namespace {

// A code page the host lacks (Thai, Vietnamese, the DOS pages) is read as 1252: the Latin
// letters stay right and no byte is lost.
std::u16string DecodeCodePage(uint32_t codePage, std::string_view bytes) {
    int32_t encoding = HostEncodingOfCodePage(codePage);
    if (encoding < 0) {
        encoding = HostEncodingOfCodePage(1252);
    }
    const fmlib::TextPtr text =
        DecodeText(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size(), encoding);
    return fmlib::TextUnits(*text);
}

}  // namespace

std::string RtfOfRichText(const slib::RichText& rich) {
    return slib::WriteRtf(rich);
}

slib::RichText RichTextOfRtf(const slib::Data& rtf) {
    return slib::ReadRtf(
        std::string_view(reinterpret_cast<const char*>(rtf.bytes().data()), rtf.size()),
        DecodeCodePage);
}

}  // namespace bridge
