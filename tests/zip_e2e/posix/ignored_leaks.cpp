#include "ignored_leaks.h"

// Present when the sanitizers are linked in, null otherwise.
extern "C" void __lsan_disable() __attribute__((weak));
extern "C" void __lsan_enable() __attribute__((weak));

namespace items_test {

IgnoredLeaks::IgnoredLeaks() {
    if (__lsan_disable != nullptr) {
        __lsan_disable();
    }
}

IgnoredLeaks::~IgnoredLeaks() {
    if (__lsan_enable != nullptr) {
        __lsan_enable();
    }
}

}  // namespace items_test
