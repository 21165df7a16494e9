// The single exception type and the one-line raising helpers.

#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/shell_operation_code.h"

namespace slib {
namespace {

// Catching it as a std::runtime_error needs a public, unambiguous base.
static_assert(std::is_convertible_v<Exception*, std::runtime_error*>);

template <typename Raise>
Exception Caught(Raise raise) {
    try {
        raise();
    } catch (const Exception& caught) {
        return caught;
    }
    ADD_FAILURE() << "nothing thrown";
    return Exception("", nullptr);
}

TEST(Exception, CarriesMessageAndErrorAndNeverANullError) {
    const Exception exception("Item does not exist", MakeBasicError(kItemNotFound));
    EXPECT_STREQ(exception.what(), "Item does not exist");
    ASSERT_NE(exception.error(), nullptr);
    EXPECT_EQ(exception.error()->code(), -43);
    const Exception withoutError("Something failed", nullptr);
    ASSERT_NE(withoutError.error(), nullptr);
    EXPECT_EQ(withoutError.error()->code(), kUnclassified);
}

TEST(Exception, AMessageQuotingUserTextKeepsEveryCharacter) {
    const std::string message("Unknown option: a\0b", 19);
    const Exception exception = Caught([&] { Throw(kBadParameter, message); });
    EXPECT_EQ(exception.message(), message);
    EXPECT_STREQ(exception.what(), "Unknown option: a");
    EXPECT_EQ(exception.error()->code(), kBadParameter);
    EXPECT_EQ(Caught([] { Throw(kItemNotFound, "plain"); }).message(), "plain");
}

TEST(Exception, CopiesShareTheErrorObject) {
    const std::shared_ptr<Error> error = MakeWindowsLastError(5);
    std::shared_ptr<const Error> survivor;
    {
        const Exception copy = Caught([&] { throw Exception("Cannot copy item", error); });
        EXPECT_EQ(copy.error().get(), error.get());
        EXPECT_STREQ(copy.what(), "Cannot copy item");
        survivor = copy.error();
    }
    // The error object outlives every exception copy while someone still holds it.
    EXPECT_EQ(survivor.get(), error.get());
    EXPECT_EQ(survivor.use_count(), 2);  // `error` and `survivor`
    EXPECT_EQ(survivor->code(), -3200);
}

TEST(RaisingHelpers, BuildTheMatchingErrorClass) {
    const Exception basic = Caught([] { Throw(-38, "Unable to open zip."); });
    EXPECT_STREQ(basic.what(), "Unable to open zip.");
    EXPECT_NE(dynamic_cast<const BasicError*>(basic.error().get()), nullptr);
    EXPECT_EQ(basic.error()->code(), -38);

    const Exception lastError = Caught([] { ThrowLastError("Cannot create file", 80); });
    EXPECT_STREQ(lastError.what(), "Cannot create file");
    const auto* windows = dynamic_cast<const WindowsLastError*>(lastError.error().get());
    ASSERT_NE(windows, nullptr);
    EXPECT_EQ(windows->value(), 80u) << "the raw value is kept";
    EXPECT_EQ(windows->code(), -48);

    const Exception hresult = Caught([] { ThrowHResult("Cannot get home folder of user", 0); });
    EXPECT_STREQ(hresult.what(), "Cannot get home folder of user");
    EXPECT_NE(dynamic_cast<const WindowsHResult*>(hresult.error().get()), nullptr);
    EXPECT_EQ(hresult.error()->code(), kUnclassified);
}

TEST(RaisingHelpers, AFailureWithoutALastErrorIsNeverSuccess) {
    const Exception unexplained = Caught([] { ThrowLastError("Cannot delete item", 0); });
    EXPECT_STREQ(unexplained.what(), "Cannot delete item");
    EXPECT_EQ(unexplained.error()->code(), kIoError);
}

// The shell's return values: its own DE_* numbers (0xB7 among them, though 183 is also
// ERROR_ALREADY_EXISTS), Win32 errors we classify, and the rest.
TEST(ShellOperationCode, TranslatesTheShellsOwnNumbersAndNeverAnswersZero) {
    const struct {
        int32_t result;
        int32_t code;
    } cases[] = {
        {0x71, kBadParameter}, {0x75, kIoError},    {0x78, kPermissionDenied},
        {0x7C, kItemNotFound}, {0x7E, kItemExists}, {0x80, kItemExists},
        {0x85, kVolumeFull},   {0x10000, kIoError}, {0x10074, kBadParameter},
        {0xB7, kBadParameter}, {2, kItemNotFound},  {80, kItemExists},
        {87, kBadParameter},   {1117, kIoError},    {0x77, kIoError},
        {-1, kIoError},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ShellOperationCode(c.result), c.code) << std::hex << c.result;
    }
}

}  // namespace
}  // namespace slib
