#pragma once
// slib::Color: an 8-bit-per-channel RGBA colour, as text styles carry it.

#include <cstdint>
#include <memory>

#include "foundation/object.h"

namespace slib {

class Color : public Object {
  public:
    Color(uint8_t red, uint8_t green, uint8_t blue, uint8_t alpha = 255)
        : red_(red), green_(green), blue_(blue), alpha_(alpha) {}

    uint8_t red() const { return red_; }
    uint8_t green() const { return green_; }
    uint8_t blue() const { return blue_; }
    uint8_t alpha() const { return alpha_; }
    bool operator==(const Color& other) const;
    bool operator!=(const Color& other) const { return !(*this == other); }

    // "#RRGGBBAA" in upper-case hex.
    std::shared_ptr<const String> description() const override;

  private:
    uint8_t red_, green_, blue_, alpha_;
};

}  // namespace slib
