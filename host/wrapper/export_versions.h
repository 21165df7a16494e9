// The extension version in which each of our exports first appeared, for the loader's refusal of a
// plug-in that imports a name an older host would not have.
#pragma once

#include <cstdint>
#include <string>

namespace fmwrapper {

// The version that brought `name`; 0 for the exports every supported host has (and unknown names).
int16_t ExportIntroducedIn(const std::string& name);

}  // namespace fmwrapper
