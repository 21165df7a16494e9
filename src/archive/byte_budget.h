#pragma once
// A ceiling on the bytes that whole entries hold in memory at once, while they are read, decoded
// and written on several threads. A claim is taken before an entry's bytes are read and goes
// back when its last buffer does; a claim larger than the whole budget still goes through when
// nothing else is claimed, so no entry waits forever. Closing wakes every waiting claim with
// nothing, for a side that has given up.

#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace archive {

class ByteBudget {
  public:
    // Gives its bytes back when it goes; moves, never copies.
    class Claim {
      public:
        Claim() = default;
        Claim(Claim&& other) noexcept;
        Claim& operator=(Claim&& other) noexcept;
        ~Claim();
        Claim(const Claim&) = delete;
        Claim& operator=(const Claim&) = delete;
        explicit operator bool() const { return budget_ != nullptr; }

      private:
        friend class ByteBudget;
        Claim(ByteBudget* budget, size_t bytes) : budget_(budget), bytes_(bytes) {}
        ByteBudget* budget_ = nullptr;
        size_t bytes_ = 0;
    };

    explicit ByteBudget(size_t limit) : limit_(limit) {}
    ByteBudget(const ByteBudget&) = delete;
    ByteBudget& operator=(const ByteBudget&) = delete;

    // Waits until `bytes` fit beside the claims outstanding. An empty claim once closed.
    Claim claim(size_t bytes);
    void close();

  private:
    void giveBack(size_t bytes);

    const size_t limit_;
    std::mutex mutex_;
    std::condition_variable freed_;
    size_t claimed_ = 0;
    size_t waiters_ = 0;
    bool closed_ = false;
};

}  // namespace archive
