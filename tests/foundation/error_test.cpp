// Error objects, their codes, and the filter that decides which codes reach the host.

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "foundation/error.h"
#include "foundation/error_codes.h"
#include "foundation/reportable_code.h"
#include "foundation/utf16_string.h"

namespace slib {
namespace {

struct Translation {
    uint32_t lastError;
    int32_t code;
};

class LastErrorTranslation : public ::testing::TestWithParam<Translation> {};

TEST_P(LastErrorTranslation, GivesTheTableCode) {
    const WindowsLastError error(GetParam().lastError);
    EXPECT_EQ(error.code(), GetParam().code) << "last error " << GetParam().lastError;
    EXPECT_EQ(error.value(), GetParam().lastError);
}

INSTANTIATE_TEST_SUITE_P(EveryRow, LastErrorTranslation,
                         ::testing::Values(Translation{0, 0}, Translation{2, -43},
                                           Translation{3, -43}, Translation{5, -3200},
                                           Translation{8, -620}, Translation{80, -48},
                                           Translation{183, -48}, Translation{87, -50},
                                           Translation{170, -3215}, Translation{1131, -3234},
                                           Translation{1460, -3259}));

INSTANTIATE_TEST_SUITE_P(NeighboursAndExtremesAreUnclassified, LastErrorTranslation,
                         ::testing::Values(Translation{1, 2400}, Translation{4, 2400},
                                           Translation{6, 2400}, Translation{81, 2400},
                                           Translation{182, 2400}, Translation{184, 2400},
                                           Translation{1130, 2400}, Translation{1132, 2400},
                                           Translation{1459, 2400}, Translation{1461, 2400},
                                           Translation{0x80000005u, 2400},
                                           Translation{0xFFFFFFFFu, 2400}));

TEST(ErrorObjects, BasicErrorKeepsItsCodeUnnarrowed) {
    EXPECT_EQ(BasicError(-50).code(), -50);
    EXPECT_EQ(BasicError(65486).code(), 65486);
    EXPECT_EQ(BasicError(std::numeric_limits<int32_t>::min()).code(),
              std::numeric_limits<int32_t>::min());
}

TEST(ErrorObjects, HResultIsAlwaysUnclassified) {
    for (int32_t hresult :
         {0, 1, static_cast<int32_t>(0x80070005u), static_cast<int32_t>(0x80004005u), -1}) {
        EXPECT_EQ(WindowsHResult(hresult).code(), kUnclassified) << hresult;
        EXPECT_EQ(WindowsHResult(hresult).hresult(), hresult);
    }
}

TEST(ErrorObjects, FactoriesMakeTheMatchingClass) {
    const std::shared_ptr<Error> basic = MakeBasicError(-43);
    const std::shared_ptr<Error> lastError = MakeWindowsLastError(183);
    const std::shared_ptr<Error> hresult = MakeWindowsHResult(0);
    ASSERT_NE(std::dynamic_pointer_cast<BasicError>(basic), nullptr);
    ASSERT_NE(std::dynamic_pointer_cast<WindowsLastError>(lastError), nullptr);
    ASSERT_NE(std::dynamic_pointer_cast<WindowsHResult>(hresult), nullptr);
    EXPECT_EQ(basic->code(), -43);
    EXPECT_EQ(lastError->code(), -48);
    EXPECT_EQ(hresult->code(), 2400);
}

TEST(ErrorObjects, DescribeThemselvesWithTheObjectDefault) {
    for (const std::shared_ptr<Error>& error :
         {MakeBasicError(-50), MakeWindowsLastError(5), MakeWindowsHResult(0)}) {
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

TEST(ReportableCodes, TheFifteenPassUnchanged) {
    for (int32_t code :
         {0, -4, -33, -34, -35, -36, -43, -45, -47, -48, -50, -52, -53, -54, -1303}) {
        EXPECT_EQ(ReportableCode(code), code);
    }
}

TEST(ReportableCodes, EverythingElseBecomesUnclassified) {
    // -38 is a failed zip open, the rest come out of the last-error translation.
    for (int32_t code : {-38, -120, -128, -620, -3200, -3215, -3234, -3259, -1, 1, 43, 2400, -37,
                         -49, -51, -55, -1302, -1304}) {
        EXPECT_EQ(ReportableCode(code), kUnclassified) << code;
    }
}

TEST(ReportableCodes, NarrowTo16BitsBeforeTheLookup) {
    EXPECT_EQ(ReportableCode(65486), -50);
    EXPECT_EQ(ReportableCode(0x10000 - 43), -43);
    EXPECT_EQ(ReportableCode(0x20000 - 1303), -1303);
    EXPECT_EQ(ReportableCode(0x10000), 0);
    EXPECT_EQ(ReportableCode(-65536), 0);
    EXPECT_EQ(ReportableCode(std::numeric_limits<int32_t>::min()), 0);
    EXPECT_EQ(ReportableCode(std::numeric_limits<int32_t>::max()), kUnclassified);  // 0xFFFF = -1
}

TEST(ReportableCodes, TranslatedSystemErrorsAsTheUserSeesThem) {
    EXPECT_EQ(ReportableCode(WindowsLastError(0).code()), 0);
    EXPECT_EQ(ReportableCode(WindowsLastError(2).code()), -43);
    EXPECT_EQ(ReportableCode(WindowsLastError(183).code()), -48);
    EXPECT_EQ(ReportableCode(WindowsLastError(87).code()), -50);
    for (uint32_t hidden : {5u, 8u, 170u, 1131u, 1460u}) {
        EXPECT_EQ(ReportableCode(WindowsLastError(hidden).code()), kUnclassified) << hidden;
    }
}

}  // namespace
}  // namespace slib
