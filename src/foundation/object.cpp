#include "foundation/object.h"

#include "foundation/utf16_string.h"

namespace slib {

Object::~Object() = default;

std::shared_ptr<const String> Object::description() const {
    return std::make_shared<String>(u"SLIB Object has no description");
}

void Object::attach(std::shared_ptr<Object> /*key*/, std::shared_ptr<Object> /*value*/) {}

std::shared_ptr<Object> Object::attachment(std::shared_ptr<Object> /*key*/) const {
    return nullptr;
}

}  // namespace slib
