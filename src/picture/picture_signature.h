#pragma once
// Recognises picture files by their first bytes. GDI+ answers every failed load with the same
// status, so this is how a file that is no picture is told from a damaged one; the Linux codecs
// are chosen by the same signatures.

#include <cstddef>
#include <cstdint>
#include <optional>

namespace slib {

enum class SignedFormat { kJpeg, kPng, kGif, kBmp, kTiff, kIco, kEmf, kWmf };

// The format whose signature `bytes` carry; nullopt when they carry none.
std::optional<SignedFormat> FindPictureSignature(const uint8_t* bytes, size_t size);

// True for the signatures of the formats GDI+ decodes: JPEG, PNG, GIF, BMP, TIFF, ICO, EMF and
// placeable WMF.
bool HasPictureSignature(const uint8_t* bytes, size_t size);

}  // namespace slib
