// Copying a container's streams out of the host (declared in value_conversion.h).
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "shell/host_objects.h"
#include "shell/host_text.h"
#include "shell/host_values.h"
#include "shell/value_conversion.h"

namespace fmlib {

std::string ContainerStreamType(const FmxBinaryData& data, int32_t index) {
    QuadCharPtr type = NewQuadChar();
    BinaryDataGetType(data, index, *type);
    std::string text(4, ' ');
    for (int32_t i = 0; i < 4; ++i) {
        text[static_cast<size_t>(i)] = static_cast<char>(QuadCharAt(*type, i));
    }
    return text;
}

namespace {

// A stream the host lists but will not hand over is a host failure: dropping it silently would
// lose data.
std::shared_ptr<const slib::Data> StreamBytes(const FmxBinaryData& data, int32_t index) {
    std::vector<uint8_t> bytes(BinaryDataGetSize(data, index));
    if (!bytes.empty() &&
        BinaryDataGetData(data, index, 0, static_cast<uint32_t>(bytes.size()), bytes.data()) != 0) {
        throw std::exception();
    }
    return std::make_shared<slib::Data>(std::move(bytes));
}

}  // namespace

std::shared_ptr<ContainerValue> ToContainerValue(const FmxBinaryData& data) {
    std::vector<ContainerValue::Stream> streams;
    std::u16string fileName;
    std::optional<ContainerValue::PictureSize> pictureSize;
    const int32_t count = BinaryDataGetCount(data);
    for (int32_t index = 0; index < count; ++index) {
        std::string type = ContainerStreamType(data, index);
        if (type == "FNAM") {
            TextPtr name = NewText();
            if (BinaryDataGetFNAMData(data, *name) == 0) {
                fileName = TextUnits(*name);
            }
        } else if (type == "SIZE") {
            ContainerValue::PictureSize size{0, 0};
            if (BinaryDataGetSIZEData(data, size.width, size.height) == 0) {
                pictureSize = size;
            }
        } else {
            streams.push_back({std::move(type), StreamBytes(data, index)});
        }
    }
    return std::make_shared<ContainerValue>(std::move(streams), std::move(fileName), pictureSize);
}

}  // namespace fmlib
