#include "bridge/container_bytes.h"

#include <exception>
#include <string>
#include <vector>

#include "bridge/container_link.h"
#include "bridge/encoding_keywords.h"
#include "bridge/inflate_stream.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/picture_sniffing.h"
#include "shell/host_objects.h"
#include "shell/host_text.h"
#include "shell/host_values.h"
#include "shell/value_conversion.h"

namespace bridge {

namespace {

[[noreturn]] void ThrowWrongEncoding() {
    slib::Throw(slib::kBadParameter, "Wrong encoding specified for binary data");
}

std::vector<uint8_t> BytesAt(const FmxBinaryData& container, int32_t index) {
    std::vector<uint8_t> bytes(fmlib::BinaryDataGetSize(container, index));
    if (!bytes.empty() &&
        fmlib::BinaryDataGetData(container, index, 0, static_cast<uint32_t>(bytes.size()),
                                 bytes.data()) != 0) {
        throw std::exception();
    }
    return bytes;
}

// The stream that holds the file: the one MAIN names, else the stored or compressed file, else
// the original of a picture (a TIFF before its preview), else the first that is not metadata.
int32_t MainStream(const FmxBinaryData& container) {
    const int32_t count = fmlib::BinaryDataGetCount(container);
    std::vector<std::string> types;
    for (int32_t index = 0; index < count; ++index) {
        types.push_back(fmlib::ContainerStreamType(container, index));
    }
    auto find = [&types](const std::string& type) -> int32_t {
        for (size_t index = 0; index < types.size(); ++index) {
            if (types[index] == type) {
                return static_cast<int32_t>(index);
            }
        }
        return -1;
    };
    if (const int32_t main = find("MAIN"); main >= 0) {
        const std::vector<uint8_t> named = BytesAt(container, main);
        if (named.size() >= 4) {
            const int32_t index = find(std::string(named.begin(), named.begin() + 4));
            if (index >= 0) {
                return index;
            }
        }
    }
    for (const char* type : {"FILE", "ZLIB", "TIFF", "PDF ", "PNGf", "JPEG", "GIFf", "BMPf"}) {
        if (const int32_t index = find(type); index >= 0) {
            return index;
        }
    }
    for (size_t index = 0; index < types.size(); ++index) {
        if (types[index] != "FNAM" && types[index] != "SIZE" && types[index] != "MAIN") {
            return static_cast<int32_t>(index);
        }
    }
    return -1;
}

bool IsPictureOfKeyword(const slib::Data& bytes, int32_t keyword) {
    const std::optional<slib::PictureFacts> facts =
        slib::SniffPicture(bytes.bytes().data(), bytes.size());
    return facts && PictureKeywordAccepts(keyword, facts->kind);
}

// A file name and nothing else is how an empty file is stored (the host keeps no empty
// stream); references ("file:...", "size:...") hold a colon, which no file name can.
bool IsEmptyNamedFile(const FmxBinaryData& container) {
    const fmlib::TextPtr name = fmlib::NewText();
    if (fmlib::BinaryDataGetFNAMData(container, *name) != 0) {
        return false;
    }
    const std::u16string units = fmlib::TextUnits(*name);
    return !units.empty() && units.find_first_of(u":\r\n") == std::u16string::npos;
}

}  // namespace

std::shared_ptr<const slib::Data> ContainerFileBytes(const FmxBinaryData& container,
                                                     int32_t encoding, PathContext& paths) {
    if (encoding != encoding::kNone && encoding != encoding::kFile &&
        !IsPictureEncoding(encoding)) {
        ThrowWrongEncoding();
    }
    std::shared_ptr<const slib::Data> bytes;
    const int32_t main = MainStream(container);
    if (main >= 0) {
        std::vector<uint8_t> stored = BytesAt(container, main);
        if (fmlib::ContainerStreamType(container, main) == "ZLIB") {
            stored = InflateStream(stored.data(), stored.size());
        }
        bytes = std::make_shared<slib::Data>(std::move(stored));
    } else if (IsEmptyNamedFile(container)) {
        bytes = std::make_shared<slib::Data>(std::vector<uint8_t>());
    } else {
        const slib::String linked = LinkedFilePath(container, paths);
        bytes = slib::FileManager().readWholeFile(linked);
    }
    if (IsPictureEncoding(encoding) && !IsPictureOfKeyword(*bytes, encoding)) {
        ThrowWrongEncoding();
    }
    return bytes;
}

}  // namespace bridge
