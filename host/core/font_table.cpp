#include "core/font_table.h"

namespace fmhost {

FontId FontTable::IdFor(const std::u16string& name) {
    if (name.empty())
        return kInvalidFontId;
    std::lock_guard<std::mutex> lock(mutex_);
    auto found = ids_.find(name);
    if (found != ids_.end())
        return found->second;
    if (names_.size() >= kInvalidFontId)
        return kInvalidFontId;
    const FontId id = static_cast<FontId>(names_.size());
    names_.push_back(name);
    ids_.emplace(name, id);
    return id;
}

std::optional<std::u16string> FontTable::NameOf(FontId id) const {
    std::lock_guard<std::mutex> lock(mutex_);
    if (id >= names_.size())
        return std::nullopt;
    return names_[id];
}

}  // namespace fmhost
