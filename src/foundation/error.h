#pragma once
// Error objects: each one only yields a numeric code. The class tells a plain code from a raw
// system value; there is no domain or category field.

#include <cstdint>
#include <memory>

#include "foundation/object.h"

namespace slib {

class Error : public Object {
  public:
    virtual int32_t code() const = 0;
};

// A code decided by our own code, returned unchanged.
class BasicError : public Error {
  public:
    explicit BasicError(int32_t code) : code_(code) {}
    int32_t code() const override { return code_; }

  private:
    const int32_t code_;
};

// A Windows last-error value (GetLastError or a Win32 call returning the error directly),
// translated into our scheme only when the code is asked for.
class WindowsLastError : public Error {
  public:
    explicit WindowsLastError(uint32_t value) : value_(value) {}
    int32_t code() const override;
    uint32_t value() const { return value_; }

  private:
    const uint32_t value_;
};

// A POSIX errno value, translated into the same scheme as WindowsLastError (the same condition
// gives the same code on both systems) only when the code is asked for.
class PosixErrno : public Error {
  public:
    explicit PosixErrno(int value) : value_(value) {}
    int32_t code() const override;
    int value() const { return value_; }

  private:
    const int value_;
};

// A COM/shell HRESULT. Never classified: always 2400, whatever its value.
class WindowsHResult : public Error {
  public:
    explicit WindowsHResult(int32_t hresult) : hresult_(hresult) {}
    int32_t code() const override;
    int32_t hresult() const { return hresult_; }

  private:
    const int32_t hresult_;
};

std::shared_ptr<Error> MakeBasicError(int32_t code);
std::shared_ptr<Error> MakeWindowsLastError(uint32_t value);
std::shared_ptr<Error> MakeWindowsHResult(int32_t hresult);
std::shared_ptr<Error> MakePosixErrno(int value);

}  // namespace slib
