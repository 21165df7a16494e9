// VFile_Convert( sourcePath ; targetPath { ; name ; value } ... ): converts a picture file into a
// new picture file, scaled, turned upright or in another format.
#include <string>

#include "bridge/path_context.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "functions/handlers.h"
#include "picture/file_converter.h"
#include "shell/call_frame.h"
#include "shell/host_data.h"
#include "shell/host_text.h"
#include "shell/host_values.h"
#include "shell/result.h"

namespace {

// Option names in lookup order; their positions are the converter's option keys, and the last
// one is no option but the target type.
const char16_t* const kOptionNames[] = {u"width", u"height", u"proportional", u"exif-rotate",
                                        u"output-format"};
constexpr int32_t kOutputFormat = 4;

// Exact, case included: "JPG" is no output format.
int32_t ExactPosition(const std::u16string& text, const char16_t* const* names, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        if (text == names[i]) {
            return static_cast<int32_t>(i);
        }
    }
    return -1;
}

uint32_t OutputFormat(const FmxDataVect& args, uint32_t index) {
    const std::u16string value = fmlib::TextUnits(fmlib::DataVectAtAsText(args, index));
    if (value == u"jpg") {
        return slib::FileType::kJpeg;
    }
    if (value == u"png") {
        return slib::FileType::kPng;
    }
    slib::Throw(slib::kBadParameter, "Unknown output format");
}

void Convert(const fmlib::FunctionCall& call) {
    bridge::PathContext paths(call.env);
    const slib::String source = paths.pathArgument(call.args, 0);
    const slib::String target = paths.newItemArgument(call.args, 1);
    const std::shared_ptr<slib::FileConverter> converter = slib::MakeFileConverter();

    uint32_t targetType = slib::FileType::kUnspecified;
    const uint32_t count = fmlib::DataVectSize(call.args);
    for (uint32_t name = 2; name + 1 < count; name += 2) {
        const int32_t key =
            ExactPosition(fmlib::TextUnits(fmlib::DataVectAtAsText(call.args, name)), kOptionNames,
                          std::size(kOptionNames));
        if (key < 0) {
            slib::Throw(slib::kBadParameter, "Unknown convert parameter");
        }
        if (key == kOutputFormat) {
            targetType = OutputFormat(call.args, name + 1);
            continue;
        }
        const double value =
            fmlib::FixPtAsFloat(fmlib::DataGetAsNumber(fmlib::DataVectAt(call.args, name + 1)));
        converter->setOption(key, slib::MakeNumberOption(value));
    }
    converter->convert(source, slib::FileType::kUnspecified, target, targetType);
    fmlib::SetResultCode(call.result, 0);
}

}  // namespace

FmxErrcode VFile_Convert(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                         FmxData& result) {
    constexpr fmlib::FramePolicy kPolicy{2, fmlib::Licence::kChecked, fmlib::ZeroCode::kStored};
    return fmlib::RunInCallFrame(kPolicy, {functionId, env, args, result}, Convert);
}
