// While one lives, the leak checker (where the build has one) ignores what this thread allocates.
// For injected host faults alone: the emulated host fails a Delete like any other call, so the
// object it was asked to free stays, by design of the fault and not by the plug-in's.
#pragma once

namespace items_test {

class IgnoredLeaks {
  public:
    IgnoredLeaks();
    ~IgnoredLeaks();
    IgnoredLeaks(const IgnoredLeaks&) = delete;
    IgnoredLeaks& operator=(const IgnoredLeaks&) = delete;
};

}  // namespace items_test
