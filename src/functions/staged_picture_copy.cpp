#include "functions/staged_picture_copy.h"

#include "bridge/path_context.h"
#include "picture/file_converter.h"
#include "shell/result.h"

namespace functions {
namespace {

char16_t AsciiLower(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

uint32_t TargetTypeFromExtension(const std::u16string& path) {
    const size_t dot = path.find_last_of(u'.');
    const size_t separator = path.find_last_of(u"\\/");
    if (dot == std::u16string::npos || (separator != std::u16string::npos && dot < separator)) {
        return slib::FileType::kUnspecified;
    }
    std::u16string extension = path.substr(dot);
    for (char16_t& unit : extension) {
        unit = AsciiLower(unit);
    }
    if (extension == u".png") {
        return slib::FileType::kPng;
    }
    if (extension == u".jpg" || extension == u".jpeg") {
        return slib::FileType::kJpeg;
    }
    return slib::FileType::kUnspecified;
}

}  // namespace

void CopyPicture(const fmlib::FunctionCall& call, const bridge::PictureOptionMap& options) {
    bridge::PathContext paths(call.env);
    const slib::String source = paths.pathArgument(call.args, 0);
    const slib::String target = paths.newItemArgument(call.args, 1);

    const std::shared_ptr<slib::FileConverter> converter = slib::MakeFileConverter();
    const auto width = options.find(u"width");
    const auto height = options.find(u"height");
    if (width != options.end()) {
        converter->setOption(slib::kOptionWidth, slib::MakeNumberOption(width->second));
    }
    if (height != options.end()) {
        converter->setOption(slib::kOptionHeight, slib::MakeNumberOption(height->second));
    }
    const bool oneSide = (width == options.end()) != (height == options.end());
    converter->setOption(slib::kOptionProportional, slib::MakeNumberOption(oneSide ? 1 : 0));
    const auto rotate = options.find(u"exif-rotate");
    if (rotate != options.end() && rotate->second != 0) {
        converter->setOption(slib::kOptionExifRotate, slib::MakeNumberOption(1));
        converter->requireOrientation(true);
    }
    converter->convert(source, slib::FileType::kUnspecified, target,
                       TargetTypeFromExtension(target.units()));
    fmlib::SetResultCode(call.result, 0);
}

}  // namespace functions
