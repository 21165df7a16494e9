// The chooser texts users and the dialog hand us: the names buffer the open dialog writes (read
// without running past its end), the option pairs and extension lists of VFile_Choose.
// fuzz-sources: src/foundation/*.cpp
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "foundation/choose_options.h"
#include "foundation/chooser_filter.h"
#include "foundation/chosen_names.h"
#include "foundation/exception.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // An exact-size copy, so reading past the end is caught.
    std::vector<char16_t> units(size / 2);
    for (size_t i = 0; i < units.size(); ++i) {
        units[i] = static_cast<char16_t>(data[2 * i] | (data[2 * i + 1] << 8));
    }
    for (const std::u16string& path : slib::SplitChosenNames(units.data(), units.size())) {
        if (path.empty()) {
            __builtin_trap();
        }
    }
    // The same units as option texts, split at zeros.
    std::vector<std::u16string> pairs(1);
    for (char16_t unit : units) {
        if (unit == u'\0') {
            pairs.emplace_back();
        } else {
            pairs.back() += unit;
        }
    }
    try {
        const slib::ChooseOptions options = slib::ParseChooseOptions(pairs);
        for (const std::u16string& extension : options.extensions) {
            if (extension.empty() || extension[0] == u'.' || extension[0] == u'*') {
                __builtin_trap();
            }
        }
        slib::DialogFilterBuffer(slib::AllowedFilesFilter(options.extensions));
    } catch (const slib::Exception&) {
        // An unknown option name: the expected refusal.
    }
    return 0;
}
