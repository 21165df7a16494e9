// VFile_Get's facts about a value: "type", "analyze-container", "picture-width" and
// "picture-height".
#include <string>

#include "bridge/container_link.h"
#include "fmx_constants.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "functions/get_selectors.h"
#include "shell/arguments.h"
#include "shell/host_data.h"
#include "shell/host_objects.h"
#include "shell/host_text.h"
#include "shell/host_values.h"
#include "shell/result.h"
#include "shell/value_conversion.h"

namespace functions {

namespace {

// A container whose streams are only metadata, with a file reference in its name stream.
bool IsLinkOnly(const FmxBinaryData& container) {
    const int32_t count = fmlib::BinaryDataGetCount(container);
    for (int32_t index = 0; index < count; ++index) {
        const std::string type = fmlib::ContainerStreamType(container, index);
        if (type != "FNAM" && type != "SIZE") {
            return false;
        }
    }
    return !bridge::FileLinks(container).empty();
}

std::u16string TypeWord(const FmxData& value) {
    switch (fmlib::DataGetNativeType(value)) {
        case fmx::kDTText:
            return u"TEXT";
        case fmx::kDTNumber:
            return u"NUMBER";
        case fmx::kDTDate:
            return u"DATE";
        case fmx::kDTTime:
            return u"TIME";
        case fmx::kDTTimeStamp:
            return u"TIMESTAMP";
        case fmx::kDTBoolean:
            return u"BOOLEAN";
        case fmx::kDTBinary:
            return IsLinkOnly(fmlib::DataGetBinaryData(value)) ? u"LINK" : u"CONTAINER";
        default:
            return u"INVALID";
    }
}

std::u16string Ascii(const std::string& text) {
    return std::u16string(text.begin(), text.end());
}

// One line per stream: its type code, its size in bytes, and for FNAM the name, for SIZE the
// picture's width x height.
std::u16string StreamLines(const FmxBinaryData& container) {
    std::u16string lines = u"STREAMS:\r";
    const int32_t count = fmlib::BinaryDataGetCount(container);
    for (int32_t index = 0; index < count; ++index) {
        const std::string type = fmlib::ContainerStreamType(container, index);
        lines += Ascii(type + " " + std::to_string(fmlib::BinaryDataGetSize(container, index)));
        if (type == "FNAM") {
            const fmlib::TextPtr name = fmlib::NewText();
            if (fmlib::BinaryDataGetFNAMData(container, *name) == 0) {
                lines += u" " + fmlib::TextUnits(*name);
            }
        } else if (type == "SIZE") {
            int16_t width = 0;
            int16_t height = 0;
            if (fmlib::BinaryDataGetSIZEData(container, width, height) == 0) {
                lines += Ascii(" " + std::to_string(width) + "x" + std::to_string(height));
            }
        }
        lines += u'\r';
    }
    return lines;
}

std::u16string Analysis(const FmxData& value) {
    const std::u16string word = TypeWord(value);
    if (word == u"INVALID") {
        return u"INVALID\r";
    }
    std::u16string text = word + u":\r";
    if (fmlib::DataGetNativeType(value) == fmx::kDTBinary) {
        text += StreamLines(fmlib::DataGetBinaryData(value));
    }
    return text;
}

int16_t PictureDimension(const FmxData& value, GetOwnSelector selector) {
    int16_t width = 0;
    int16_t height = 0;
    if (fmlib::DataGetNativeType(value) != fmx::kDTBinary ||
        fmlib::BinaryDataGetSIZEData(fmlib::DataGetBinaryData(value), width, height) != 0) {
        slib::Throw(slib::kBadParameter, "No picture in container");
    }
    return selector == kGetPictureWidth ? width : height;
}

}  // namespace

void GetValueFact(const fmlib::FunctionCall& call, GetOwnSelector selector) {
    fmlib::RequireParameters(call.args, 2);
    const FmxData& value = fmlib::DataVectAt(call.args, 1);
    switch (selector) {
        case kGetType:
            fmlib::SetResultText(call.result, TypeWord(value));
            return;
        case kGetAnalyzeContainer:
            fmlib::SetResultText(call.result, Analysis(value));
            return;
        default:
            fmlib::SetResultCode(call.result, PictureDimension(value, selector));
            return;
    }
}

}  // namespace functions
