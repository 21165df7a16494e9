#pragma once
// Recognises picture files by their first bytes. GDI+ answers every failed load with the same
// status, so this is how a file that is no picture is told from a damaged one.

#include <cstddef>
#include <cstdint>

namespace slib {

// True for the signatures of the formats GDI+ decodes: JPEG, PNG, GIF, BMP, TIFF, ICO, EMF and
// placeable WMF.
bool HasPictureSignature(const uint8_t* bytes, size_t size);

}  // namespace slib
