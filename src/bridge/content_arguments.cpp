#include "bridge/content_arguments.h"

#include <cmath>

#include "fmx_constants.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "shell/host_data.h"
#include "shell/host_values.h"

namespace bridge {

namespace {

bool IsNumber(const FmxData& value) {
    return fmlib::DataGetNativeType(value) == fmx::kDTNumber;
}

bool IsText(const FmxData& value) {
    return fmlib::DataGetNativeType(value) == fmx::kDTText;
}

// Whole bytes only: a fraction is dropped; values beyond the 64-bit range are clamped.
int64_t IntegerOf(const FmxData& value) {
    const double number = std::trunc(fmlib::FixPtAsFloat(fmlib::DataGetAsNumber(value)));
    if (!(number == number)) {
        return 0;
    }
    if (number >= 9.2e18) {
        return INT64_MAX;
    }
    if (number <= -9.2e18) {
        return INT64_MIN + 1;
    }
    return static_cast<int64_t>(number);
}

[[noreturn]] void ThrowInvalid() {
    slib::Throw(slib::kBadParameter, "Invalid parameters");
}

int32_t RequiredEncoding(const FmxData& value) {
    const int32_t number = MatchEncoding(fmlib::DataGetAsText(value));
    if (number < 0) {
        ThrowInvalid();
    }
    return number;
}

uint64_t LengthOf(const FmxData& value) {
    const int64_t length = IntegerOf(value);
    return length < 0 ? slib::kReadToEnd : static_cast<uint64_t>(length);
}

}  // namespace

ReadRequest ParseReadArguments(const FmxDataVect& args) {
    ReadRequest request;
    const uint32_t count = fmlib::DataVectSize(args);
    if (count == 2) {
        const FmxData& second = fmlib::DataVectAt(args, 1);
        if (IsNumber(second)) {
            request.startIndex = IntegerOf(second);
        } else if (IsText(second)) {
            request.encoding = RequiredEncoding(second);
        }
    } else if (count >= 3) {
        request.startIndex = IntegerOf(fmlib::DataVectAt(args, 1));
        const FmxData& third = fmlib::DataVectAt(args, 2);
        const bool all = !IsNumber(third) && MatchesAll(fmlib::DataGetAsText(third));
        if (IsNumber(third)) {
            request.maxLength = LengthOf(third);
        } else if (count == 3 && !all) {
            request.encoding = RequiredEncoding(third);
        } else if (count >= 4 && !all) {
            ThrowInvalid();
        }
        if (count >= 4) {
            request.encoding = RequiredEncoding(fmlib::DataVectAt(args, 3));
        }
    }
    return request;
}

WriteRequest ParseWriteArguments(const FmxDataVect& args) {
    WriteRequest request;
    const uint32_t count = fmlib::DataVectSize(args);
    if (count == 3) {
        const FmxData& third = fmlib::DataVectAt(args, 2);
        if (IsNumber(third)) {
            request.startIndex = IntegerOf(third);
        } else {
            request.encoding = MatchEncoding(fmlib::DataGetAsText(third));
        }
    } else if (count >= 4) {
        request.startIndex = IntegerOf(fmlib::DataVectAt(args, 2));
        request.encoding = MatchEncoding(fmlib::DataGetAsText(fmlib::DataVectAt(args, 3)));
    }
    return request;
}

}  // namespace bridge
