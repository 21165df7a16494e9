// The argument checks every handler makes before its operation, and the honest -4 of the
// operations not in this build yet.
#include <gtest/gtest.h>

#include <string>

#include "plugin_harness.h"

namespace {

using vftest::Evaluate;

struct Case {
    const char16_t* call;
    int code;
    const char* message;
};

class ArgumentChecks : public ::testing::Test {
  protected:
    void SetUp() override {
        plugin_ = &host_.LoadPlugin(vftest::ShippedPlugin());
        ASSERT_TRUE(plugin_->Enabled());
    }

    void Check(const Case& c) {
        SCOPED_TRACE(vftest::Utf8(c.call));
        // Reset the globals so that a call that reports nothing cannot pass on an old report.
        ASSERT_EQ(
            Evaluate(u"Let ( [ $$VFile_LastError = \"\" ; $$VFile_LastErrorMessage = \"\" ] ; 1 )")
                .error,
            0);
        const vftest::TypedValue result = Evaluate(c.call);
        ASSERT_EQ(result.error, 0);
        EXPECT_EQ(result.text, std::to_string(c.code));
        EXPECT_EQ(Evaluate(u"$$VFile_LastError").text, std::to_string(c.code));
        EXPECT_EQ(Evaluate(u"$$VFile_LastErrorMessage").text, c.message);
    }

    fmhost::driver::Host host_;
    fmhost::driver::Plugin* plugin_ = nullptr;
};

constexpr const char* kFewer = "Not enough parameters";
constexpr const char* kPath = "Path parameter must be text";
constexpr const char* kLater = "Not implemented in this build";

TEST_F(ArgumentChecks, TooFewArguments) {
    const Case cases[] = {
        {u"VFile_New()", -50, kFewer},
        {u"VFile_Delete()", -50, kFewer},
        {u"VFile_Copy( \"a\" )", -50, kFewer},
        {u"VFile_Move( \"a\" )", -50, kFewer},
        {u"VFile_Choose()", -50, kFewer},
        {u"VFile_Read()", -50, kFewer},
        {u"VFile_Write( \"a\" )", -50, kFewer},
        {u"VFile_Get()", -50, kFewer},
        {u"VFile_Set( \"owner\" )", -50, kFewer},
        {u"VFile_Unmount()", -50, kFewer},
        {u"VFile_Open()", -50, kFewer},
        {u"VFile_Convert( \"a\" )", -50, kFewer},
        {u"VFile_Compress( \"a\" )", -50, kFewer},
        {u"VFile_DeCompress( \"a\" )", -50, kFewer},
        {u"VFile_Mount()", -50, "No URL to mount"},
    };
    for (const Case& c : cases)
        Check(c);
}

TEST_F(ArgumentChecks, PathArgumentsMustBeTextAndAreCheckedInOrder) {
    const Case cases[] = {
        {u"VFile_New( 1 )", -50, kPath},
        {u"VFile_Delete( Date ( 1 ; 2 ; 2020 ) )", -50, kPath},
        {u"VFile_Copy( 1 ; \"b\" )", -50, kPath},
        {u"VFile_Copy( \"a\" ; 2 )", -50, kPath},
        {u"VFile_Move( \"a\" ; 2 )", -50, kPath},
        {u"VFile_Read( 1 )", -50, kPath},
        {u"VFile_Write( 1 ; \"data\" )", -50, kPath},
        {u"VFile_Open( 1 )", -50, kPath},
        {u"VFile_Open( \"a\" ; 5 )", -50, kPath},
        {u"VFile_Open( \"a\" ; \"b\" ; \"c\" )", -50, "Too many parameters"},
        {u"VFile_Open( 1 ; \"b\" ; \"c\" )", -50, kPath},
        {u"VFile_Convert( \"a\" ; 2 )", -50, kPath},
        {u"VFile_Reveal( 1 )", -50, kPath},
        {u"VFile_Compress( \"a\" ; 2 )", -50, kPath},
        {u"VFile_DeCompress( 1 ; \"b\" )", -50, kPath},
        {u"VFile_Run( 1 )", -50, kPath},
        // Item selectors of VFile_Get and VFile_Set take a path as argument 1.
        {u"VFile_Get( \"size\" )", -50, kPath},
        {u"VFile_Get( \"size\" ; 3 )", -50, kPath},
        {u"VFile_Set( \"owner\" ; 3 ; \"x\" )", -50, kPath},
    };
    for (const Case& c : cases)
        Check(c);
}

TEST_F(ArgumentChecks, OperationsNotInThisBuildSaySo) {
    const Case cases[] = {
        {u"VFile_Choose( \"file\" )", -4, kLater},
        {u"VFile_Read( \"a\" )", -4, kLater},
        {u"VFile_Write( \"a\" ; 5 )", -4, kLater},
        {u"VFile_Get( \"size\" ; \"a\" )", -4, kLater},
        {u"VFile_Get( \"type\" ; 5 )", -4, kLater},
        {u"VFile_Set( \"rotate\" ; 5 )", -4, kLater},
        {u"VFile_Convert( \"a\" ; \"b\" )", -4, kLater},
        {u"VFile_Compress( \"a\" ; \"b\" )", -4, kLater},
        {u"VFile_DeCompress( \"a\" ; \"b\" )", -4, kLater},
    };
    for (const Case& c : cases)
        Check(c);
}

}  // namespace
