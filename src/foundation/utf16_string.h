#pragma once
// slib::String: immutable UTF-16 text, the foundation's text value (paths included).

#include <memory>
#include <string>
#include <string_view>

#include "foundation/object.h"

namespace slib {

class String : public Object {
  public:
    String() = default;
    explicit String(std::u16string units) : units_(std::move(units)) {}
    explicit String(const char16_t* units) : units_(units) {}

    static std::shared_ptr<String> FromUtf8(std::string_view utf8);

    const std::u16string& units() const { return units_; }
    size_t size() const { return units_.size(); }
    bool empty() const { return units_.empty(); }
    std::string toUtf8() const;

    // A string describes itself: the same object when it is shared, else a copy.
    std::shared_ptr<const String> description() const override;

#ifdef _WIN32
    static_assert(sizeof(wchar_t) == sizeof(char16_t), "Windows wide text is UTF-16");
    static std::shared_ptr<String> FromWide(const wchar_t* text);
    static std::shared_ptr<String> FromWide(const wchar_t* text, size_t length);
    // Null-terminated, valid as long as this string lives.
    const wchar_t* wide() const {
        return reinterpret_cast<const wchar_t*>(units_.c_str());
    }
#endif

  private:
    std::u16string units_;
};

}  // namespace slib
