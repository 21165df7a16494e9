#pragma once
// slib::Number: an exact decimal number, kept as canonical decimal text so that values such as
// 5000000000 or 0.1 pass through the plug-in without rounding.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "foundation/object.h"

namespace slib {

class Number : public Object {
  public:
    explicit Number(int64_t value);

    // Accepts an optional sign, digits and an optional '.' with more digits ("-12.50", ".5",
    // "7."). Anything else (empty text, exponents, spaces) gives null.
    static std::shared_ptr<Number> FromDecimalText(std::string_view text);

    // Canonical form: no leading zeros, no trailing fraction zeros, no "-0" ("-12.5", "0").
    const std::string& decimalText() const { return text_; }
    bool isInteger() const { return text_.find('.') == std::string::npos; }
    // The fraction is cut off (toward zero); values beyond the int64 range saturate.
    int64_t asInt64() const;
    double asDouble() const;

    std::shared_ptr<const String> description() const override;

  private:
    struct CanonicalText {};
    Number(CanonicalText, std::string text) : text_(std::move(text)) {}

    std::string text_;
};

}  // namespace slib
