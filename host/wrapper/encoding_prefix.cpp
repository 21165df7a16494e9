#include "encoding.h"

namespace fmwrapper {

std::string EncodePrefix(std::u16string_view units, int32_t encoding, size_t capacity) {
    std::string whole = Encode(units, encoding);
    if (whole.size() <= capacity)
        return whole;
    // The encoded length grows with the prefix length: search for the longest prefix that fits.
    size_t fits = 0;
    size_t tooLong = units.size();
    while (tooLong - fits > 1) {
        const size_t middle = fits + (tooLong - fits) / 2;
        if (Encode(units.substr(0, middle), encoding).size() <= capacity) {
            fits = middle;
        } else {
            tooLong = middle;
        }
    }
    if (fits > 0 && units[fits - 1] >= 0xD800 && units[fits - 1] <= 0xDBFF)
        --fits;
    return Encode(units.substr(0, fits), encoding);
}

}  // namespace fmwrapper
