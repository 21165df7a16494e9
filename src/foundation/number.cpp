#include "foundation/number.h"

#include <charconv>
#include <limits>

#include "foundation/utf16_string.h"

namespace slib {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace

Number::Number(int64_t value) : text_(std::to_string(value)) {}

std::shared_ptr<Number> Number::FromDecimalText(std::string_view text) {
    bool negative = false;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    const size_t point = text.find('.');
    std::string_view whole = text.substr(0, point);
    std::string_view fraction =
        point == std::string_view::npos ? std::string_view() : text.substr(point + 1);
    if (whole.empty() && fraction.empty()) {
        return nullptr;
    }
    for (std::string_view part : {whole, fraction}) {
        for (char c : part) {
            if (!IsDigit(c)) {
                return nullptr;
            }
        }
    }
    while (!whole.empty() && whole.front() == '0') {
        whole.remove_prefix(1);
    }
    while (!fraction.empty() && fraction.back() == '0') {
        fraction.remove_suffix(1);
    }
    std::string canonical(whole.empty() ? "0" : whole);
    if (!fraction.empty()) {
        canonical.append(".").append(fraction);
    }
    if (negative && canonical != "0") {
        canonical.insert(0, "-");
    }
    return std::shared_ptr<Number>(new Number(CanonicalText{}, std::move(canonical)));
}

int64_t Number::asInt64() const {
    const std::string whole = text_.substr(0, text_.find('.'));
    int64_t value = 0;
    const auto result = std::from_chars(whole.data(), whole.data() + whole.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        return whole.front() == '-' ? std::numeric_limits<int64_t>::min()
                                    : std::numeric_limits<int64_t>::max();
    }
    return value;
}

double Number::asDouble() const {
    double value = 0;
    const auto result = std::from_chars(text_.data(), text_.data() + text_.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        // Too large overflows to infinity; a tiny fraction (whole part 0) underflows to zero.
        const bool negative = text_.front() == '-';
        const bool tiny = text_.compare(negative ? 1 : 0, 2, "0.") == 0;
        if (tiny) {
            return negative ? -0.0 : 0.0;
        }
        const double infinity = std::numeric_limits<double>::infinity();
        return negative ? -infinity : infinity;
    }
    return value;
}

std::shared_ptr<const String> Number::description() const {
    return String::FromUtf8(text_);
}

}  // namespace slib
