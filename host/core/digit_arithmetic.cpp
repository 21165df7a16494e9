#include "core/digit_arithmetic.h"

#include <algorithm>

namespace fmhost::digits {

void TrimHigh(Magnitude& m) {
    while (!m.empty() && m.back() == 0)
        m.pop_back();
}

int Compare(const Magnitude& a, const Magnitude& b) {
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    for (size_t i = a.size(); i-- > 0;) {
        if (a[i] != b[i])
            return a[i] < b[i] ? -1 : 1;
    }
    return 0;
}

Magnitude Add(const Magnitude& a, const Magnitude& b) {
    Magnitude out;
    out.reserve(std::max(a.size(), b.size()) + 1);
    int carry = 0;
    for (size_t i = 0; i < a.size() || i < b.size() || carry; ++i) {
        int sum = carry;
        if (i < a.size())
            sum += a[i];
        if (i < b.size())
            sum += b[i];
        out.push_back(static_cast<uint8_t>(sum % 10));
        carry = sum / 10;
    }
    TrimHigh(out);
    return out;
}

Magnitude Subtract(const Magnitude& a, const Magnitude& b) {
    Magnitude out(a);
    int borrow = 0;
    for (size_t i = 0; i < out.size(); ++i) {
        int digit = out[i] - borrow - (i < b.size() ? b[i] : 0);
        borrow = digit < 0 ? 1 : 0;
        out[i] = static_cast<uint8_t>(digit + borrow * 10);
    }
    TrimHigh(out);
    return out;
}

Magnitude Multiply(const Magnitude& a, const Magnitude& b) {
    if (a.empty() || b.empty())
        return {};
    // Each cell collects at most 81 * min(size) before the single carry pass below.
    std::vector<uint32_t> wide(a.size() + b.size(), 0);
    for (size_t i = 0; i < a.size(); ++i) {
        for (size_t j = 0; j < b.size(); ++j)
            wide[i + j] += uint32_t(a[i]) * b[j];
    }
    for (size_t k = 0; k + 1 < wide.size(); ++k) {
        wide[k + 1] += wide[k] / 10;
        wide[k] %= 10;
    }
    Magnitude out(wide.size());
    for (size_t k = 0; k < wide.size(); ++k)
        out[k] = static_cast<uint8_t>(wide[k]);
    TrimHigh(out);
    return out;
}

Magnitude Shifted(const Magnitude& m, size_t places) {
    if (m.empty())
        return m;
    Magnitude out(places, 0);
    out.insert(out.end(), m.begin(), m.end());
    return out;
}

void DivMod(const Magnitude& dividend, const Magnitude& divisor, Magnitude& quotient,
            Magnitude& remainder) {
    quotient.assign(dividend.size(), 0);
    remainder.clear();
    for (size_t i = dividend.size(); i-- > 0;) {
        remainder.insert(remainder.begin(), dividend[i]);  // remainder = remainder * 10 + d
        TrimHigh(remainder);
        uint8_t count = 0;
        while (Compare(remainder, divisor) >= 0) {
            remainder = Subtract(remainder, divisor);
            ++count;
        }
        quotient[i] = count;
    }
    TrimHigh(quotient);
}

Magnitude FromUnsigned(uint64_t value) {
    Magnitude out;
    while (value != 0) {
        out.push_back(static_cast<uint8_t>(value % 10));
        value /= 10;
    }
    return out;
}

}  // namespace fmhost::digits
