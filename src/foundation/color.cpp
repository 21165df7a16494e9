#include "foundation/color.h"

#include <cstdio>

#include "foundation/utf16_string.h"

namespace slib {

bool Color::operator==(const Color& other) const {
    return red_ == other.red_ && green_ == other.green_ && blue_ == other.blue_ &&
           alpha_ == other.alpha_;
}

std::shared_ptr<const String> Color::description() const {
    char text[10];
    std::snprintf(text, sizeof text, "#%02X%02X%02X%02X", red_, green_, blue_, alpha_);
    return String::FromUtf8(text);
}

}  // namespace slib
