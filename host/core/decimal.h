// An exact decimal number: a sign, a magnitude of decimal digits and a scale (digits after
// the point). Addition, subtraction and multiplication are exact; division keeps
// `Precision()` digits after the point, rounding half away from zero. A failed operation
// (division by zero, overflow) gives the invalid number, which prints as "?" and stays invalid
// through further arithmetic.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fmhost {

class Decimal {
  public:
    static constexpr int kDefaultPrecision = 16;
    static constexpr int kMinPrecision = 16;  // the host's SetPrecision ignores less
    static constexpr int kMaxPrecision = 400;
    static constexpr int kMaxIntegerDigits = 400;  // beyond this a result is invalid

    Decimal() = default;  // 0
    // Implicit on purpose: an integer is a number.
    Decimal(int64_t value, int precision = kDefaultPrecision);
    // Shortest decimal text that reads back as the same double (0.1 gives 0.1).
    // NaN and infinities give the invalid number.
    static Decimal FromDouble(double value, int precision = kDefaultPrecision);
    // Strict form: optional "-" or "+", digits, optional "." and digits (".5" and "5." too).
    static std::optional<Decimal> Parse(std::string_view text);
    static std::optional<Decimal> Parse(std::u16string_view text);
    static Decimal Invalid();

    bool IsValid() const { return valid_; }
    bool IsZero() const { return valid_ && digits_.empty(); }
    bool IsNegative() const { return valid_ && negative_; }
    bool IsInteger() const;

    int Precision() const { return precision_; }
    void SetPrecision(int precision);  // clamped to [kMinPrecision, kMaxPrecision]

    // Results take the larger precision of the two operands.
    Decimal operator+(const Decimal& other) const;
    Decimal operator-(const Decimal& other) const;
    Decimal operator*(const Decimal& other) const;
    Decimal operator/(const Decimal& other) const;  // invalid when `other` is zero
    Decimal operator-() const;
    // Integer powers are exact (negative ones divide); others go through double.
    Decimal Power(const Decimal& exponent) const;

    // Toward zero / toward minus infinity / half away from zero at `places` decimals.
    Decimal Truncated() const;
    Decimal Floor() const;
    Decimal Rounded(int places) const;

    // -1, 0, 1; an invalid number sorts before every valid one.
    int Compare(const Decimal& other) const;
    friend bool operator==(const Decimal& a, const Decimal& b) { return a.Compare(b) == 0; }
    friend bool operator!=(const Decimal& a, const Decimal& b) { return a.Compare(b) != 0; }
    friend bool operator<(const Decimal& a, const Decimal& b) { return a.Compare(b) < 0; }
    friend bool operator<=(const Decimal& a, const Decimal& b) { return a.Compare(b) <= 0; }
    friend bool operator>(const Decimal& a, const Decimal& b) { return a.Compare(b) > 0; }
    friend bool operator>=(const Decimal& a, const Decimal& b) { return a.Compare(b) >= 0; }

    // Truncates toward zero and saturates at the int64 range; invalid gives 0.
    int64_t ToInt64() const;
    double ToDouble() const;  // invalid gives NaN
    // As the host prints numbers: "-50", "0.5", "5000000000"; no exponent, no trailing
    // zeros; "?" when invalid.
    std::string ToString() const;
    std::u16string ToU16String() const;

  private:
    static Decimal FromParts(bool negative, std::vector<uint8_t> digits, int scale, int precision);
    void Canonicalize();  // strips leading and trailing zeros, checks the size limit

    // Magnitude, least significant digit first, no leading zeros (zero = empty).
    std::vector<uint8_t> digits_;
    int scale_ = 0;  // number of digits_ after the decimal point
    bool negative_ = false;
    bool valid_ = true;
    int precision_ = kDefaultPrecision;
};

}  // namespace fmhost
