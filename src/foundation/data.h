#pragma once
// slib::Data: an immutable run of bytes (file contents, container streams).

#include <cstdint>
#include <memory>
#include <vector>

#include "foundation/object.h"

namespace slib {

class Data : public Object {
  public:
    Data() = default;
    explicit Data(std::vector<uint8_t> bytes) : bytes_(std::move(bytes)) {}
    Data(const void* bytes, size_t size);

    const std::vector<uint8_t>& bytes() const { return bytes_; }
    size_t size() const { return bytes_.size(); }

    // "<n> bytes": contents are not shown, they may be large or binary.
    std::shared_ptr<const String> description() const override;

  private:
    std::vector<uint8_t> bytes_;
};

}  // namespace slib
