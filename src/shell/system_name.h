// The name of the operating system the plug-in was built for, as VFile_Version reports it.
#pragma once

namespace fmlib {

const char16_t* SystemName();

}  // namespace fmlib
