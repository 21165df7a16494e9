#pragma once
// One owner for every kind of system resource (kernel and find handles, shell item lists, GDI+
// objects, security descriptors, windows, global memory, ...): it gives the resource back on
// every exit path, a throw included. A kind is one alias naming its type, its close function
// and, when it is not a zero value, the function that yields its empty value:
//
//   using UniqueFind = UniqueResource<HANDLE, &FindClose, &InvalidHandleValue>;
//   using UniqueLocal = UniqueResource<HLOCAL, &LocalFree>;
//
// Portable on purpose: it names no system type, so its rules are tested natively too.

#include <utility>

namespace slib {

template <typename T>
constexpr T ZeroValue() {
    return T{};
}

template <typename T, auto Close, T (*Empty)() = &ZeroValue<T>>
class UniqueResource {
  public:
    UniqueResource() noexcept : value_(Empty()) {}
    explicit UniqueResource(T value) noexcept : value_(value) {}
    ~UniqueResource() { reset(); }

    UniqueResource(UniqueResource&& other) noexcept : value_(other.release()) {}
    UniqueResource& operator=(UniqueResource&& other) noexcept {
        if (this != &other) {
            reset(other.release());
        }
        return *this;
    }
    UniqueResource(const UniqueResource&) = delete;
    UniqueResource& operator=(const UniqueResource&) = delete;

    bool valid() const noexcept { return value_ != Empty(); }
    explicit operator bool() const noexcept { return valid(); }
    T get() const noexcept { return value_; }

    // Closes what is held (if anything) and holds `value` instead.
    void reset(T value = Empty()) noexcept {
        const T old = std::exchange(value_, value);
        if (old != Empty()) {
            Close(old);
        }
    }
    // Hands the resource to the caller, who closes it from now on.
    [[nodiscard]] T release() noexcept { return std::exchange(value_, Empty()); }

    // For functions that return the resource through an out parameter: closes what is held
    // first, so the slot can be filled anew.
    T* put() noexcept {
        reset();
        return &value_;
    }

  private:
    T value_;
};

}  // namespace slib
