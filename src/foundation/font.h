#pragma once
// slib::Font: a font family by name. The host names fonts per database by numeric id; the
// name is what survives outside the host (RTF, system dialogs).

#include <memory>
#include <string>

#include "foundation/object.h"

namespace slib {

class Font : public Object {
  public:
    explicit Font(std::u16string name) : name_(std::move(name)) {}

    const std::u16string& name() const { return name_; }

    // The family name.
    std::shared_ptr<const String> description() const override;

  private:
    std::u16string name_;
};

}  // namespace slib
