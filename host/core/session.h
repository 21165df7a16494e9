// One host session: the $$global variables and the font table, shared by every calculation
// (and every thread) of the session. Globals are guarded by a mutex held only while a variable
// is read or written.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include "core/font_table.h"
#include "core/value.h"

namespace fmhost {

class Session {
  public:
    Session();
    // A session the host names itself (ids may be reused once a session has ended).
    explicit Session(uint64_t id) : id_(id) {}
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Never 0; unique unless given.
    uint64_t Id() const { return id_; }

    // Names are given without the "$$" and matched without regard to case.
    // An unset global reads as an empty value.
    Value GetGlobal(std::u16string_view name) const;
    void SetGlobal(std::u16string_view name, Value value);
    bool HasGlobal(std::u16string_view name) const;

    FontTable& Fonts() { return fonts_; }

  private:
    const uint64_t id_;
    mutable std::mutex globalsMutex_;
    std::unordered_map<std::u16string, Value> globals_;  // key: case-folded name
    FontTable fonts_;
};

}  // namespace fmhost
