// The Let expression that records a failure, and the extension-version gate of initialisation.
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "shell/extension_version.h"
#include "shell/last_error_expression.h"

namespace {

TEST(LastErrorExpression, ReadsExactlyAsTheHostExpectsWithThePlainCodeAndUnescapedMessage) {
    EXPECT_EQ(fmlib::LastErrorExpression(-50, "Not enough parameters"),
              "Let ( [ $$VFile_LastError = -50 ; $$VFile_LastErrorMessage = "
              "\"Not enough parameters\" ] ; \"\" )");
    const auto let = [](const std::string& code, const std::string& message) {
        return "Let ( [ $$VFile_LastError = " + code + " ; $$VFile_LastErrorMessage = \"" +
               message + "\" ] ; \"\" )";
    };
    // A quote or backslash is passed through and breaks the expression; that is accepted.
    const struct {
        int32_t code;
        const char* codeText;
        const char* message;
    } cases[] = {{2400, "2400", "bad allocation"},
                 {0, "0", ""},
                 {INT16_MIN, "-32768", ""},
                 {-1303, "-1303", ""},
                 {-43, "-43", "a \"b\" c\\d"}};
    for (const auto& c : cases) {
        EXPECT_EQ(fmlib::LastErrorExpression(c.code, c.message), let(c.codeText, c.message));
    }
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
