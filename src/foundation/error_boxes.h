#pragma once
// No system error box while the plug-in works: a card reader without a card, say, must fail the
// call rather than ask "There is no disk in the drive" on FileMaker Pro or hang FileMaker Server
// on a box nobody sees. Held for the whole of every function call and lifecycle message and by
// every thread body the plug-in starts; the thread's own mode comes back when the scope ends.

#include <cstdint>

namespace slib {

class NoErrorBoxes {
  public:
    NoErrorBoxes();
    ~NoErrorBoxes();
    NoErrorBoxes(const NoErrorBoxes&) = delete;
    NoErrorBoxes& operator=(const NoErrorBoxes&) = delete;

  private:
    uint32_t previous_ = 0;
    bool restore_ = false;
};

// Whether the calling thread's file-system calls fail instead of showing such a box.
bool ErrorBoxesAreOff();

}  // namespace slib
