// Bounds the recursion of parsing and evaluating on one thread, nested evaluations (a plug-in
// function calling back into the engine) included, so no calculation can exhaust the stack.
#pragma once

namespace fmhost::calc {

class DepthGuard {
  public:
    static constexpr int kMaxDepth = 150;

    DepthGuard() { ++depth_; }
    ~DepthGuard() { --depth_; }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;

    bool Exceeded() const { return depth_ > kMaxDepth; }

  private:
    static thread_local int depth_;
};

}  // namespace fmhost::calc
