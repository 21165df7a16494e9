// The call frame itself, run with bodies that fail in every way a handler can.
#include <gtest/gtest.h>

#include <iterator>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "foundation/error_boxes.h"
#include "foundation/exception.h"
#include "host_test_support.h"
#include "shell/call_frame.h"
#include "shell/host_data.h"
#include "shell/host_env.h"
#include "shell/host_objects.h"
#include "shell/host_text.h"
#include "shell/host_values.h"
#include "shell/result.h"

namespace {

using fmlib::FramePolicy;
using fmlib::FunctionCall;
using fmlib::Licence;
using fmlib::ZeroCode;

constexpr FramePolicy kStores{1, Licence::kChecked, ZeroCode::kStored};
constexpr FramePolicy kLeaves{1, Licence::kChecked, ZeroCode::kLeftAlone};

using Outcome = std::vector<std::string>;  // result, $$VFile_LastError, $$VFile_LastErrorMessage

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
    // Runs `body` in a frame that must answer 0 to the host, and reads what it left behind.
    template <typename Body>
    Outcome After(const FramePolicy& policy, Body body) {
        EXPECT_EQ(Run(policy, [&](const FunctionCall&) { body(); }), 0);
        return {host_.Print(*result_), host_.Print("$$VFile_LastError"),
                host_.Print("$$VFile_LastErrorMessage")};
    }

    shelltest::HostFixture host_;
    shelltest::DataVectPtr args_;
    fmlib::DataPtr result_;
};

TEST_F(CallFrameUnit, ReportsEachKindOfFailureAndSuccessTouchesNothing) {
    constexpr FramePolicy kTwo{2, Licence::kChecked, ZeroCode::kLeftAlone};
    const struct {
        FramePolicy policy;
        void (*body)();
        Outcome outcome;
    } cases[] = {
        {kStores, [] {}, {"untouched", "", ""}},
        {kLeaves, [] { slib::Throw(0, "zero left"); }, {"untouched", "0", "zero left"}},
        {kStores, [] { slib::Throw(0, "zero stored"); }, {"0", "0", "zero stored"}},
        {kLeaves, [] { throw std::runtime_error("on fire"); }, {"2400", "2400", "on fire"}},
        {kLeaves, [] { throw 42; }, {"2400", "2400", "Unknown fatal error occured"}},
        // Checked before the body, which would otherwise report its own failure.
        {kTwo, [] { slib::Throw(-43, "body ran"); }, {"-50", "-50", "Not enough parameters"}},
        // Quotes, backslashes and line breaks in a message reach the globals as they are.
        {kLeaves, [] { slib::Throw(-48, "a \"b\\\" c\rd"); }, {"-48", "-48", "a \"b\\\" c\rd"}}};
    for (size_t i = 0; i < std::size(cases); ++i) {
        EXPECT_EQ(After(cases[i].policy, cases[i].body), cases[i].outcome) << "case " << i;
    }
}

// A card reader without a card must fail the call, not ask on a screen no one may see.
TEST_F(CallFrameUnit, BodiesRunWithoutSystemErrorBoxesAndTheCallerGetsItsModeBack) {
    ASSERT_FALSE(slib::ErrorBoxesAreOff());
    bool inCallFrame = false;
    bool inBareFrame = false;
    Run(kLeaves, [&](const FunctionCall&) {
        inCallFrame = slib::ErrorBoxesAreOff();
        slib::Throw(-43, "reported without boxes too");
    });
    fmlib::RunInBareFrame({1, host_.env(), *args_, *result_},
                          [&](const FunctionCall&) { inBareFrame = slib::ErrorBoxesAreOff(); });
    EXPECT_TRUE(inCallFrame);
    EXPECT_TRUE(inBareFrame);
    EXPECT_FALSE(slib::ErrorBoxesAreOff());
}

TEST_F(CallFrameUnit, FoundationCodesAreFilteredToTheReportableSet) {
    const std::pair<int32_t, const char*> cases[] = {
        {-43, "-43"},   {-1303, "-1303"}, {-120, "2400"}, {-3200, "2400"},
        {65486, "-50"}, {2400, "2400"},   {1, "2400"}};
    for (const auto& c : cases) {
        EXPECT_EQ(After(kLeaves, [&] { slib::Throw(c.first, "it failed"); }),
                  (Outcome{c.second, c.second, "it failed"}))
            << c.first;
    }
}

// Nest( n ) evaluates Nest( n - 1 ) inside itself; Nest( 0 ) fails in a call frame with the
// message "deep", noting that it ran and what the frame answered the host.
struct Nesting {
    bool frameRan = false;
    FmxErrcode frameAnswer = -1;
} gNesting;

FmxErrcode Nest(int16_t, const FmxExprEnv& env, const FmxDataVect& args, FmxData& result) {
    const auto depth =
        static_cast<int>(fmlib::FixPtAsFloat(fmlib::DataGetAsNumber(fmlib::DataVectAt(args, 0))));
    if (depth > 0) {
        const std::string inner = "Nest ( " + std::to_string(depth - 1) + " )";
        return fmlib::ExprEnvEvaluate(
            env, *fmlib::MakeText(std::u16string(inner.begin(), inner.end())), result);
    }
    gNesting.frameRan = true;
    gNesting.frameAnswer = fmlib::RunInCallFrame(
        kLeaves, {1, env, args, result}, [](const FunctionCall&) { slib::Throw(-43, "deep"); });
    return 0;
}

// When the host refuses the calculation that sets the globals (here: one nested deeper than it
// allows), the frame must not answer as if the failure had been reported.
TEST_F(CallFrameUnit, GlobalsTheHostRefusesFailTheCalculationInstead) {
    const fmlib::QuadCharPtr id = fmlib::NewQuadChar('T', 'e', 's', 't');
    ASSERT_EQ(fmlib::ExprEnvRegisterExternalFunction(*id, 1, *fmlib::MakeText(u"Nest"),
                                                     *fmlib::MakeText(u"Nest ( depth )"), 1, 1,
                                                     0xFF01, Nest),
              0);
    int refusedAt = -1;
    for (int depth = 0; depth < 40 && refusedAt < 0; ++depth) {
        host_.Value("Let ( [ $$VFile_LastError = \"\" ; $$VFile_LastErrorMessage = \"\" ] ; 0 )");
        gNesting = Nesting();
        fmlib::DataPtr value = fmlib::NewData();
        const std::string calculation = "Nest ( " + std::to_string(depth) + " )";
        fmlib::ExprEnvEvaluate(
            host_.env(), *fmlib::MakeText(std::u16string(calculation.begin(), calculation.end())),
            *value);
        ASSERT_TRUE(gNesting.frameRan) << "the host refused the nesting before the frame ran";
        if (gNesting.frameAnswer != 0) {
            EXPECT_EQ(gNesting.frameAnswer, fmlib::kUnreportedFailure);
            EXPECT_EQ(host_.Print("$$VFile_LastErrorMessage"), "");
            refusedAt = depth;
            continue;
        }
        EXPECT_EQ(host_.Print("$$VFile_LastErrorMessage"), "deep") << depth;
    }
    EXPECT_GT(refusedAt, 0) << "the host never refused the globals";
    fmlib::ExprEnvUnRegisterExternalFunction(*id, 1);
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
    EXPECT_EQ(host_.Print(*result_), "untouched");
    EXPECT_EQ(host_.Print("$$VFile_LastError"), "");
}

}  // namespace
