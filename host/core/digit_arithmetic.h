// Unsigned arithmetic on decimal magnitudes stored least significant digit first, with no
// leading (high) zeros; zero is the empty vector. Internal to Decimal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace fmhost::digits {

using Magnitude = std::vector<uint8_t>;

void TrimHigh(Magnitude& m);
int Compare(const Magnitude& a, const Magnitude& b);
Magnitude Add(const Magnitude& a, const Magnitude& b);
Magnitude Subtract(const Magnitude& a, const Magnitude& b);  // requires a >= b
Magnitude Multiply(const Magnitude& a, const Magnitude& b);
// Multiplies by 10^places.
Magnitude Shifted(const Magnitude& m, size_t places);
// Quotient and remainder; `divisor` must not be zero.
void DivMod(const Magnitude& dividend, const Magnitude& divisor, Magnitude& quotient,
            Magnitude& remainder);
Magnitude FromUnsigned(uint64_t value);

}  // namespace fmhost::digits
