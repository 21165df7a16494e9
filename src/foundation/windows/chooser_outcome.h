#pragma once
// What the choosers answer besides chosen paths: a cancel is the one text "-128", never an
// exception; a dialog that failed is no paths at all.

#include <memory>
#include <string>
#include <vector>

#include "foundation/utf16_string.h"

namespace slib {
namespace file_manager_detail {

using ChosenPaths = std::vector<std::shared_ptr<const String>>;

inline ChosenPaths CancelledChoice() {
    return {std::make_shared<const String>(u"-128")};
}

inline ChosenPaths PathsOf(const std::vector<std::u16string>& paths) {
    ChosenPaths chosen;
    for (const std::u16string& path : paths) {
        chosen.push_back(std::make_shared<const String>(path));
    }
    return chosen;
}

}  // namespace file_manager_detail
}  // namespace slib
