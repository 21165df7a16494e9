#pragma once
// GDI+ is started once for the whole process, on the first picture operation, and shut down
// when the host shuts the plug-in down (never from DllMain, where GDI+ may not be stopped).
// Both run under the plug-in's call mutex.

namespace slib {

// Starts GDI+ unless it runs already: 2400 "Cannot start the picture engine" when it refuses.
void StartGdiplus();
// Shuts GDI+ down when it was started; a later picture operation starts it again.
void ShutdownGdiplus();

}  // namespace slib
