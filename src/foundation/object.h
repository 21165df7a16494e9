#pragma once
// Root of the foundation library's class tree. Every slib object is held through std::shared_ptr.

#include <memory>

namespace slib {

class String;

class Object : public std::enable_shared_from_this<Object> {
  public:
    Object() = default;
    Object(const Object&) = default;
    Object& operator=(const Object&) = default;
    virtual ~Object();

    // Human-readable text for the object. Value classes override it; the default (also what every
    // error object gives) is "SLIB Object has no description".
    virtual std::shared_ptr<const String> description() const;

    // Extension hooks for attaching one object to another under a key. Nothing overrides them: the
    // defaults store nothing and find nothing.
    virtual void attach(std::shared_ptr<Object> key, std::shared_ptr<Object> value);
    virtual std::shared_ptr<Object> attachment(std::shared_ptr<Object> key) const;
};

}  // namespace slib
