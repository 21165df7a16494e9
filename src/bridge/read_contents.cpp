#include "bridge/read_contents.h"

#include <string>

#include "bridge/file_container.h"
#include "bridge/rtf_conversion.h"
#include "bridge/text_conversion.h"
#include "foundation/base64.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/hex_dump.h"
#include "foundation/picture_sniffing.h"
#include "shell/host_data.h"
#include "shell/host_text.h"
#include "shell/result.h"

namespace bridge {

namespace {

void StoreContainer(FmxData& result, const fmlib::BinaryDataPtr& container) {
    fmlib::DataSetBinaryData(result, *container);
}

void StoreAscii(FmxData& result, const std::string& text) {
    const fmlib::TextPtr host =
        DecodeText(reinterpret_cast<const uint8_t*>(text.data()), text.size(), encoding::kUtf8);
    fmlib::SetResultText(result, *host);
}

void StorePicture(FmxData& result, const std::u16string& name, const slib::Data& bytes,
                  int32_t keyword) {
    const std::optional<slib::PictureFacts> facts =
        slib::SniffPicture(bytes.bytes().data(), bytes.size());
    if (!facts || !PictureKeywordAccepts(keyword, facts->kind)) {
        slib::Throw(slib::kBadParameter, "Wrong encoding specified for binary data");
    }
    StoreContainer(result, MakePictureContainer(name, bytes, *facts));
}

void StoreAutomatic(const slib::String& path, const slib::Data& bytes, FmxData& result) {
    const std::string type = slib::FileManager().getMimeType(path);
    const std::u16string name = FileNameOf(path.units());
    if (type.compare(0, 4, "text") == 0) {
        fmlib::SetResultText(result, *DecodeAutomaticText(bytes.bytes().data(), bytes.size()));
        return;
    }
    if (type.compare(0, 5, "image") == 0) {
        const std::optional<slib::PictureFacts> facts =
            slib::SniffPicture(bytes.bytes().data(), bytes.size());
        if (facts) {
            StoreContainer(result, MakePictureContainer(name, bytes, *facts));
            return;
        }
    }
    StoreContainer(result, MakeFileContainer(name, bytes));
}

}  // namespace

void StoreFileContents(const slib::String& path, const ReadRequest& request, FmxData& result,
                       const FmxExprEnv& env) {
    std::shared_ptr<const slib::Data> bytes = slib::FileManager().readFile(
        path, slib::FilePosition::FromIndex(request.startIndex), request.maxLength);
    const uint8_t* data = bytes->bytes().data();
    const int32_t number = request.encoding;
    if (number == encoding::kNone) {
        StoreAutomatic(path, *bytes, result);
    } else if (IsTextEncoding(number) || number == encoding::kUtf16) {
        fmlib::SetResultText(result, *DecodeText(data, bytes->size(), number));
    } else if (number == encoding::kRtf) {
        fmlib::SetResultText(result, *RtfToStyledText(*bytes, result, env));
    } else if (number == encoding::kHexDump || number == encoding::kBase64) {
        const std::string text = number == encoding::kBase64
                                     ? slib::EncodeBase64(data, bytes->size())
                                     : slib::EncodeHexDump(data, bytes->size());
        bytes.reset();  // the host's copy of the text is the largest: the file's bytes go first
        StoreAscii(result, text);
    } else if (IsPictureEncoding(number)) {
        StorePicture(result, FileNameOf(path.units()), *bytes, number);
    } else {
        StoreContainer(result, MakeFileContainer(FileNameOf(path.units()), *bytes));
    }
}

void StoreFolderListing(const slib::String& path, FmxData& result) {
    std::u16string text;
    for (const std::shared_ptr<const slib::String>& name : slib::FileManager().listFolder(path)) {
        if (!text.empty()) {
            text += u'\r';
        }
        text += name->units();
    }
    fmlib::SetResultText(result, text);
}

}  // namespace bridge
