// The argument checks every handler makes before its operation, and the honest -4 of the
// operations not in this build yet.
#include <gtest/gtest.h>

#include <string>

#include "plugin_harness.h"

namespace {

using vftest::Evaluate;

constexpr const char* kFewer = "Not enough parameters";
constexpr const char* kPath = "Path parameter must be text";

class ArgumentChecks : public ::testing::Test {
  protected:
    void SetUp() override {
        plugin_ = &host_.LoadPlugin(vftest::ShippedPlugin());
        ASSERT_TRUE(plugin_->Enabled());
    }

    // Every call must report `code` and `message` in its result and both globals.
    void Check(std::initializer_list<const char16_t*> calls, int code, const char* message) {
        for (const char16_t* call : calls) {
            CheckOne(call, std::to_string(code), message);
        }
    }
    void CheckOne(const char16_t* call, const std::string& code, const char* message) {
        SCOPED_TRACE(vftest::Utf8(call));
        // Reset the globals so that a call that reports nothing cannot pass on an old report.
        ASSERT_EQ(
            Evaluate(u"Let ( [ $$VFile_LastError = \"\" ; $$VFile_LastErrorMessage = \"\" ] ; 1 )")
                .error,
            0);
        const vftest::TypedValue result = Evaluate(call);
        ASSERT_EQ(result.error, 0);
        EXPECT_EQ(result.text, code);
        EXPECT_EQ(Evaluate(u"$$VFile_LastError").text, code);
        EXPECT_EQ(Evaluate(u"$$VFile_LastErrorMessage").text, message);
    }

    fmhost::driver::Host host_;
    fmhost::driver::Plugin* plugin_ = nullptr;
};

TEST_F(ArgumentChecks, TooFewArguments) {
    Check({u"VFile_New()", u"VFile_Delete()", u"VFile_Copy( \"a\" )", u"VFile_Move( \"a\" )",
           u"VFile_Choose()", u"VFile_Read()", u"VFile_Write( \"a\" )", u"VFile_Get()",
           u"VFile_Set( \"owner\" )", u"VFile_Unmount()", u"VFile_Open()",
           u"VFile_Convert( \"a\" )", u"VFile_Compress( \"a\" )", u"VFile_DeCompress( \"a\" )"},
          -50, kFewer);
    Check({u"VFile_Mount()"}, -50, "No URL to mount");
}

// Item selectors of VFile_Get and VFile_Set take a path as argument 1.
TEST_F(ArgumentChecks, PathArgumentsMustBeTextAndAreCheckedInOrder) {
    Check({u"VFile_New( 1 )", u"VFile_Delete( Date ( 1 ; 2 ; 2020 ) )", u"VFile_Copy( 1 ; \"b\" )",
           u"VFile_Copy( \"a\" ; 2 )", u"VFile_Move( \"a\" ; 2 )", u"VFile_Read( 1 )",
           u"VFile_Write( 1 ; \"data\" )", u"VFile_Open( 1 )", u"VFile_Open( \"a\" ; 5 )",
           u"VFile_Open( 1 ; \"b\" ; \"c\" )", u"VFile_Convert( \"a\" ; 2 )", u"VFile_Reveal( 1 )",
           u"VFile_Compress( \"a\" ; 2 )", u"VFile_DeCompress( 1 ; \"b\" )", u"VFile_Run( 1 )",
           u"VFile_Get( \"size\" )", u"VFile_Get( \"size\" ; 3 )",
           u"VFile_Set( \"owner\" ; 3 ; \"x\" )"},
          -50, kPath);
    Check({u"VFile_Open( \"a\" ; \"b\" ; \"c\" )"}, -50, "Too many parameters");
}

}  // namespace
