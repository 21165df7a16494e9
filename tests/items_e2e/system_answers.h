// What the plug-in answers differently on each system, as data: windows/ and posix/ hold the
// values, chosen by the build.
#pragma once

namespace items_test {

// VFile_Open's and VFile_Reveal's refusals for an item no program can take: Windows names the
// failed step, a Linux server has no desktop for any of them.
extern const char* const kOpenInApplicationRefusal;
extern const char* const kOpenInDefaultRefusal;
extern const char* const kRevealRefusal;

}  // namespace items_test
