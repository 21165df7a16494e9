#pragma once
// The rich-edit control's library ("Msftedit.dll"), loaded on the first RTF conversion and kept
// until the host shuts the plug-in down (never freed from DllMain, where no library may be).
// Both run under the plug-in's call mutex.

namespace slib {

// True once the library is loaded; false (with the system's last error) when it cannot be.
bool LoadRichEditLibrary();
// Frees the library when it was loaded; a later conversion loads it again.
void ReleaseRichEditLibrary();

}  // namespace slib
