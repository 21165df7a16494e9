// Colours and character styles of text results.
#include "core/calc/builtin_impls.h"
#include "core/session.h"

namespace fmhost::calc {

// RGB ( red ; green ; blue ) = red * 65536 + green * 256 + blue, each channel 0..255.
ErrorCode Rgb(EvalContext&, const std::vector<Value>& args, Value& result) {
    const int64_t red = IntegerArgument(args[0], 0, 255);
    const int64_t green = IntegerArgument(args[1], 0, 255);
    const int64_t blue = IntegerArgument(args[2], 0, 255);
    result = Value(Decimal(red * 65536 + green * 256 + blue));
    return kNoError;
}

ErrorCode TextColor(EvalContext&, const std::vector<Value>& args, Value& result) {
    const int64_t rgb = IntegerArgument(args[1], 0, 0xFFFFFF);
    CharacterStyle style;
    style.SetColor(Color{static_cast<uint8_t>(rgb >> 16), static_cast<uint8_t>(rgb >> 8),
                         static_cast<uint8_t>(rgb), 255});
    Text text = args[0].AsText();
    text.ApplyStyle(style);
    result = Value(std::move(text));
    return kNoError;
}

// TextFont ( text ; fontName { ; script } ): the script is accepted and ignored. A font the
// session's table cannot take leaves the text as it is.
ErrorCode TextFont(EvalContext& context, const std::vector<Value>& args, Value& result) {
    Text text = args[0].AsText();
    const FontId font = context.GetSession().Fonts().IdFor(args[1].AsText().Chars());
    if (font != kInvalidFontId) {
        CharacterStyle style;
        style.SetFont(font);
        text.ApplyStyle(style);
    }
    result = Value(std::move(text));
    return kNoError;
}

ErrorCode TextSize(EvalContext&, const std::vector<Value>& args, Value& result) {
    Text text = args[0].AsText();
    const int64_t size = IntegerArgument(args[1], 0, 0xFFFF);
    if (size > 0) {
        CharacterStyle style;
        style.SetSize(static_cast<FontSize>(size));
        text.ApplyStyle(style);
    }
    result = Value(std::move(text));
    return kNoError;
}

// Styles combine with "+" (Bold + Italic); Plain removes every face style.
ErrorCode TextStyleAdd(EvalContext&, const std::vector<Value>& args, Value& result) {
    Text text = args[0].AsText();
    const FaceBits faces = static_cast<FaceBits>(IntegerArgument(args[1], 0, face::kAllStyles));
    CharacterStyle style;
    style.SetFace(faces == face::kPlain ? face::kAllStyles : faces);
    if (faces == face::kPlain) {
        text.RemoveStyle(style);
    } else {
        text.ApplyStyle(style);
    }
    result = Value(std::move(text));
    return kNoError;
}

ErrorCode TextStyleRemove(EvalContext&, const std::vector<Value>& args, Value& result) {
    Text text = args[0].AsText();
    CharacterStyle style;
    style.SetFace(static_cast<FaceBits>(IntegerArgument(args[1], 0, face::kAllStyles)));
    text.RemoveStyle(style);
    result = Value(std::move(text));
    return kNoError;
}

}  // namespace fmhost::calc
