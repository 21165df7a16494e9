// The foundation-side copy of a container value: its streams by four-character type, with the
// file name and picture size read through the host's own accessors (their byte layout is the
// host's business, so those two streams are not copied raw).
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "foundation/data.h"
#include "foundation/object.h"

namespace fmlib {

class ContainerValue : public slib::Object {
  public:
    struct Stream {
        std::string type;  // four characters, e.g. "JPEG", "PDF "
        std::shared_ptr<const slib::Data> data;
    };
    struct PictureSize {
        int16_t width;
        int16_t height;
    };

    ContainerValue(std::vector<Stream> streams, std::u16string fileName,
                   std::optional<PictureSize> pictureSize)
        : streams_(std::move(streams)), fileName_(std::move(fileName)), pictureSize_(pictureSize) {}

    const std::vector<Stream>& streams() const { return streams_; }
    // Empty when the container has no file-name stream.
    const std::u16string& fileName() const { return fileName_; }
    const std::optional<PictureSize>& pictureSize() const { return pictureSize_; }
    const Stream* findStream(const std::string& type) const;

    // "container:" and the types of the copied streams, e.g. "container: JPEG PNGf".
    std::shared_ptr<const slib::String> description() const override;

  private:
    std::vector<Stream> streams_;
    std::u16string fileName_;
    std::optional<PictureSize> pictureSize_;
};

}  // namespace fmlib
