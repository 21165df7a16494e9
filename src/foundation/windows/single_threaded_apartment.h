#pragma once
// Shell dialogs need a single-threaded COM apartment. A thread the host already put in the
// multithreaded one cannot change: the work then runs on a thread of its own, in its own
// apartment, while the calling thread waits. A throw reaches the caller either way.

#include <functional>

namespace slib {

void RunInSingleThreadedApartment(const std::function<void()>& work);

}  // namespace slib
