// Functions called through the emulated host's calculation engine: the results, the two
// last-error globals, and failures injected into the host underneath a call.
#include <gtest/gtest.h>

#include <string>

#include "plugin_harness.h"

namespace {

using vftest::Evaluate;
using vftest::TypedValue;

constexpr int32_t kText = 1;
constexpr int32_t kNumber = 2;

class CallFrame : public ::testing::Test {
  protected:
    void SetUp() override {
        plugin_ = &host_.LoadPlugin(vftest::ShippedPlugin());
        ASSERT_TRUE(plugin_->Enabled()) << "init answered " << plugin_->InitResult();
    }

    // Expects `call` to fail with `code` and `message`, reported in the result and both globals.
    void ExpectFailure(const std::u16string& call, int code, const std::string& message) {
        SCOPED_TRACE(vftest::Utf8(call));
        const TypedValue result = Evaluate(call);
        ASSERT_EQ(result.error, 0) << "the host must see no error";
        EXPECT_EQ(result.type, kNumber);
        EXPECT_EQ(result.text, std::to_string(code));
        // Read directly: a VFile_Get here would run under any fault still armed.
        EXPECT_EQ(Evaluate(u"$$VFile_LastError").text, std::to_string(code));
        EXPECT_EQ(Evaluate(u"$$VFile_LastErrorMessage").text, message);
    }

    // The globals as VFile_Get reads them back.
    void ExpectGlobals(const std::string& code, const std::string& message) {
        EXPECT_EQ(Evaluate(u"VFile_Get( \"lastError\" )").text, code);
        EXPECT_EQ(Evaluate(u"VFile_Get( \"lastErrorMessage\" )").text, message);
    }

    fmhost::driver::Host host_;
    fmhost::driver::Plugin* plugin_ = nullptr;
};

TEST_F(CallFrame, VersionInEveryFormat) {
    const struct {
        const char16_t* call;
        const char* text;
    } cases[] = {
        {u"VFile_Version()", "3.0"},
        {u"VFile_Version( \"SHORT\" )", "3.0"},
        {u"VFile_Version( \"Long\" )", "Quorvel Vantafile Plug-In 3.0"},
        {u"VFile_Version( \"platform\" )", "Windows"},
        {u"VFile_Version( \"autoupdate\" )", "03000002"},
        {u"VFile_Version( \"xyz\" )", "3.0"},
        {u"VFile_Version( \"\" )", "3.0"},
        {u"VFile_Version( \"long\" ; \"platform\" ; 7 )", "Quorvel Vantafile Plug-In 3.0"},
    };
    for (const auto& c : cases) {
        const TypedValue result = Evaluate(c.call);
        EXPECT_EQ(result.error, 0) << vftest::Utf8(c.call);
        EXPECT_EQ(result.type, kText) << vftest::Utf8(c.call);
        EXPECT_EQ(result.text, c.text) << vftest::Utf8(c.call);
    }
    ExpectGlobals("No Error Message", "No Error Message");
}

TEST_F(CallFrame, RegisterAcceptsAnyCode) {
    const TypedValue result = Evaluate(u"VFile_Register( \"ABCD-1234\" )");
    EXPECT_EQ(result.type, kNumber);
    EXPECT_EQ(result.text, "0");
}

TEST_F(CallFrame, LastErrorReadsNoErrorMessageBeforeAnyFailure) {
    ExpectGlobals("No Error Message", "No Error Message");
    // The selectors are matched without regard to case.
    EXPECT_EQ(Evaluate(u"VFile_Get( \"LASTERROR\" )").text, "No Error Message");
}

TEST_F(CallFrame, FailureSetsResultAndGlobalsAndSuccessLeavesThem) {
    ExpectFailure(u"VFile_Delete()", -50, "Not enough parameters");
    EXPECT_EQ(Evaluate(u"$$VFile_LastError").type, kNumber);
    ExpectGlobals("-50", "Not enough parameters");
    // A path that is not text is refused before the operation is looked at.
    ExpectFailure(u"VFile_Delete( 12 )", -50, "Path parameter must be text");
    // Successful calls leave the last failure in place.
    EXPECT_EQ(Evaluate(u"VFile_Version( \"long\" )").error, 0);
    EXPECT_EQ(Evaluate(u"VFile_Register( 1 )").text, "0");
    ExpectGlobals("-50", "Path parameter must be text");
}

TEST_F(CallFrame, InjectedHostMemoryFailureIsReportedAs2400) {
    // The first host call inside each function call fails; the report itself runs on later calls.
    host_.FailCall(1, 1, kFmhostFaultEachFunctionCall);
    ExpectFailure(u"VFile_Delete( \"a.txt\" )", 2400, "bad allocation");
}

TEST_F(CallFrame, InjectedUnknownHostFailureIsReportedAs2400WithItsText) {
    host_.FailCall(1, 2, kFmhostFaultEachFunctionCall);
    ExpectFailure(u"VFile_Delete( \"a.txt\" )", 2400, "std::exception");
}

TEST_F(CallFrame, FailureWhileReportingFailsTheCalculationInsteadOfCrashing) {
    // VFile_Delete makes: argument count, then the -50 result (FixPt, SetAsNumber, ...). Failing
    // the second call hits the report itself; nothing can be reported, so the host gets an error.
    host_.FailCall(2, 1, kFmhostFaultEachFunctionCall);
    const TypedValue result = Evaluate(u"VFile_Delete()");
    EXPECT_NE(result.error, 0);
    host_.FailCall(0, 0, kFmhostFaultEachFunctionCall);
    ExpectGlobals("No Error Message", "No Error Message");
}

TEST_F(CallFrame, VersionHasNoFailureReport) {
    host_.FailCall(1, 1, kFmhostFaultEachFunctionCall);
    EXPECT_NE(Evaluate(u"VFile_Version( \"long\" )").error, 0);
    host_.FailCall(0, 0, kFmhostFaultEachFunctionCall);
    ExpectGlobals("No Error Message", "No Error Message");
}

TEST_F(CallFrame, HostEnforcesOnlyTheBoundsOfRevealAndRun) {
    // Refused by the host before the plug-in runs: no result, globals untouched.
    EXPECT_NE(Evaluate(u"VFile_Reveal()").error, 0);
    EXPECT_NE(Evaluate(u"VFile_Reveal( \"a\" ; \"b\" )").error, 0);
    EXPECT_NE(Evaluate(u"VFile_Run( \"a\" ; \"b\" ; \"c\" )").error, 0);
    ExpectGlobals("No Error Message", "No Error Message");
    // Everything else reaches the handler and fails with the plug-in's own error.
    ExpectFailure(u"VFile_Copy( \"a\" )", -50, "Not enough parameters");
}

}  // namespace
