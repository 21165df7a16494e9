#pragma once
// slib::AttributedString: text with one character style for the whole text. Each trait is
// optional; an absent trait means "as the layout sets it".

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "foundation/color.h"
#include "foundation/font.h"
#include "foundation/utf16_string.h"

namespace slib {

struct TextAttributes {
    std::shared_ptr<const Font> font;
    std::optional<uint16_t> size;  // points
    std::shared_ptr<const Color> color;
    std::optional<uint16_t> face;  // the host's face bits (bold 0x0100, italic 0x0200, ...)

    bool empty() const { return !font && !size && !color && !face; }
};

class AttributedString : public String {
  public:
    AttributedString() = default;
    explicit AttributedString(std::u16string text, TextAttributes attributes = {})
        : String(std::move(text)), attributes_(std::move(attributes)) {}

    const TextAttributes& attributes() const { return attributes_; }

  private:
    TextAttributes attributes_;
};

}  // namespace slib
