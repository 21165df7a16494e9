// Debian 12's static libstdc++ names arc4random (glibc 2.36) for std::random_device, which every
// std::string exception drags in. Defined inside the plug-in, it needs no GLIBC_2.36 and still
// loads on Ubuntu 22.04's glibc 2.35.
#include <sys/random.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>

extern "C" __attribute__((visibility("hidden"))) std::uint32_t arc4random() noexcept {
    std::uint32_t value = 0;
    auto* bytes = reinterpret_cast<unsigned char*>(&value);
    std::size_t filled = 0;
    while (filled < sizeof value) {
        const ssize_t got = getrandom(bytes + filled, sizeof value - filled, 0);
        if (got > 0) {
            filled += static_cast<std::size_t>(got);
        } else if (errno != EINTR) {
            break;
        }
    }
    return value;
}
