// The call frame every function handler runs in.
//
// A handler is the host's callback; it wraps its body like this:
//
//     FmxErrcode VFile_Delete(int16_t id, const FmxExprEnv& env, const FmxDataVect& args,
//                             FmxData& result) {
//         constexpr FramePolicy kPolicy{1, Licence::kChecked, ZeroCode::kStored};
//         return RunInCallFrame(kPolicy, {id, env, args, result}, [](const FunctionCall& call) {
//             RequireTextParameter(call.args, 0);
//             ...                                  // the operation
//             SetResultCode(call.result, 0);
//         });
//     }
//
// RunInCallFrame, in this order: takes the call mutex (held until return, on every path) and
// turns off the system's error boxes for the call (foundation/error_boxes.h); runs
// the licence check when the policy says so; RequireParameters with the policy's minimum; runs
// the body, which checks its own arguments (RequireTextParameter for each path argument, first
// to last), performs the operation and sets the result. A failure anywhere in there is reported
// (shell/error_reporting.h): slib::Exception through ReportFoundationError, any other
// std::exception (host failures included) through ReportStandardError, anything else through
// ReportUnknownError. The host always gets error 0; the outcome travels in the result and in
// $$VFile_LastError / $$VFile_LastErrorMessage. A successful call leaves those globals alone.
//
// RunInBareFrame is for the two functions without failure reporting (VFile_Version,
// VFile_Register): mutex, then the body; no licence check, no argument minimum. A failure there
// sets neither the result nor the globals; the host gets kUnreportedFailure instead of an
// exception, since nothing may cross the boundary as one. The same happens in RunInCallFrame if
// the lock is refused or the host fails (or refuses the globals) while a failure is being
// reported: a calculation that fails is better than globals describing an older failure.
#pragma once

#include <cstdint>
#include <exception>

#include "fmx_functions.h"
#include "foundation/error_boxes.h"
#include "foundation/exception.h"
#include "shell/arguments.h"
#include "shell/call_lock.h"
#include "shell/call_probe.h"
#include "shell/error_reporting.h"
#include "shell/licensing.h"

namespace fmlib {

// The arguments of the host's callback, as the body sees them.
struct FunctionCall {
    int16_t functionId;
    const FmxExprEnv& env;
    const FmxDataVect& args;
    FmxData& result;
};

enum class Licence : bool { kNotChecked, kChecked };
// What a foundation failure carrying code 0 does to the result: stored as the number 0, or left
// as it was (only the globals are set).
enum class ZeroCode : bool { kLeftAlone, kStored };

struct FramePolicy {
    uint32_t minimumArguments;
    Licence licence;
    ZeroCode zeroCode;
};

// Host error for a failure that could not be reported in the result and globals (the first of
// the host's plug-in error results, so the host records it as the call's external error).
constexpr FmxErrcode kUnreportedFailure = 1552;

template <typename Body>
FmxErrcode RunInCallFrame(const FramePolicy& policy, const FunctionCall& call,
                          Body&& body) noexcept {
    try {
        CallLock lock;
        CallProbe probe;
        const slib::NoErrorBoxes noBoxes;
        try {
            if (policy.licence == Licence::kChecked) {
                licensing::CheckLicence();
            }
            RequireParameters(call.args, policy.minimumArguments);
            body(call);
        } catch (const slib::Exception& exception) {
            ReportFoundationError(exception, call.env, call.result,
                                  policy.zeroCode == ZeroCode::kStored);
        } catch (const std::exception& exception) {
            ReportStandardError(exception, call.env, call.result);
        } catch (...) {
            ReportUnknownError(call.env, call.result);
        }
        return 0;
    } catch (...) {
        return kUnreportedFailure;
    }
}

template <typename Body>
FmxErrcode RunInBareFrame(const FunctionCall& call, Body&& body) noexcept {
    try {
        CallLock lock;
        CallProbe probe;
        const slib::NoErrorBoxes noBoxes;
        body(call);
        return 0;
    } catch (...) {
        return kUnreportedFailure;
    }
}

}  // namespace fmlib
