#pragma once
// A fixed set of threads running one body, stopped and joined when the set goes: declare it as
// the last member of its owner, so the threads end before the state they use. `stop` tells the
// bodies to return (it sets the owner's flag and wakes them); it is also called, before the
// threads already started are joined, when one of them cannot start.

#include <functional>
#include <thread>
#include <vector>

namespace slib {

class WorkerThreads {
  public:
    WorkerThreads(unsigned count, const std::function<void()>& body, std::function<void()> stop);
    ~WorkerThreads();
    WorkerThreads(const WorkerThreads&) = delete;
    WorkerThreads& operator=(const WorkerThreads&) = delete;

  private:
    void stopAndJoin();

    std::function<void()> stop_;
    std::vector<std::thread> threads_;
};

}  // namespace slib
