// Which host extension versions the plug-in accepts, and what it answers at initialisation.
#pragma once

#include <cstdint>

namespace fmlib {

constexpr int16_t kOldestExtensionVersion = 50;
constexpr int16_t kNewestExtensionVersion = 255;
// The extension version this plug-in reports to an accepting host.
constexpr int64_t kPluginExtensionVersion = 55;

// 50 to 255 inclusive. Done as one unsigned 16-bit distance from 50 so that negative versions
// wrap to large distances and fail the same test.
constexpr bool IsSupportedExtensionVersion(int16_t version) {
    return static_cast<uint16_t>(static_cast<uint16_t>(version) -
                                 static_cast<uint16_t>(kOldestExtensionVersion)) <=
           static_cast<uint16_t>(kNewestExtensionVersion - kOldestExtensionVersion);
}

}  // namespace fmlib
