// Picture options (size, exif rotation) that VFile_Set stages for the next VFile_Copy, which then
// converts the picture instead of copying the file. Staging arrives with picture conversion;
// until then nothing is ever staged.
#pragma once

namespace bridge {

class StagedPictureOptions {
  public:
    static bool IsEmpty() { return true; }
};

}  // namespace bridge
