#pragma once
// Decoding pictures from memory and encoding them back into bytes through GDI+. GDI+ must be
// started (StartGdiplus) before any of these is called.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "foundation/windows/unique_handles.h"
#include "picture/picture_pixels.h"

namespace slib {

// A bitmap decoded from `bytes` with colour management, or an empty owner when GDI+ cannot.
// The stream holds its own copy of the bytes.
UniqueGdipBitmap DecodePicture(const std::vector<uint8_t>& bytes);

// DecodePicture, or the reason it failed: -50 "This is not a picture." for bytes without a
// picture signature, -50 "Picture data is damaged" for a picture GDI+ cannot read.
UniqueGdipBitmap LoadPicture(const std::vector<uint8_t>& bytes);

// 2400 "Cannot measure the picture" when GDI+ cannot tell.
PictureDimensions MeasurePicture(Gdiplus::GpBitmap* bitmap);

// The MIME type of the format the picture was decoded from: "image/jpeg", "image/png",
// "image/gif", "image/bmp" or "image/tiff"; "image/jpeg" for any other format.
std::wstring SourceMimeType(Gdiplus::GpBitmap* bitmap);

// The EXIF orientation: GDI+'s own property when it has one, else the JPEG's EXIF block read
// from `bytes` (GDI+ under Wine never reports the property). nullopt when neither has one.
std::optional<uint16_t> PictureOrientation(Gdiplus::GpBitmap* bitmap,
                                           const std::vector<uint8_t>& bytes);

// The bitmap encoded by the encoder of `mimeType` with its default parameters. GIF gets an
// 8-bit indexed copy. The result is checked by decoding it again, since a success status from
// the encoder proves nothing: 2400 "Cannot save the picture" when it is empty or unreadable, or
// when no encoder has that type.
std::vector<uint8_t> EncodePicture(Gdiplus::GpBitmap* bitmap, const std::wstring& mimeType);

}  // namespace slib
