// What the host provides to a calculation: its session, its plug-in functions and the values
// of the Get() functions that depend on the host.
#pragma once

#include <cstdint>

#include "core/calc_errors.h"
#include "core/value.h"

namespace fmhost {

class FunctionRegistry;
class Session;

// Get() parameters answered by the host, numbered as the host's Get-function ids.
enum class GetFunction : int16_t {
    kApplicationVersion = 1001,
    kSystemPlatform = 1016,
    kFilePath = 1040,
    kDesktopPath = 1072,
    kDocumentsPath = 1073,
    kFileMakerPath = 1074,
    kTemporaryPath = 1089,
};

class EvalContext {
  public:
    virtual ~EvalContext() = default;
    virtual Session& GetSession() = 0;
    // Null when the host has no plug-in functions.
    virtual const FunctionRegistry* Functions() const = 0;
    // Fills `result` and returns 0, or returns the host's error (e.g. kErrNoDatabase).
    virtual ErrorCode GetValue(GetFunction function, Value& result) = 0;
};

}  // namespace fmhost
