// The last-modified time of a file as the system keeps it, read without the code under test.
#pragma once

#include <cstdint>
#include <string>

namespace items_test {

// Seconds since 1970, with the fraction the system keeps; NaN when the file cannot be read.
double ModifiedSeconds(const std::u16string& path);

}  // namespace items_test
