// Error objects, their codes, and the filter that decides which codes reach the host.

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <limits>

#include "foundation/error.h"
#include "foundation/error_codes.h"
#include "foundation/reportable_code.h"
#include "foundation/utf16_string.h"

namespace slib {
namespace {

constexpr int32_t kMin = std::numeric_limits<int32_t>::min();

TEST(LastErrorTranslation, GivesTheTableCodeAndUnclassifiedForEverythingElse) {
    const std::pair<uint32_t, int32_t> rows[] = {{0, 0},
                                                 {2, -43},
                                                 {3, -43},
                                                 {5, -3200},
                                                 {8, -620},
                                                 {80, -48},
                                                 {183, -48},
                                                 {87, -50},
                                                 {170, -3215},
                                                 {1131, -3234},
                                                 {1460, -3259},
                                                 {1, 2400},
                                                 {4, 2400},
                                                 {6, 2400},
                                                 {81, 2400},
                                                 {182, 2400},
                                                 {184, 2400},
                                                 {1130, 2400},
                                                 {1132, 2400},
                                                 {1459, 2400},
                                                 {1461, 2400},
                                                 {0x80000005u, 2400},
                                                 {0xFFFFFFFFu, 2400}};
    for (const auto& [lastError, code] : rows) {
        const WindowsLastError error(lastError);
        EXPECT_EQ(error.code(), code) << "last error " << lastError;
        EXPECT_EQ(error.value(), lastError);
    }
}

// One row per condition: a Linux script must get the code a Windows one gets for the same thing.
TEST(SystemErrorTranslation, TheSameConditionGivesTheSameCodeOnBothSystems) {
    struct Row {
        const char* condition;
        uint32_t windows;
        int posix;
        int32_t code;
    };
    const Row rows[] = {{"none", 0, 0, 0},
                        {"missing item", 2, ENOENT, -43},
                        {"missing folder on the way", 3, ENOTDIR, -43},
                        {"refused", 5, EACCES, -3200},
                        {"not permitted", 5, EPERM, -3200},
                        {"out of memory", 8, ENOMEM, -620},
                        {"exists", 80, EEXIST, -48},
                        {"bad parameter", 87, EINVAL, -50},
                        {"busy", 170, EBUSY, -3215},
                        {"timed out", 1460, ETIMEDOUT, -3259},
                        {"anything else", 1, EIO, 2400},
                        {"no room", 112, ENOSPC, 2400}};
    for (const Row& row : rows) {
        EXPECT_EQ(WindowsLastError(row.windows).code(), row.code) << row.condition;
        EXPECT_EQ(PosixErrno(row.posix).code(), row.code) << row.condition;
        EXPECT_EQ(PosixErrno(row.posix).value(), row.posix);
    }
}

TEST(ErrorObjects, KeepTheirCodes) {
    for (int32_t code : {-50, 65486, kMin}) {
        EXPECT_EQ(BasicError(code).code(), code) << "not narrowed";
    }
    for (int32_t hresult :
         {0, 1, static_cast<int32_t>(0x80070005u), static_cast<int32_t>(0x80004005u), -1}) {
        EXPECT_EQ(WindowsHResult(hresult).code(), kUnclassified) << hresult;
        EXPECT_EQ(WindowsHResult(hresult).hresult(), hresult);
    }
}

TEST(ErrorObjects, FactoriesMakeTheMatchingClassDescribedByTheObjectDefault) {
    const std::shared_ptr<Error> basic = MakeBasicError(-43);
    const std::shared_ptr<Error> lastError = MakeWindowsLastError(183);
    const std::shared_ptr<Error> hresult = MakeWindowsHResult(0);
    EXPECT_NE(std::dynamic_pointer_cast<BasicError>(basic), nullptr);
    EXPECT_NE(std::dynamic_pointer_cast<WindowsLastError>(lastError), nullptr);
    EXPECT_NE(std::dynamic_pointer_cast<WindowsHResult>(hresult), nullptr);
    EXPECT_EQ(basic->code(), -43);
    EXPECT_EQ(lastError->code(), -48);
    EXPECT_EQ(hresult->code(), 2400);
    for (const std::shared_ptr<Error>& error : {basic, lastError, hresult}) {
        const std::shared_ptr<const String> text = error->description();
        ASSERT_NE(text, nullptr);
        EXPECT_EQ(text->units(), u"SLIB Object has no description");
        EXPECT_NE(error->description(), text) << "each description is a new string";
    }
}

TEST(ErrorObjects, AttachmentHooksKeepNothing) {
    const std::shared_ptr<Error> error = MakeBasicError(0);
    auto key = std::make_shared<String>(u"key");
    auto value = std::make_shared<String>(u"value");
    error->attach(key, value);
    EXPECT_EQ(error->attachment(key), nullptr);
    EXPECT_EQ(key.use_count(), 1);
    EXPECT_EQ(value.use_count(), 1);
}

TEST(ReportableCodes, OnlyTheFifteenPassAfterNarrowingTo16Bits) {
    for (int32_t code :
         {0, -4, -33, -34, -35, -36, -43, -45, -47, -48, -50, -52, -53, -54, -1303}) {
        EXPECT_EQ(ReportableCode(code), code);
    }
    // -38 is a failed zip open, most others come out of the last-error translation.
    for (int32_t code : {-38, -120, -128, -620, -3200, -3215, -3234, -3259, -1, 1, 43, 2400, -37,
                         -49, -51, -55, -1302, -1304, std::numeric_limits<int32_t>::max()}) {
        EXPECT_EQ(ReportableCode(code), kUnclassified) << code;
    }
    const std::pair<int32_t, int32_t> narrowed[] = {
        {65486, -50}, {0x10000 - 43, -43}, {0x20000 - 1303, -1303},
        {0x10000, 0}, {-65536, 0},         {kMin, 0}};
    for (const auto& [code, reported] : narrowed) {
        EXPECT_EQ(ReportableCode(code), reported) << code;
    }
}

}  // namespace
}  // namespace slib
