// Character styles over ranges of a text.
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

}  // namespace

extern "C" {

void FM_Text_GetStyle(const void* self, FmxCharacterStyle& style, uint32_t position, FmxErr& err) {
    Guard(err, [&] { Ref(style).style = TextOf(self).StyleAt(position); });
}

void FM_Text_GetDefaultStyle(const void* self, FmxCharacterStyle& style, FmxErr& err) {
    Guard(err, [&] { Ref(style).style = TextOf(self).DefaultStyle(); });
}

void FM_Text_SetStyle(void* self, const FmxCharacterStyle& style, uint32_t position, uint32_t size,
                      FmxErr& err) {
    Guard(err, [&] { TextOf(self).SetStyle(Ref(style).style, position, size); });
}

void FM_Text_RemoveStyle(void* self, const FmxCharacterStyle& style, FmxErr& err) {
    Guard(err, [&] { TextOf(self).RemoveStyle(Ref(style).style); });
}

void FM_Text_ResetAllStyleBuffers(void* self, FmxErr& err) {
    Guard(err, [&] { TextOf(self).ResetAllStyles(); });
}

}  // extern "C"
