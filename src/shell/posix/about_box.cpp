#include "shell/about_box.h"

namespace fmlib {

void ShowAboutBox(const std::u16string&, const std::u16string&) {}

}  // namespace fmlib
