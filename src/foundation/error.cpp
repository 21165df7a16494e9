#include "foundation/error.h"

#include <cerrno>

#include "foundation/error_codes.h"

namespace slib {

int32_t WindowsLastError::code() const {
    switch (value_) {
        case 0:
            return kNoError;
        case 2:  // ERROR_FILE_NOT_FOUND
        case 3:  // ERROR_PATH_NOT_FOUND
            return kItemNotFound;
        case 5:  // ERROR_ACCESS_DENIED
            return -3200;
        case 8:  // ERROR_NOT_ENOUGH_MEMORY
            return -620;
        case 80:   // ERROR_FILE_EXISTS
        case 183:  // ERROR_ALREADY_EXISTS
            return kItemExists;
        case 87:  // ERROR_INVALID_PARAMETER
            return kBadParameter;
        case 170:  // ERROR_BUSY
            return -3215;
        case 1131:
            return -3234;
        case 1460:  // ERROR_TIMEOUT
            return -3259;
        default:
            return kUnclassified;
    }
}

int32_t PosixErrno::code() const {
    switch (value_) {
        case 0:
            return kNoError;
        case ENOENT:
        case ENOTDIR:
            return kItemNotFound;
        case EACCES:
        case EPERM:
            return -3200;
        case ENOMEM:
            return -620;
        case EEXIST:
            return kItemExists;
        case EINVAL:
            return kBadParameter;
        case EBUSY:
            return -3215;
        case ETIMEDOUT:
            return -3259;
        default:
            return kUnclassified;
    }
}

int32_t WindowsHResult::code() const {
    return kUnclassified;
}

std::shared_ptr<Error> MakeBasicError(int32_t code) {
    return std::make_shared<BasicError>(code);
}

std::shared_ptr<Error> MakeWindowsLastError(uint32_t value) {
    return std::make_shared<WindowsLastError>(value);
}

std::shared_ptr<Error> MakeWindowsHResult(int32_t hresult) {
    return std::make_shared<WindowsHResult>(hresult);
}

std::shared_ptr<Error> MakePosixErrno(int value) {
    return std::make_shared<PosixErrno>(value);
}

}  // namespace slib
