#include "ignored_leaks.h"

namespace items_test {

// No leak checker runs in the Windows build.
IgnoredLeaks::IgnoredLeaks() = default;
IgnoredLeaks::~IgnoredLeaks() = default;

}  // namespace items_test
