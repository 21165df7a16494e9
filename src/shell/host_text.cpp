#include "shell/host_text.h"

#include "fmx_constants.h"
#include "shell/host_error.h"

namespace fmlib {

namespace {

const uint16_t* AsHostUnits(const char16_t* units) {
    return reinterpret_cast<const uint16_t*>(units);
}

}  // namespace

uint32_t TextSize(const FmxText& text) {
    return HostCall(FM_Text_GetSize, &text);
}

void TextGetUnicode(const FmxText& text, char16_t* units, uint32_t position, uint32_t size) {
    HostCall(FM_Text_GetUnicode, &text, reinterpret_cast<uint16_t*>(units), position, size);
}

void TextAssignUnicode(FmxText& text, std::u16string_view units) {
    HostCall(FM_Text_AssignUnicodeWithLength, &text, AsHostUnits(units.data()),
             static_cast<uint32_t>(units.size()));
}

void TextAssign(FmxText& text, const char* bytes, int32_t encoding) {
    HostCall(FM_Text_Assign, &text, bytes, encoding);
}

void TextAssignWithLength(FmxText& text, const char* bytes, uint32_t length, int32_t encoding) {
    HostCall(FM_Text_AssignWithLength, &text, bytes, length, encoding);
}

void TextGetBytes(const FmxText& text, char* buffer, uint32_t bufferSize, uint32_t position,
                  uint32_t size, int32_t encoding) {
    HostCall(FM_Text_GetBytes, &text, buffer, bufferSize, position, size, encoding);
}

void TextSetText(FmxText& text, const FmxText& source, uint32_t position, uint32_t size) {
    HostCall(FM_Text_SetText, &text, source, position, size);
}

void TextAppendText(FmxText& text, const FmxText& source, uint32_t position, uint32_t size) {
    HostCall(FM_Text_AppendText, &text, source, position, size);
}

uint32_t TextFind(const FmxText& text, const FmxText& what, uint32_t position) {
    return HostCall(FM_Text_Find, &text, what, position);
}

uint32_t TextFindIgnoringCase(const FmxText& text, const FmxText& what, uint32_t position) {
    return HostCall(FM_Text_FindIgnoringCase, &text, what, position);
}

void TextDeleteText(FmxText& text, uint32_t position, uint32_t size) {
    HostCall(FM_Text_DeleteText, &text, position, size);
}

void TextLowercase(const FmxText& text) {
    HostCall(FM_Text_Lowercase, &text);
}

bool TextEquals(const FmxText& a, const FmxText& b) {
    return HostCall(FM_Text_operatorEQ, &a, b);
}

void TextGetStyle(const FmxText& text, FmxCharacterStyle& style, uint32_t position) {
    HostCall(FM_Text_GetStyle, &text, style, position);
}

void TextSetStyle(FmxText& text, const FmxCharacterStyle& style, uint32_t position, uint32_t size) {
    HostCall(FM_Text_SetStyle, &text, style, position, size);
}

std::u16string TextUnits(const FmxText& text) {
    std::u16string units(TextSize(text), u'\0');
    if (!units.empty()) {
        TextGetUnicode(text, units.data(), 0, static_cast<uint32_t>(units.size()));
    }
    return units;
}

TextPtr MakeText(std::u16string_view units) {
    TextPtr text = NewText();
    TextAssignUnicode(*text, units);
    return text;
}

TextPtr MakeNativeText(const char* bytes) {
    TextPtr text = NewText();
    TextAssign(*text, bytes, fmx::kEncodingNative);
    return text;
}

TextPtr CopyText(const FmxText& source) {
    TextPtr text = NewText();
    TextSetText(*text, source, 0, fmx::kSizeEnd);
    return text;
}

}  // namespace fmlib
