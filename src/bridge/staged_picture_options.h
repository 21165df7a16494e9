#pragma once
// Picture options that VFile_Set( "convert" ) and ( "rotate" ) stage for the next VFile_Copy,
// which then converts the picture instead of copying the file and clears them, whether it
// succeeds or fails. One process-wide set: every call runs under the plug-in's call mutex, so it
// needs no lock of its own.

#include <map>
#include <optional>
#include <string>

namespace bridge {

// Option names as staged: "width", "height" (numbers) and "exif-rotate" (1).
using PictureOptionMap = std::map<std::u16string, double>;

class StagedPictureOptions {
  public:
    // True when no VFile_Set( "convert" ) or ( "rotate" ) is waiting for a copy, i.e. the next
    // VFile_Copy is a plain file copy.
    static bool IsEmpty();
    // Creates the set if there is none (so a copy becomes a picture copy even with no option in
    // it, as after VFile_Set( "convert" ; "" ) with no sizes).
    static void Create();
    // Creates the set if needed and sets `name`, replacing an earlier value.
    static void Set(const std::u16string& name, double value);
    // The staged set, leaving nothing staged; nullopt when nothing was.
    static std::optional<PictureOptionMap> Take();
};

}  // namespace bridge
