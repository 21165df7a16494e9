#include "archive/byte_budget.h"

#include <utility>

namespace archive {

ByteBudget::Claim::Claim(Claim&& other) noexcept
    : budget_(std::exchange(other.budget_, nullptr)), bytes_(other.bytes_) {}

ByteBudget::Claim& ByteBudget::Claim::operator=(Claim&& other) noexcept {
    if (this != &other) {
        Claim old(std::move(*this));
        budget_ = std::exchange(other.budget_, nullptr);
        bytes_ = other.bytes_;
    }
    return *this;
}

ByteBudget::Claim::~Claim() {
    if (budget_) {
        budget_->giveBack(bytes_);
    }
}

ByteBudget::Claim ByteBudget::claim(size_t bytes) {
    std::unique_lock<std::mutex> lock(mutex_);
    const auto fits = [&] { return closed_ || claimed_ == 0 || claimed_ + bytes <= limit_; };
    if (!fits()) {
        ++waiters_;
        freed_.wait(lock, fits);
        --waiters_;
    }
    if (closed_) {
        return Claim();
    }
    claimed_ += bytes;
    return Claim(this, bytes);
}

void ByteBudget::close() {
    {
        std::lock_guard<std::mutex> lock(mutex_);
        closed_ = true;
    }
    freed_.notify_all();
}

// Wakes only a waiting claimant: under Wine every wake is a round trip to the server.
void ByteBudget::giveBack(size_t bytes) {
    bool wake = false;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        claimed_ -= bytes;
        wake = waiters_ != 0;
    }
    if (wake) {
        freed_.notify_all();
    }
}

}  // namespace archive
