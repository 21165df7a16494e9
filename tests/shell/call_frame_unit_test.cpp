// The call frame itself, run with bodies that fail in every way a handler can.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <thread>

#include "foundation/exception.h"
#include "host_test_support.h"
#include "shell/call_frame.h"
#include "shell/host_data.h"
#include "shell/result.h"

namespace {

using fmlib::FramePolicy;
using fmlib::FunctionCall;
using fmlib::Licence;
using fmlib::ZeroCode;

constexpr FramePolicy kStores{1, Licence::kChecked, ZeroCode::kStored};
constexpr FramePolicy kLeaves{1, Licence::kChecked, ZeroCode::kLeftAlone};

class CallFrameUnit : public ::testing::Test {
  protected:
    void SetUp() override {
        args_ = host_.Arguments({"\"x\""});
        result_ = fmlib::NewData();
        fmlib::SetResultText(*result_, u"untouched");
    }

    template <typename Body>
    FmxErrcode Run(const FramePolicy& policy, Body body) {
        return fmlib::RunInCallFrame(policy, {4, host_.env(), *args_, *result_}, body);
    }

    std::string Result() { return host_.Print(*result_); }
    std::string Code() { return host_.Print("$$VFile_LastError"); }
    std::string Message() { return host_.Print("$$VFile_LastErrorMessage"); }

    shelltest::HostFixture host_;
    shelltest::DataVectPtr args_;
    fmlib::DataPtr result_;
};

TEST_F(CallFrameUnit, SuccessTouchesNeitherResultNorGlobals) {
    EXPECT_EQ(Run(kStores, [](const FunctionCall&) {}), 0);
    EXPECT_EQ(Result(), "untouched");
    EXPECT_EQ(Code(), "");
    EXPECT_EQ(Message(), "");
}

TEST_F(CallFrameUnit, FoundationCodesAreFilteredToTheReportableSet) {
    const struct {
        int32_t thrown;
        const char* reported;
    } cases[] = {{-43, "-43"},   {-1303, "-1303"}, {-120, "2400"}, {-3200, "2400"},
                 {65486, "-50"}, {2400, "2400"},   {1, "2400"}};
    for (const auto& c : cases) {
        EXPECT_EQ(Run(kLeaves, [&](const FunctionCall&) { slib::Throw(c.thrown, "it failed"); }),
                  0);
        EXPECT_EQ(Result(), c.reported) << c.thrown;
        EXPECT_EQ(Code(), c.reported) << c.thrown;
        EXPECT_EQ(Message(), "it failed") << c.thrown;
    }
}

TEST_F(CallFrameUnit, CodeZeroSetsTheResultOnlyWhenThePolicySaysSo) {
    EXPECT_EQ(Run(kLeaves, [](const FunctionCall&) { slib::Throw(0, "zero left"); }), 0);
    EXPECT_EQ(Result(), "untouched");
    EXPECT_EQ(Code(), "0");
    EXPECT_EQ(Message(), "zero left");
    EXPECT_EQ(Run(kStores, [](const FunctionCall&) { slib::Throw(0, "zero stored"); }), 0);
    EXPECT_EQ(Result(), "0");
    EXPECT_EQ(Message(), "zero stored");
}

TEST_F(CallFrameUnit, OtherFailuresAre2400) {
    EXPECT_EQ(Run(kLeaves, [](const FunctionCall&) { throw std::runtime_error("disk on fire"); }),
              0);
    EXPECT_EQ(Result(), "2400");
    EXPECT_EQ(Message(), "disk on fire");
    EXPECT_EQ(Run(kLeaves, [](const FunctionCall&) { throw 42; }), 0);
    EXPECT_EQ(Result(), "2400");
    EXPECT_EQ(Code(), "2400");
    EXPECT_EQ(Message(), "Unknown fatal error occured");
}

TEST_F(CallFrameUnit, MinimumArgumentsAreCheckedBeforeTheBody) {
    bool ran = false;
    constexpr FramePolicy kTwo{2, Licence::kChecked, ZeroCode::kLeftAlone};
    EXPECT_EQ(Run(kTwo, [&](const FunctionCall&) { ran = true; }), 0);
    EXPECT_FALSE(ran);
    EXPECT_EQ(Result(), "-50");
    EXPECT_EQ(Message(), "Not enough parameters");
}

TEST_F(CallFrameUnit, AMessageWithAQuoteStillReportsTheCode) {
    Run(kLeaves, [](const FunctionCall&) { slib::Throw(-43, "first"); });
    EXPECT_EQ(Run(kLeaves, [](const FunctionCall&) { slib::Throw(-48, "a \"quoted\" name"); }), 0);
    EXPECT_EQ(Result(), "-48");
    // The Let expression is malformed, so the globals keep the earlier failure.
    EXPECT_EQ(Code(), "-43");
    EXPECT_EQ(Message(), "first");
}

TEST_F(CallFrameUnit, ReentryOnTheSameThreadIsRefusedNotDeadlocked) {
    FmxErrcode inner = 0;
    EXPECT_EQ(Run(kLeaves,
                  [&](const FunctionCall& call) {
                      inner = fmlib::RunInCallFrame(kLeaves, call, [](const FunctionCall&) {});
                  }),
              0);
    EXPECT_EQ(inner, fmlib::kUnreportedFailure);
    // The lock is free again afterwards, also for another thread.
    FmxErrcode other = -1;
    std::thread([&] { other = Run(kLeaves, [](const FunctionCall&) {}); }).join();
    EXPECT_EQ(other, 0);
}

TEST_F(CallFrameUnit, BareFrameReportsNothing) {
    EXPECT_EQ(fmlib::RunInBareFrame({1, host_.env(), *args_, *result_},
                                    [](const FunctionCall&) { slib::Throw(-50, "lost"); }),
              fmlib::kUnreportedFailure);
    EXPECT_EQ(Result(), "untouched");
    EXPECT_EQ(Code(), "");
}

}  // namespace
