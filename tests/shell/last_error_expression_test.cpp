// The Let expression that records a failure, read back through the emulated host's engine, and
// the extension-version gate of initialisation.
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "host_core/calc_test_support.h"
#include "shell/extension_version.h"
#include "shell/last_error_expression.h"

namespace {

TEST(LastErrorExpression, IsTheLetOfBothGlobals) {
    EXPECT_EQ(fmlib::LastErrorExpression(-50, "Not enough parameters"),
              u"Let ( [ $$VFile_LastError = -50 ; $$VFile_LastErrorMessage = "
              u"\"Not enough parameters\" ] ; \"\" )");
}

TEST(LastErrorExpression, EveryMessageReadsBackAsDocumented) {
    const struct {
        int16_t code;
        std::string message;  // UTF-8, as failures carry it
        std::u16string readBack;
    } cases[] = {
        {-50, "Not enough parameters", u"Not enough parameters"},
        {-50, "Unable to get zip item \"a\\0b\": its name holds a NUL character",
         u"Unable to get zip item \"a\\0b\": its name holds a NUL character"},
        {-43, "ends in a backslash \\", u"ends in a backslash \\"},
        {-43, "\\\"", u"\\\""},
        {-43, "\"\"", u"\"\""},
        {-48, "pilcrow \xC2\xB6 sign", u"pilcrow \u00B6 sign"},
        {-48, "\xC2\xB6", u"\u00B6"},
        {-48, "line\rbreak\r", u"line\rbreak\r"},
        {-48, "line\nfeed", u"line\u240Afeed"},
        {-48, "tab\there", u"tab\u2409here"},
        {-48, std::string("nul\0here", 8), u"nul\u2400here"},
        {-48, "\x1F\x7F", u"\u241F\u2421"},
        {-48,
         "Gr\xC3\xBC\xC3\x9F"
         "e \xE4\xB8\xAD \xF0\x9F\x93\x81",
         u"Grüße 中 📁"},
        {2400, "bad \xFF byte", u"bad \uFFFD byte"},
        {0, "", u""},
        {INT16_MIN, "x", u"x"},
        {INT16_MAX, "/* not a comment */ // nor this", u"/* not a comment */ // nor this"},
    };
    for (const auto& c : cases) {
        fmhost::calc_test::TestContext context;
        fmhost::Value value;
        ASSERT_EQ(fmhost::Evaluate(fmlib::LastErrorExpression(c.code, c.message), context, value),
                  fmhost::kNoError)
            << c.message;
        EXPECT_EQ(value.AsText().ToUtf8(), "");
        EXPECT_EQ(context.GetSession().GetGlobal(u"VFile_LastError").AsText().ToUtf8(),
                  std::to_string(c.code));
        EXPECT_EQ(context.GetSession().GetGlobal(u"VFile_LastErrorMessage").AsText().Chars(),
                  c.readBack)
            << c.message;
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
