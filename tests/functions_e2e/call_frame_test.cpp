// Functions called through the emulated host's calculation engine: the results, the two
// last-error globals, and failures injected into the host underneath a call.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "plugin_harness.h"
#include "resources/version.h"

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
    // The release's version comes from the generated header; the forms are what is tested here.
    const std::string version = VF_VERSION_SHORT_TEXT;
    const std::string name = "Quorvel Vantafile Plug-In " + version;
    char autoUpdate[16];
    std::snprintf(autoUpdate, sizeof autoUpdate, "%02d%02d%02d%02d", VF_VERSION_MAJOR,
                  VF_VERSION_MINOR, VF_VERSION_PATCH, VF_VERSION_BUILD);
    const struct {
        const char16_t* call;
        std::string text;
    } cases[] = {
        {u"VFile_Version()", version},
        {u"VFile_Version( \"SHORT\" )", version},
        {u"VFile_Version( \"Long\" )", name},
        {u"VFile_Version( \"platform\" )", "Windows"},
        {u"VFile_Version( \"autoupdate\" )", autoUpdate},
        {u"VFile_Version( \"xyz\" )", version},
        {u"VFile_Version( \"\" )", version},
        {u"VFile_Version( \"long\" ; \"platform\" ; 7 )", name},
    };
    for (const auto& c : cases) {
        const TypedValue result = Evaluate(c.call);
        EXPECT_EQ(result.error, 0) << vftest::Utf8(c.call);
        EXPECT_EQ(result.type, kText) << vftest::Utf8(c.call);
        EXPECT_EQ(result.text, c.text) << vftest::Utf8(c.call);
    }
    ExpectGlobals("No Error Message", "No Error Message");
}

TEST_F(CallFrame, RegisterAcceptsAnyCodeAndLastErrorSelectorsIgnoreCase) {
    const TypedValue result = Evaluate(u"VFile_Register( \"ABCD-1234\" )");
    EXPECT_EQ(result.type, kNumber);
    EXPECT_EQ(result.text, "0");
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

// A message quotes what the user gave, whatever it holds; it reaches both globals with every
// character as documented: quotes, backslashes, pilcrows and line breaks as themselves, other
// control characters as their visible symbols (a tab as U+2409, NUL as U+2400).
TEST_F(CallFrame, AMessageHoldingAnyCharacterReachesBothGlobals) {
    const std::u16string nul(1, u'\0');
    const struct {
        std::u16string optionConstant;  // the option's name as a text constant
        std::string message;
    } cases[] = {
        {u"\"say \\\"hi\\\"\"", "Unknown option: say \"hi\""},
        {u"\"C:\\\\dir\\\\\"", "Unknown option: C:\\dir\\"},
        {u"\"a\\\"b\\\\c\\¶d¶e\tf" + nul + u"g\"",
         "Unknown option: a\"b\\c¶d\re\xE2\x90\x89"
         "f\xE2\x90\x80g"},
    };
    for (const auto& c : cases) {
        ExpectFailure(u"VFile_Choose( \"file\" ; " + c.optionConstant + u" ; \"x\" )", -50,
                      c.message);
        ExpectGlobals("-50", c.message);
    }
}

TEST_F(CallFrame, InjectedHostFailuresAreReportedAs2400OrFailTheCalculation) {
    // The n-th host call inside each function call fails with the slot code. VFile_Delete makes:
    // argument count, then the -50 result (FixPt, SetAsNumber, ...): failing the second call hits
    // the report itself, so nothing can be reported and the host gets an error. VFile_Version has
    // no failure report at all.
    const struct {
        uint32_t call;
        int32_t slotCode;
        const char16_t* function;
        const char* message;  // null: the calculation fails, the globals stay untouched
    } cases[] = {{1, 1, u"VFile_Delete( \"a.txt\" )", "bad allocation"},
                 {1, 2, u"VFile_Delete( \"a.txt\" )", "std::exception"},
                 {2, 1, u"VFile_Delete()", nullptr},
                 {1, 1, u"VFile_Version( \"long\" )", nullptr}};
    for (const auto& c : cases) {
        host_.FailCall(c.call, c.slotCode, kFmhostFaultEachFunctionCall);
        if (c.message != nullptr) {
            ExpectFailure(c.function, 2400, c.message);
            continue;
        }
        EXPECT_NE(Evaluate(c.function).error, 0) << vftest::Utf8(c.function);
        host_.FailCall(0, 0, kFmhostFaultEachFunctionCall);
        ExpectGlobals("2400", "std::exception");  // still the second row's report
    }
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
