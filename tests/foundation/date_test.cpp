// Dates: the epoch, normalisation, and the arithmetic to and from Windows file times.

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "foundation/date.h"
#include "foundation/utf16_string.h"

namespace slib {
namespace {

constexpr uint64_t kUnixEpochTicks = 116444736000000000ull;  // 1970-01-01 as a file time
constexpr int64_t kUnixEpochSeconds = 62135596800;           // the host's number for 1970-01-01

TEST(Date, CountsFromTheFirstOfJanuaryOfYearOne) {
    EXPECT_EQ(Date(0, 0).description()->units(), u"0001-01-01 00:00:00");
    EXPECT_EQ(Date(kUnixEpochSeconds, 0).description()->units(), u"1970-01-01 00:00:00");
    EXPECT_EQ(Date(63087379200, 0).description()->units(), u"2000-02-29 00:00:00");
    EXPECT_EQ(Date(63871286399, 500000).description()->units(), u"2024-12-31 23:59:59.500000");
    EXPECT_EQ(Date(-1, 0).description()->units(), u"0000-12-31 23:59:59");
}

TEST(Date, MicrosecondsCarryIntoSeconds) {
    const Date back(10, -1);
    EXPECT_EQ(back.seconds(), 9);
    EXPECT_EQ(back.microseconds(), 999999);
    const Date forward(10, 2500000);
    EXPECT_EQ(forward.seconds(), 12);
    EXPECT_EQ(forward.microseconds(), 500000);
    const Date saturated(std::numeric_limits<int64_t>::max(), 1000000);
    EXPECT_EQ(saturated.seconds(), std::numeric_limits<int64_t>::max());
}

TEST(FileTime, ConvertsFromAndToTicks) {
    const std::shared_ptr<Date> fileTimeEpoch = Date::FromFileTimeTicks(0);
    EXPECT_EQ(fileTimeEpoch->seconds(), Date::kFileTimeEpochSeconds);
    EXPECT_EQ(fileTimeEpoch->description()->units(), u"1601-01-01 00:00:00");

    const std::shared_ptr<Date> unixEpoch = Date::FromFileTimeTicks(kUnixEpochTicks + 19);
    EXPECT_EQ(unixEpoch->seconds(), kUnixEpochSeconds);
    EXPECT_EQ(unixEpoch->microseconds(), 1) << "finer ticks are cut off";

    EXPECT_EQ(Date::FromFileTimeTicks(std::numeric_limits<uint64_t>::max())->toFileTimeTicks(),
              std::nullopt)
        << "beyond the signed tick range";

    EXPECT_EQ(Date(Date::kFileTimeEpochSeconds, 0).toFileTimeTicks(), 0u);
    EXPECT_EQ(Date(kUnixEpochSeconds, 123456).toFileTimeTicks(), kUnixEpochTicks + 1234560);
    EXPECT_EQ(Date(Date::kFileTimeEpochSeconds - 1, 999999).toFileTimeTicks(), std::nullopt);
    EXPECT_EQ(Date(std::numeric_limits<int64_t>::max(), 0).toFileTimeTicks(), std::nullopt);
    const uint64_t maxTicks = std::numeric_limits<int64_t>::max();
    EXPECT_EQ(Date::FromFileTimeTicks(maxTicks)->toFileTimeTicks(), maxTicks - maxTicks % 10);
}

TEST(FileTime, RoundTripsAtMicrosecondPrecision) {
    const uint64_t samples[] = {0, 10, kUnixEpochTicks, 133500000000000000,
                                2650467743999999990};  // the last is 9999-12-31 23:59:59.999999
    for (uint64_t ticks : samples) {
        EXPECT_EQ(Date::FromFileTimeTicks(ticks)->toFileTimeTicks(), ticks);
    }
    EXPECT_EQ(Date::FromFileTimeTicks(2650467743999999990ull)->description()->units(),
              u"9999-12-31 23:59:59.999999");
}

}  // namespace
}  // namespace slib
