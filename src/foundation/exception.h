#pragma once
// The one exception type of the plug-in: a fixed message for people plus a shared error object
// for the code. Copies share the error object; nothing between the throw and the function
// handler's boundary catches it.

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

#include "foundation/error.h"

namespace slib {

class Exception : public std::runtime_error {
  public:
    // A null error is replaced by BasicError(2400), so error() is never null.
    Exception(const char* message, std::shared_ptr<const Error> error);
    // A message that quotes what the user gave keeps every character of it, a NUL included.
    Exception(std::string message, std::shared_ptr<const Error> error);

    const std::shared_ptr<const Error>& error() const { return error_; }
    // The whole message; what() ends at its first NUL.
    const std::string& message() const { return message_; }

  private:
    std::string message_;
    std::shared_ptr<const Error> error_;
};

// One-line raising for the common cases. Each keeps the three steps of raising a failure: build
// the error object, construct the exception, throw it by value.
[[noreturn]] void Throw(int32_t code, const char* message);
[[noreturn]] void Throw(int32_t code, const std::string& message);
// A last error of 0 (the call failed without saying why) becomes -36, never a success code.
[[noreturn]] void ThrowLastError(const char* message, uint32_t lastError);
[[noreturn]] void ThrowHResult(const char* message, int32_t hresult);
// As ThrowLastError, for an errno value captured at the call that failed: 0 becomes -36.
[[noreturn]] void ThrowErrno(const char* message, int errnoValue);

}  // namespace slib
