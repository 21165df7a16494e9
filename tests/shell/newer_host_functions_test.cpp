// The host calls newer than the oldest host we accept: on a host that has them they are used, on
// one that does not the fallback gives the same numbers and a plain "none" for the rest.
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "fmx_constants.h"
#include "host_test_support.h"
#include "shell/host_data.h"
#include "shell/host_objects.h"
#include "shell/host_text.h"
#include "shell/host_values.h"
#include "shell/newer_host_functions.h"
#include "shell/result.h"

namespace {

using shelltest::HostFixture;

class NewerHostFunctions : public ::testing::TestWithParam<int16_t> {
  protected:
    void SetUp() override { fmlib::RememberHostExtensionVersion(GetParam()); }
    void TearDown() override { fmlib::RememberHostExtensionVersion(77); }

    HostFixture host_;
};

TEST_P(NewerHostFunctions, IntegersKeepEveryDigitOnEveryHost) {
    // Boundaries of the 16- and 32-bit parts the older host's build is made of, both signs.
    for (const int64_t value :
         {int64_t{0}, int64_t{1}, int64_t{-1}, int64_t{65535}, int64_t{65536}, int64_t{INT32_MAX},
          int64_t{INT32_MIN}, int64_t{0x100000000}, int64_t{0x123456789}, int64_t{-0x123456789},
          int64_t{-0x100000001}, INT64_MAX, INT64_MIN}) {
        const fmlib::DataPtr result = fmlib::NewData();
        fmlib::SetResultInteger(*result, value);
        EXPECT_EQ(host_.Print(*result), std::to_string(value)) << "version " << GetParam();
    }
}

TEST_P(NewerHostFunctions, StreamsAndFontsNeedTheirHostCalls) {
    const bool current = GetParam() >= fmlib::kInt64NumbersVersion;
    const fmlib::DataPtr container = host_.Value("Base64Decode ( \"AAEC\" ; \"a.bin\" )");
    const fmlib::TextPtr name = fmlib::NewText();
    const FmxBinaryData& data = fmlib::DataGetBinaryData(*container);
    EXPECT_EQ(fmlib::BinaryDataGetFNAMData(data, *name) == 0, current);
    EXPECT_EQ(fmlib::TextUnits(*name), current ? u"a.bin" : u"");
    const fmlib::TextPtr font = fmlib::MakeText(u"ArialMT");
    EXPECT_EQ(fmlib::DataGetPostscriptFontID(*container, *font, host_.env()) != 0xFFFF, current);
}

INSTANTIATE_TEST_SUITE_P(OldestAndCurrent, NewerHostFunctions,
                         ::testing::Values(int16_t{50}, int16_t{77}));

}  // namespace
