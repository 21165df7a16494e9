#pragma once
// Picture options that VFile_Set( "convert" ) and ( "rotate" ) stage for the next VFile_Copy,
// which then converts the picture instead of copying the file and clears them, whether it
// succeeds or fails. One set per host session: FileMaker Server runs many clients' scripts in one
// process, each in a session of its own, and one client's copy must never take another's
// options. Session 0 is a host too old to name sessions: all its calls share one set. Every call
// runs under the plug-in's call mutex, so the sets need no lock of their own.

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace bridge {

// Option names as staged: "width", "height" (numbers) and "exif-rotate" (1).
using PictureOptionMap = std::map<std::u16string, double>;

class StagedPictureOptions {
  public:
    // True when no VFile_Set( "convert" ) or ( "rotate" ) of this session is waiting for a copy,
    // i.e. its next VFile_Copy is a plain file copy.
    static bool IsEmpty(uint64_t session);
    // Creates the session's set if there is none (so a copy becomes a picture copy even with no
    // option in it, as after VFile_Set( "convert" ; "" ) with no sizes).
    static void Create(uint64_t session);
    // Creates the set if needed and sets `name`, replacing an earlier value.
    static void Set(uint64_t session, const std::u16string& name, double value);
    // The session's set, leaving nothing staged for it; nullopt when nothing was.
    static std::optional<PictureOptionMap> Take(uint64_t session);
    // The host ended the session: whatever it staged goes.
    static void EndSession(uint64_t session);
};

}  // namespace bridge
