// Texts: UTF-16 contents, ranges, searches, case and comparisons. Byte encodings are in
// text_bytes_exports.cpp, styles in text_style_exports.cpp.
#include <algorithm>
#include <cstring>

#include "core/wide_text.h"
#include "guard.h"
#include "objects.h"

using fmwrapper::Guard;
using fmwrapper::Ref;

namespace {

fmhost::Text& TextOf(void* self) {
    return Ref<FmxText>(self).text;
}
const fmhost::Text& TextOf(const void* self) {
    return Ref<FmxText>(self).text;
}

template <typename Unit>
std::u16string UnitsOf(const Unit* s, size_t length) {
    static_assert(sizeof(Unit) == sizeof(char16_t), "UTF-16 units");
    if (s == nullptr && length != 0)
        throw std::invalid_argument("null string");
    std::u16string units(length, u'\0');
    if (length != 0)
        std::memcpy(&units[0], s, length * sizeof(char16_t));
    return units;
}

std::u16string WideUnitsOf(const wchar_t* s, size_t length) {
    if (s == nullptr && length != 0)
        throw std::invalid_argument("null string");
    return length == 0 ? std::u16string() : fmhost::Utf16FromWide(std::wstring_view(s, length));
}

template <typename Unit>
size_t TerminatedLength(const Unit* s) {
    if (s == nullptr)
        throw std::invalid_argument("null string");
    size_t length = 0;
    while (s[length] != 0)
        ++length;
    return length;
}

}  // namespace

extern "C" {

FmxText* FM_Text_Constructor1(FmxErr& err) {
    return Guard(err, [] { return fmwrapper::New(FmxText{}); });
}

void FM_Text_Delete(void* self, FmxErr& err) {
    Guard(err, [&] { delete static_cast<FmxText*>(self); });
}

uint32_t FM_Text_GetSize(const void* self, FmxErr& err) {
    return Guard(err, [&] { return TextOf(self).Size(); });
}

void FM_Text_AssignWide(void* self, const wchar_t* s, FmxErr& err) {
    Guard(err, [&] { TextOf(self).Assign(WideUnitsOf(s, TerminatedLength(s))); });
}

void FM_Text_AssignWideWithLength(void* self, const wchar_t* s, uint32_t strlength, FmxErr& err) {
    Guard(err, [&] { TextOf(self).Assign(WideUnitsOf(s, strlength)); });
}

void FM_Text_AssignUnicode(void* self, const uint16_t* s, FmxErr& err) {
    Guard(err, [&] { TextOf(self).Assign(UnitsOf(s, TerminatedLength(s))); });
}

void FM_Text_AssignUnicodeWithLength(void* self, const uint16_t* s, uint32_t strlength,
                                     FmxErr& err) {
    Guard(err, [&] { TextOf(self).Assign(UnitsOf(s, strlength)); });
}

// No terminator is written: exactly the units of the range that exist.
void FM_Text_GetUnicode(const void* self, uint16_t* s, uint32_t position, uint32_t size,
                        FmxErr& err) {
    Guard(err, [&] {
        const std::u16string& chars = TextOf(self).Chars();
        if (position >= chars.size())
            return;
        const size_t count = std::min<size_t>(size, chars.size() - position);
        if (count == 0)
            return;
        if (s == nullptr)
            throw std::invalid_argument("null buffer");
        std::memcpy(s, chars.data() + position, count * sizeof(char16_t));
    });
}

void FM_Text_SetText(void* self, const FmxText& other, uint32_t position, uint32_t size,
                     FmxErr& err) {
    Guard(err, [&] {
        const fmhost::Text source = Ref(other).text;  // other may be self
        TextOf(self).SetText(source, position, size);
    });
}

void FM_Text_AppendText(void* self, const FmxText& other, uint32_t position, uint32_t size,
                        FmxErr& err) {
    Guard(err, [&] {
        const fmhost::Text source = Ref(other).text;
        TextOf(self).AppendText(source, position, size);
    });
}

void FM_Text_InsertText(void* self, const FmxText& other, uint32_t position, FmxErr& err) {
    Guard(err, [&] {
        const fmhost::Text source = Ref(other).text;
        TextOf(self).InsertText(source, position);
    });
}

void FM_Text_DeleteText(void* self, uint32_t positionToDelete, uint32_t sizeToDelete, FmxErr& err) {
    Guard(err, [&] { TextOf(self).DeleteText(positionToDelete, sizeToDelete); });
}

uint32_t FM_Text_Find(const void* self, const FmxText& other, uint32_t position, FmxErr& err) {
    return Guard(err, [&] { return TextOf(self).Find(Ref(other).text, position); });
}

uint32_t FM_Text_FindPrev(const void* self, const FmxText& other, uint32_t position, FmxErr& err) {
    return Guard(err, [&] { return TextOf(self).FindPrev(Ref(other).text, position); });
}

uint32_t FM_Text_FindIgnoringCase(const void* self, const FmxText& other, uint32_t position,
                                  FmxErr& err) {
    return Guard(err, [&] { return TextOf(self).FindIgnoringCase(Ref(other).text, position); });
}

uint32_t FM_Text_FindPrevIgnoringCase(const void* self, const FmxText& other, uint32_t position,
                                      FmxErr& err) {
    return Guard(err, [&] { return TextOf(self).FindPrevIgnoringCase(Ref(other).text, position); });
}

// Declared on a const text, yet they change it: that is the interface's contract.
void FM_Text_Uppercase(const void* self, FmxErr& err) {
    Guard(err, [&] { TextOf(const_cast<void*>(self)).Uppercase(); });
}

void FM_Text_Lowercase(const void* self, FmxErr& err) {
    Guard(err, [&] { TextOf(const_cast<void*>(self)).Lowercase(); });
}

bool FM_Text_operatorEQ(const void* self, const FmxText& that, FmxErr& err) {
    return Guard(err, [&] { return TextOf(self) == Ref(that).text; });
}

bool FM_Text_operatorNE(const void* self, const FmxText& that, FmxErr& err) {
    return Guard(err, [&] { return TextOf(self) != Ref(that).text; });
}

bool FM_Text_operatorLT(const void* self, const FmxText& that, FmxErr& err) {
    return Guard(err, [&] { return TextOf(self) < Ref(that).text; });
}

bool FM_Text_operatorLE(const void* self, const FmxText& that, FmxErr& err) {
    return Guard(err, [&] { return TextOf(self) <= Ref(that).text; });
}

bool FM_Text_operatorGT(const void* self, const FmxText& that, FmxErr& err) {
    return Guard(err, [&] { return TextOf(self) > Ref(that).text; });
}

bool FM_Text_operatorGE(const void* self, const FmxText& that, FmxErr& err) {
    return Guard(err, [&] { return TextOf(self) >= Ref(that).text; });
}

}  // extern "C"
