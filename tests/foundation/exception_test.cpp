// The single exception type and the one-line raising helpers.

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/reportable_code.h"

namespace slib {
namespace {

TEST(Exception, CarriesMessageAndError) {
    const Exception exception("Item does not exist", MakeBasicError(kItemNotFound));
    EXPECT_STREQ(exception.what(), "Item does not exist");
    ASSERT_NE(exception.error(), nullptr);
    EXPECT_EQ(exception.error()->code(), -43);
}

TEST(Exception, NullErrorBecomesUnclassified) {
    const Exception exception("Something failed", nullptr);
    ASSERT_NE(exception.error(), nullptr);
    EXPECT_EQ(exception.error()->code(), kUnclassified);
}

TEST(Exception, CopiesShareTheErrorObject) {
    const std::shared_ptr<Error> error = MakeWindowsLastError(5);
    const Error* original = error.get();
    std::shared_ptr<const Error> survivor;
    try {
        Exception thrown("Cannot copy item", error);
        throw thrown;
    } catch (const Exception& caught) {
        const Exception copy = caught;
        EXPECT_EQ(caught.error().get(), original);
        EXPECT_EQ(copy.error().get(), original);
        EXPECT_STREQ(copy.what(), "Cannot copy item");
        survivor = copy.error();
    }
    // The error object outlives every exception copy while someone still holds it.
    EXPECT_EQ(survivor.get(), original);
    EXPECT_EQ(survivor.use_count(), 2);  // `error` and `survivor`
    EXPECT_EQ(survivor->code(), -3200);
}

TEST(Exception, IsAStandardRuntimeError) {
    try {
        Throw(kBadParameter, "Wrong parameter");
    } catch (const std::runtime_error& caught) {
        EXPECT_STREQ(caught.what(), "Wrong parameter");
        EXPECT_NE(dynamic_cast<const Exception*>(&caught), nullptr);
        return;
    }
    FAIL() << "nothing thrown";
}

TEST(RaisingHelpers, ThrowBuildsABasicError) {
    try {
        Throw(-38, "Unable to open zip.");
    } catch (const Exception& caught) {
        EXPECT_STREQ(caught.what(), "Unable to open zip.");
        EXPECT_NE(dynamic_cast<const BasicError*>(caught.error().get()), nullptr);
        EXPECT_EQ(caught.error()->code(), -38);
        EXPECT_EQ(ReportableCode(caught.error()->code()), kUnclassified);
        return;
    }
    FAIL() << "nothing thrown";
}

TEST(RaisingHelpers, ThrowLastErrorKeepsTheRawValue) {
    try {
        ThrowLastError("Cannot create file", 80);
    } catch (const Exception& caught) {
        EXPECT_STREQ(caught.what(), "Cannot create file");
        const auto* error = dynamic_cast<const WindowsLastError*>(caught.error().get());
        ASSERT_NE(error, nullptr);
        EXPECT_EQ(error->value(), 80u);
        EXPECT_EQ(error->code(), -48);
        return;
    }
    FAIL() << "nothing thrown";
}

TEST(RaisingHelpers, ThrowHResultIsAlwaysUnclassified) {
    try {
        ThrowHResult("Cannot get home folder of user", 0);
    } catch (const Exception& caught) {
        EXPECT_STREQ(caught.what(), "Cannot get home folder of user");
        EXPECT_NE(dynamic_cast<const WindowsHResult*>(caught.error().get()), nullptr);
        EXPECT_EQ(caught.error()->code(), kUnclassified);
        return;
    }
    FAIL() << "nothing thrown";
}

}  // namespace
}  // namespace slib
