// VFile_Get( "picture-pixels" ; containerOrPath ): the pixel size of the picture a container
// holds, or of a picture file, as "width\rheight".
#include <cstdio>
#include <string>
#include <vector>

#include "bridge/path_context.h"
#include "fmx_constants.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "functions/get_selectors.h"
#include "picture/picture_pixels.h"
#include "shell/host_data.h"
#include "shell/host_values.h"
#include "shell/result.h"
#include "shell/value_conversion.h"

namespace functions {
namespace {

// The container stream types that hold a picture the system's engine decodes.
const char* const kPictureStreams[] = {"JPEG", "PNGf", "GIFf", "BMPf", "TIFF"};

bool IsPictureStream(const std::string& type) {
    for (const char* picture : kPictureStreams) {
        if (type == picture) {
            return true;
        }
    }
    return false;
}

// The bytes of the container's first picture stream.
std::vector<uint8_t> ContainerPicture(const FmxBinaryData& data) {
    const int32_t count = fmlib::BinaryDataGetCount(data);
    for (int32_t index = 0; index < count; ++index) {
        if (!IsPictureStream(fmlib::ContainerStreamType(data, index))) {
            continue;
        }
        std::vector<uint8_t> bytes(fmlib::BinaryDataGetSize(data, index));
        const FmxErrcode error = fmlib::BinaryDataGetData(
            data, index, 0, static_cast<uint32_t>(bytes.size()), bytes.data());
        if (error != 0) {
            slib::Throw(error, "Cannot read picture data from FM Container");
        }
        return bytes;
    }
    slib::Throw(slib::kBadParameter, "No picture in container");
}

std::u16string PixelText(const slib::PictureDimensions& size) {
    char text[96];
    std::snprintf(text, sizeof(text), "%f\r%f", size.width, size.height);
    return std::u16string(text, text + std::char_traits<char>::length(text));
}

}  // namespace

void GetPicturePixels(const fmlib::FunctionCall& call) {
    fmlib::RequireParameters(call.args, 2);
    const FmxData& value = fmlib::DataVectAt(call.args, 1);
    slib::PictureDimensions size;
    if (fmlib::DataGetNativeType(value) == fmx::kDTBinary) {
        size = slib::MeasurePictureBytes(ContainerPicture(fmlib::DataGetBinaryData(value)));
    } else {
        bridge::PathContext paths(call.env);
        size = slib::MeasurePictureFile(paths.pathArgument(call.args, 1), "Item does not exist");
    }
    fmlib::SetResultText(call.result, PixelText(size));
}

}  // namespace functions
