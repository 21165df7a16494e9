// Windows code page numbers (as RTF names them) to the host's text encodings.
#pragma once

#include <cstdint>

namespace bridge {

// The host encoding (0..36) that converts the code page, or -1 when the host has none.
int32_t HostEncodingOfCodePage(uint32_t codePage);

}  // namespace bridge
