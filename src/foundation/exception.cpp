#include "foundation/exception.h"

#include <utility>

#include "foundation/error_codes.h"

namespace slib {

Exception::Exception(const char* message, std::shared_ptr<const Error> error)
    : Exception(std::string(message), std::move(error)) {}

Exception::Exception(std::string message, std::shared_ptr<const Error> error)
    : std::runtime_error(message),
      message_(std::move(message)),
      error_(error ? std::move(error) : MakeBasicError(kUnclassified)) {}

void Throw(int32_t code, const char* message) {
    Throw(code, std::string(message));
}

void Throw(int32_t code, const std::string& message) {
    std::shared_ptr<Error> error = MakeBasicError(code);
    Exception exception(message, std::move(error));
    throw exception;
}

void ThrowLastError(const char* message, uint32_t lastError) {
    // Some calls fail without setting a last error: a failure must never read as success.
    std::shared_ptr<Error> error =
        lastError == 0 ? MakeBasicError(kIoError) : MakeWindowsLastError(lastError);
    Exception exception(message, std::move(error));
    throw exception;
}

void ThrowErrno(const char* message, int errnoValue) {
    std::shared_ptr<Error> error =
        errnoValue == 0 ? MakeBasicError(kIoError) : MakePosixErrno(errnoValue);
    Exception exception(message, std::move(error));
    throw exception;
}

void ThrowHResult(const char* message, int32_t hresult) {
    std::shared_ptr<Error> error = MakeWindowsHResult(hresult);
    Exception exception(message, std::move(error));
    throw exception;
}

}  // namespace slib
