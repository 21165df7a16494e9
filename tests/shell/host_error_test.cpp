// The error-slot rule every host call goes through, exercised with stand-in host functions.
#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <string>

#include "shell/host_error.h"

namespace {

struct SlotSeen {
    int32_t version = -1;
    int32_t code = -1;
    int calls = 0;
};
SlotSeen gSeen;
int32_t gReportCode = 0;

// Behaves like a host function: reads its argument, reports through the slot.
int32_t DoubleIt(int32_t value, FmxErr& slot) {
    gSeen = {slot.version, slot.code, gSeen.calls + 1};
    slot.code = gReportCode;
    return value * 2;
}

void Touch(int32_t& target, FmxErr& slot) {
    ++gSeen.calls;
    target = 7;
    slot.code = gReportCode;
}

class HostCallTest : public ::testing::Test {
  protected:
    void SetUp() override {
        gSeen = {};
        gReportCode = 0;
    }
};

TEST_F(HostCallTest, PassesAFreshSlotAndReturnsTheResult) {
    EXPECT_EQ(fmlib::HostCall(DoubleIt, 21), 42);
    EXPECT_EQ(gSeen.version, kFmxErrSlotVersion);
    EXPECT_EQ(gSeen.code, kFmxErrNone);
    // A second call must not see the first one's slot.
    gReportCode = 5;  // undefined code: ignored
    EXPECT_EQ(fmlib::HostCall(DoubleIt, 1), 2);
    gReportCode = 0;
    fmlib::HostCall(DoubleIt, 1);
    EXPECT_EQ(gSeen.code, kFmxErrNone);
}

TEST_F(HostCallTest, MemoryFailureBecomesBadAllocWithTheHostsText) {
    gReportCode = kFmxErrMemory;
    try {
        fmlib::HostCall(DoubleIt, 1);
        FAIL() << "no exception";
    } catch (const std::bad_alloc& failure) {
        EXPECT_STREQ(failure.what(), "bad allocation");
    }
    EXPECT_EQ(gSeen.calls, 1) << "the host function runs once, before the slot is read";
}

TEST_F(HostCallTest, OtherFailureBecomesAPlainStandardException) {
    gReportCode = kFmxErrOther;
    int32_t target = 0;
    try {
        fmlib::HostCall(Touch, target);
        FAIL() << "no exception";
    } catch (const std::bad_alloc&) {
        FAIL() << "code 2 is not a memory failure";
    } catch (const std::exception& failure) {
        EXPECT_EQ(std::string(failure.what()), std::exception().what());
    }
    EXPECT_EQ(target, 7) << "reference arguments reach the host function as references";
}

TEST(ThrowIfHostFailed, OnlyCodesOneAndTwoRaise) {
    // Codes 1 and 2 are proven through HostCall above.
    for (int32_t code : {0, 3, -1, 1000}) {
        EXPECT_NO_THROW(fmlib::ThrowIfHostFailed(FmxErr{kFmxErrSlotVersion, code})) << code;
    }
}

}  // namespace
