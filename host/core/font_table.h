// Font names and their 16-bit ids, shared by every calculation of one host session.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/character_style.h"

namespace fmhost {

class FontTable {
  public:
    // The id of a font name, created on first use; kInvalidFontId for an empty name or when
    // the table is full. Names are matched exactly.
    FontId IdFor(const std::u16string& name);
    // The name of an id, or nothing when the id was never handed out.
    std::optional<std::u16string> NameOf(FontId id) const;

  private:
    mutable std::mutex mutex_;
    std::vector<std::u16string> names_;  // id = index
    std::unordered_map<std::u16string, FontId> ids_;
};

}  // namespace fmhost
