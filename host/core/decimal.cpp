#include "core/decimal.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "core/digit_arithmetic.h"

namespace fmhost {

namespace dg = digits;

Decimal::Decimal(int64_t value, int precision) {
    negative_ = value < 0;
    // Magnitude of INT64_MIN does not fit in int64: go through unsigned.
    const uint64_t magnitude =
        negative_ ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
    digits_ = dg::FromUnsigned(magnitude);
    SetPrecision(precision);
    Canonicalize();
}

Decimal Decimal::Invalid() {
    Decimal out;
    out.valid_ = false;
    return out;
}

Decimal Decimal::FromParts(bool negative, std::vector<uint8_t> digits, int scale, int precision) {
    Decimal out;
    out.negative_ = negative;
    out.digits_ = std::move(digits);
    out.scale_ = scale;
    out.precision_ = precision;
    out.Canonicalize();
    return out;
}

void Decimal::Canonicalize() {
    if (!valid_)
        return;
    dg::TrimHigh(digits_);
    if (scale_ > kMaxPrecision) {
        *this = Rounded(kMaxPrecision);
        return;
    }
    size_t zeros = 0;
    while (zeros < digits_.size() && static_cast<int>(zeros) < scale_ && digits_[zeros] == 0) {
        ++zeros;
    }
    digits_.erase(digits_.begin(), digits_.begin() + static_cast<std::ptrdiff_t>(zeros));
    scale_ -= static_cast<int>(zeros);
    if (digits_.empty()) {
        negative_ = false;
        scale_ = 0;
    }
    if (static_cast<int>(digits_.size()) - scale_ > kMaxIntegerDigits)
        *this = Invalid();
}

std::optional<Decimal> Decimal::Parse(std::u16string_view text) {
    std::string narrow;
    narrow.reserve(text.size());
    for (char16_t c : text) {
        if (c > 0x7F)
            return std::nullopt;
        narrow.push_back(static_cast<char>(c));
    }
    return Parse(std::string_view(narrow));
}

std::optional<Decimal> Decimal::Parse(std::string_view text) {
    size_t i = 0;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+'))
        negative = text[i++] == '-';
    std::vector<uint8_t> high_first;
    int scale = 0;
    bool point = false;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (c >= '0' && c <= '9') {
            high_first.push_back(static_cast<uint8_t>(c - '0'));
            if (point)
                ++scale;
        } else if (c == '.' && !point) {
            point = true;
        } else {
            return std::nullopt;
        }
    }
    if (high_first.empty())
        return std::nullopt;
    std::reverse(high_first.begin(), high_first.end());
    return FromParts(negative, std::move(high_first), scale, kDefaultPrecision);
}

Decimal Decimal::FromDouble(double value, int precision) {
    if (!std::isfinite(value))
        return Invalid();
    char buffer[64];
    // Shortest form that reads back as the same double, e.g. "1.5e-01".
    auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    const std::string_view text(buffer, static_cast<size_t>(result.ptr - buffer));
    const size_t e = text.find('e');
    std::optional<Decimal> mantissa = Parse(text.substr(0, e));
    int exponent = 0;
    std::from_chars(text.data() + e + 1 + (text[e + 1] == '+' ? 1 : 0), text.data() + text.size(),
                    exponent);
    if (!mantissa)
        return Invalid();
    Decimal out = *mantissa;
    out.scale_ -= exponent;
    if (out.scale_ < 0) {
        out.digits_ = dg::Shifted(out.digits_, static_cast<size_t>(-out.scale_));
        out.scale_ = 0;
    }
    out.SetPrecision(precision);
    out.Canonicalize();
    return out;
}

bool Decimal::IsInteger() const {
    return valid_ && scale_ == 0;
}

void Decimal::SetPrecision(int precision) {
    precision_ = std::clamp(precision, kMinPrecision, kMaxPrecision);
}

namespace {

// Both magnitudes brought to the larger scale.
int Align(const std::vector<uint8_t>& a, int aScale, const std::vector<uint8_t>& b, int bScale,
          std::vector<uint8_t>& outA, std::vector<uint8_t>& outB) {
    const int scale = std::max(aScale, bScale);
    outA = dg::Shifted(a, static_cast<size_t>(scale - aScale));
    outB = dg::Shifted(b, static_cast<size_t>(scale - bScale));
    return scale;
}

}  // namespace

Decimal Decimal::operator+(const Decimal& other) const {
    if (!valid_ || !other.valid_)
        return Invalid();
    std::vector<uint8_t> a, b;
    const int scale = Align(digits_, scale_, other.digits_, other.scale_, a, b);
    const int precision = std::max(precision_, other.precision_);
    if (negative_ == other.negative_) {
        return FromParts(negative_, dg::Add(a, b), scale, precision);
    }
    if (dg::Compare(a, b) >= 0)
        return FromParts(negative_, dg::Subtract(a, b), scale, precision);
    return FromParts(other.negative_, dg::Subtract(b, a), scale, precision);
}

Decimal Decimal::operator-(const Decimal& other) const {
    return *this + (-other);
}

Decimal Decimal::operator-() const {
    Decimal out = *this;
    if (out.valid_ && !out.digits_.empty())
        out.negative_ = !out.negative_;
    return out;
}

Decimal Decimal::operator*(const Decimal& other) const {
    if (!valid_ || !other.valid_)
        return Invalid();
    return FromParts(negative_ != other.negative_, dg::Multiply(digits_, other.digits_),
                     scale_ + other.scale_, std::max(precision_, other.precision_));
}

Decimal Decimal::operator/(const Decimal& other) const {
    if (!valid_ || !other.valid_ || other.digits_.empty())
        return Invalid();
    const int precision = std::max(precision_, other.precision_);
    // (a / b) * 10^(precision + 1): one guard digit decides the rounding.
    const auto numerator = dg::Shifted(digits_, static_cast<size_t>(precision + 1 + other.scale_));
    const auto denominator = dg::Shifted(other.digits_, static_cast<size_t>(scale_));
    std::vector<uint8_t> quotient, remainder;
    dg::DivMod(numerator, denominator, quotient, remainder);
    const bool roundUp = !quotient.empty() && quotient.front() >= 5;
    if (!quotient.empty())
        quotient.erase(quotient.begin());
    if (roundUp)
        quotient = dg::Add(quotient, {1});
    return FromParts(negative_ != other.negative_, std::move(quotient), precision, precision);
}

Decimal Decimal::Power(const Decimal& exponent) const {
    if (!valid_ || !exponent.valid_)
        return Invalid();
    if (exponent.IsInteger() && exponent.digits_.size() <= 5) {
        int64_t n = exponent.ToInt64();
        const bool invert = n < 0;
        n = invert ? -n : n;
        Decimal result(1, precision_);
        Decimal base = *this;
        while (n > 0 && result.valid_) {
            if (n & 1)
                result = result * base;
            n >>= 1;
            if (n > 0)
                base = base * base;
        }
        return invert ? Decimal(1, precision_) / result : result;
    }
    return FromDouble(std::pow(ToDouble(), exponent.ToDouble()), precision_);
}

Decimal Decimal::Truncated() const {
    if (!valid_ || scale_ == 0)
        return *this;
    Decimal out = *this;
    const size_t cut = std::min(static_cast<size_t>(scale_), digits_.size());
    out.digits_.erase(out.digits_.begin(), out.digits_.begin() + static_cast<std::ptrdiff_t>(cut));
    out.scale_ = 0;
    out.Canonicalize();
    return out;
}

Decimal Decimal::Floor() const {
    Decimal out = Truncated();
    if (negative_ && out != *this)
        out = out - Decimal(1);
    return out;
}

Decimal Decimal::Rounded(int places) const {
    if (!valid_ || scale_ <= places)
        return *this;
    const size_t cut = static_cast<size_t>(scale_ - places);  // digits dropped
    const bool roundUp = cut <= digits_.size() && digits_[cut - 1] >= 5;
    std::vector<uint8_t> kept;
    if (cut < digits_.size()) {
        kept.assign(digits_.begin() + static_cast<std::ptrdiff_t>(cut), digits_.end());
    }
    if (roundUp)
        kept = dg::Add(kept, {1});
    if (places < 0) {
        kept = dg::Shifted(kept, static_cast<size_t>(-places));
        places = 0;
    }
    return FromParts(negative_, std::move(kept), places, precision_);
}

int Decimal::Compare(const Decimal& other) const {
    if (!valid_ || !other.valid_)
        return int(valid_) - int(other.valid_);
    if (negative_ != other.negative_)
        return negative_ ? -1 : 1;
    std::vector<uint8_t> a, b;
    Align(digits_, scale_, other.digits_, other.scale_, a, b);
    const int magnitude = dg::Compare(a, b);
    return negative_ ? -magnitude : magnitude;
}

int64_t Decimal::ToInt64() const {
    if (!valid_)
        return 0;
    const uint64_t limit = negative_ ? uint64_t(1) << 63 : (uint64_t(1) << 63) - 1;
    uint64_t value = 0;
    for (size_t i = digits_.size(); i-- > static_cast<size_t>(scale_);) {
        if (value > (limit - digits_[i]) / 10) {
            value = limit;
            break;
        }
        value = value * 10 + digits_[i];
    }
    return negative_ ? static_cast<int64_t>(0 - value) : static_cast<int64_t>(value);
}

double Decimal::ToDouble() const {
    if (!valid_)
        return std::numeric_limits<double>::quiet_NaN();
    const std::string text = ToString();
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::string Decimal::ToString() const {
    if (!valid_)
        return "?";
    if (digits_.empty())
        return "0";
    std::string out;
    if (negative_)
        out.push_back('-');
    const int integerDigits = static_cast<int>(digits_.size()) - scale_;
    if (integerDigits <= 0) {
        out += "0.";
        out.append(static_cast<size_t>(-integerDigits), '0');
    }
    for (size_t i = digits_.size(); i-- > 0;) {
        out.push_back(static_cast<char>('0' + digits_[i]));
        if (static_cast<int>(i) == scale_ && i > 0 && integerDigits > 0)
            out.push_back('.');
    }
    return out;
}

std::u16string Decimal::ToU16String() const {
    const std::string narrow = ToString();
    return std::u16string(narrow.begin(), narrow.end());
}

}  // namespace fmhost
