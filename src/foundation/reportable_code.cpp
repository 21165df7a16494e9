#include "foundation/reportable_code.h"

#include "foundation/error_codes.h"

namespace slib {

namespace {

constexpr int16_t kReportableCodes[] = {0,   -4,  -33, -34, -35, -36, -43,  -45,
                                        -47, -48, -50, -52, -53, -54, -1303};

}  // namespace

int32_t ReportableCode(int32_t code) {
    // Keep the low 16 bits and reinterpret them as signed; done with unsigned arithmetic so the
    // result does not depend on implementation-defined narrowing.
    const uint32_t low = static_cast<uint32_t>(code) & 0xFFFFu;
    const int32_t narrowed =
        low >= 0x8000u ? static_cast<int32_t>(low) - 0x10000 : static_cast<int32_t>(low);
    for (int16_t reportable : kReportableCodes) {
        if (reportable == narrowed) {
            return narrowed;
        }
    }
    return kUnclassified;
}

}  // namespace slib
