#include "foundation/posix/partial_name.h"

#include <unistd.h>

#include <atomic>
#include <cstdint>

namespace slib {

namespace {

std::atomic<uint32_t> nameCount{0};

}  // namespace

std::string PartialName() {
    return "~vf-" + std::to_string(::getpid()) + "-" + std::to_string(nameCount++) + ".partial";
}

}  // namespace slib
