// Runs the random-call soak through fmhost.exe: batches of generated calculations, each batch one
// host process with --verbose, in a scratch folder of its own. Any answer is accepted (a result or
// an error); what counts as a problem is a host that does not exit normally, a call that goes
// unanswered, an item appearing outside the scratch folder, or handles, GDI objects or private
// bytes growing past the given bounds over a batch.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vf::soak {

struct Bounds {
    int64_t handles = 32;  // per batch, after less the count before the first calculation
    int64_t gdiObjects = 32;
    int64_t privateBytes = 4 << 20;
};

struct Figures {
    size_t calls = 0;
    size_t answered = 0;
    size_t batches = 0;
    // The largest growth seen over one batch; GDI stays empty where the system cannot count.
    int64_t handleGrowth = 0;
    std::optional<int64_t> gdiGrowth;
    int64_t privateGrowth = 0;
    double seconds = 0;
    std::vector<std::string> problems;
};

// `calls` calculations from `seed`, `batch` per host process; `progress` hears one line per batch.
Figures Run(uint64_t seed, size_t calls, size_t batch, const Bounds& bounds,
            const std::function<void(const std::string&)>& progress);

}  // namespace vf::soak
