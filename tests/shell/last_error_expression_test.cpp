// The Let expression that records a failure, and the extension-version gate of initialisation.
#include <gtest/gtest.h>

#include <climits>

#include "shell/extension_version.h"
#include "shell/last_error_expression.h"

namespace {

TEST(LastErrorExpression, ReadsExactlyAsTheHostExpects) {
    EXPECT_EQ(fmlib::LastErrorExpression(-50, "Not enough parameters"),
              "Let ( [ $$VFile_LastError = -50 ; $$VFile_LastErrorMessage = "
              "\"Not enough parameters\" ] ; \"\" )");
    EXPECT_EQ(fmlib::LastErrorExpression(2400, "bad allocation"),
              "Let ( [ $$VFile_LastError = 2400 ; $$VFile_LastErrorMessage = "
              "\"bad allocation\" ] ; \"\" )");
}

TEST(LastErrorExpression, CodeIsPlainSignedDecimal) {
    EXPECT_NE(fmlib::LastErrorExpression(0, "").find("= 0 ;"), std::string::npos);
    EXPECT_NE(fmlib::LastErrorExpression(INT16_MIN, "").find("= -32768 ;"), std::string::npos);
    EXPECT_NE(fmlib::LastErrorExpression(-1303, "").find("= -1303 ;"), std::string::npos);
}

TEST(LastErrorExpression, MessageIsNotEscaped) {
    // A quote or backslash is passed through and breaks the expression; that is accepted.
    EXPECT_EQ(fmlib::LastErrorExpression(-43, "a \"b\" c\\d"),
              "Let ( [ $$VFile_LastError = -43 ; $$VFile_LastErrorMessage = "
              "\"a \"b\" c\\d\" ] ; \"\" )");
    EXPECT_EQ(fmlib::LastErrorExpression(0, ""),
              "Let ( [ $$VFile_LastError = 0 ; $$VFile_LastErrorMessage = \"\" ] ; \"\" )");
}

TEST(LastErrorExpression, ReadBackFallsBackToNoErrorMessageForBothGlobals) {
    EXPECT_STREQ(fmlib::kReadLastErrorExpression,
                 "If( IsEmpty( $$VFile_LastError ); \"No Error Message\"; $$VFile_LastError )");
    EXPECT_STREQ(fmlib::kReadLastErrorMessageExpression,
                 "If( IsEmpty( $$VFile_LastErrorMessage ); \"No Error Message\"; "
                 "$$VFile_LastErrorMessage )");
}

TEST(ExtensionVersion, AcceptsFiftyToTwoHundredFiftyFive) {
    for (int16_t version : {50, 51, 55, 77, 254, 255}) {
        EXPECT_TRUE(fmlib::IsSupportedExtensionVersion(version)) << version;
    }
    for (int16_t version : {49, 0, 17, 256, 1000, -1, -2, INT16_MIN, INT16_MAX}) {
        EXPECT_FALSE(fmlib::IsSupportedExtensionVersion(version)) << version;
    }
}

}  // namespace
