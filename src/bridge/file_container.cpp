#include "bridge/file_container.h"

#include <exception>

#include "bridge/picture_preview.h"
#include "shell/host_error.h"
#include "shell/host_text.h"
#include "shell/host_values.h"
#include "shell/newer_host_functions.h"

namespace bridge {

namespace {

using FromFileConstructor = FmxBinaryData* (*)(const FmxText&, uint32_t, void*, FmxErr&);
constexpr int16_t kFromFileConstructorVersion = 54;

FromFileConstructor HostFromFileConstructor() {
    return fmlib::NewerHostFunction<FromFileConstructor>("FM_BinaryData_Constructor3",
                                                         kFromFileConstructorVersion);
}

void AddStream(FmxBinaryData& container, const char* type, const slib::Data& bytes) {
    const fmlib::QuadCharPtr code = fmlib::NewQuadChar(type[0], type[1], type[2], type[3]);
    if (fmlib::BinaryDataAdd(container, *code, static_cast<uint32_t>(bytes.size()),
                             bytes.bytes().data()) != 0) {
        throw std::exception();
    }
}

void AddName(FmxBinaryData& container, const std::u16string& name) {
    const fmlib::TextPtr text = fmlib::MakeText(name);
    if (fmlib::BinaryDataAddFNAMData(container, *text) != 0) {
        throw std::exception();
    }
}

// Four characters each.
const char* StreamType(slib::PictureKind kind) {
    switch (kind) {
        case slib::PictureKind::kJpeg:
            return "JPEG";
        case slib::PictureKind::kPng:
            return "PNGf";
        case slib::PictureKind::kGif:
            return "GIFf";
        case slib::PictureKind::kBmp:
            return "BMPf";
        case slib::PictureKind::kTiff:
            break;
    }
    return "TIFF";
}

}  // namespace

std::u16string FileNameOf(const std::u16string& path) {
    const size_t separator = path.find_last_of(u"\\/");
    return separator == std::u16string::npos ? path : path.substr(separator + 1);
}

fmlib::BinaryDataPtr MakeFileContainer(const std::u16string& name, const slib::Data& bytes) {
    if (bytes.size() > 0) {
        if (const FromFileConstructor construct = HostFromFileConstructor()) {
            const fmlib::TextPtr hostName = fmlib::MakeText(name);
            FmxErr slot{kFmxErrSlotVersion, kFmxErrNone};
            fmlib::BinaryDataPtr container(construct(*hostName, static_cast<uint32_t>(bytes.size()),
                                                     const_cast<uint8_t*>(bytes.bytes().data()),
                                                     slot));
            fmlib::ThrowIfHostFailed(slot);
            if (!container) {
                throw fmlib::HostAllocationError();
            }
            return container;
        }
    }
    fmlib::BinaryDataPtr container = fmlib::NewBinaryData();
    if (bytes.size() > 0) {
        AddStream(*container, "FILE", bytes);
    }
    AddName(*container, name);
    return container;
}

fmlib::BinaryDataPtr MakePictureContainer(const std::u16string& name, const slib::Data& bytes,
                                          const slib::PictureFacts& facts) {
    fmlib::BinaryDataPtr container = fmlib::NewBinaryData();
    AddStream(*container, StreamType(facts.kind), bytes);
    if (facts.kind == slib::PictureKind::kTiff) {
        // The host shows a TIFF only through a preview in a kind it can draw itself.
        const slib::Data preview(PngPreview(bytes));
        if (preview.size() > 0) {
            AddStream(*container, "PNGf", preview);
        }
    }
    if (facts.width > 0 && facts.height > 0) {
        if (fmlib::BinaryDataAddSIZEData(*container, static_cast<int16_t>(facts.width),
                                         static_cast<int16_t>(facts.height)) != 0) {
            throw std::exception();
        }
    }
    AddName(*container, name);
    return container;
}

}  // namespace bridge
