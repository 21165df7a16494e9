// Error numbers returned by the calculation engine. They are the host's own numbers, so a
// plug-in that reports them to its users shows the same codes it would see in the real host.
#pragma once

#include <cstdint>

namespace fmhost {

using ErrorCode = int16_t;

constexpr ErrorCode kNoError = 0;
constexpr ErrorCode kErrNoDatabase = 100;    // typical context error: no file for Get()
constexpr ErrorCode kErrFieldMissing = 102;  // a bare name that is no Let variable
constexpr ErrorCode kErrCalcGeneric = 1200;  // also: nesting too deep, internal failure
constexpr ErrorCode kErrTooFewParameters = 1201;
constexpr ErrorCode kErrTooManyParameters = 1202;
constexpr ErrorCode kErrUnexpectedEnd = 1203;
constexpr ErrorCode kErrOperandExpected = 1204;  // number, text, name or "(" expected
constexpr ErrorCode kErrCommentNotClosed = 1205;
constexpr ErrorCode kErrTextNotClosed = 1206;
constexpr ErrorCode kErrUnbalancedParenthesis = 1207;
constexpr ErrorCode kErrFunctionNotFound = 1208;  // also "(" where none may follow
constexpr ErrorCode kErrNameExpected = 1209;
constexpr ErrorCode kErrAlreadyRegistered = 1210;  // plug-in function name taken
constexpr ErrorCode kErrListNotAllowed = 1211;     // "[ ... ]" outside Let and Substitute
constexpr ErrorCode kErrOperatorExpected = 1212;
constexpr ErrorCode kErrBadGetParameter = 1215;

}  // namespace fmhost
