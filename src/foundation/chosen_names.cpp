#include "foundation/chosen_names.h"

namespace slib {
namespace {

// The zero-terminated string starting at `at`, cut at the end of the buffer.
std::u16string StringAt(const char16_t* buffer, size_t capacity, size_t at) {
    size_t end = at;
    while (end < capacity && buffer[end] != u'\0') {
        ++end;
    }
    return std::u16string(buffer + at, end - at);
}

}  // namespace

std::vector<std::u16string> SplitChosenNames(const char16_t* buffer, size_t capacity) {
    std::vector<std::u16string> paths;
    const std::u16string first = StringAt(buffer, capacity, 0);
    if (first.empty()) {
        return paths;
    }
    size_t at = first.size() + 1;
    if (at >= capacity || buffer[at] == u'\0') {
        paths.push_back(first);
        return paths;
    }
    const std::u16string folder = first.back() == u'\\' ? first : first + u"\\";
    while (at < capacity && buffer[at] != u'\0') {
        const std::u16string name = StringAt(buffer, capacity, at);
        paths.push_back(folder + name);
        at += name.size() + 1;
    }
    return paths;
}

}  // namespace slib
