// ELF objects carry no string table of their own: the texts are compiled in from the same
// source the Windows resources are made from.
#include <cstdint>

#include "resources/resource_ids.h"
#include "resources/version.h"
#include "shell/resource_text.h"

namespace fmlib {

namespace {

struct ResourceString {
    uint32_t id;
    const char16_t* text;
};

#define VF_STRING(id, text) {id, u"" text},
constexpr ResourceString kResourceStrings[] = {
#include "resources/strings.inc"
};
#undef VF_STRING

}  // namespace

std::u16string LoadResourceString(uint32_t id, size_t capacity) {
    if (capacity == 0) {
        return {};
    }
    for (const ResourceString& entry : kResourceStrings) {
        if (entry.id == id) {
            const std::u16string text(entry.text);
            return text.substr(0, capacity - 1);
        }
    }
    return {};
}

}  // namespace fmlib
