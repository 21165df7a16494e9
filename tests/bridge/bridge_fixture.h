// Drives the path resolution of src/bridge in-process against the emulated host: the host is
// reset per test and plays a database at C:\Data\Solution.fmp12 unless a test says otherwise.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "file_manager/scratch_folder.h"
#include "fmhost/host_driver.h"
#include "foundation/path.h"

namespace bridge_test {

using slib::test::FailureOf;
using slib::test::FromWide;
using slib::test::Narrow;
using slib::test::Wide;

constexpr const wchar_t* kDatabase = L"C:\\Data\\Solution.fmp12";

// ResolveAnchor in a fresh calculation environment of the host.
slib::Path Anchor();
// ResolvePath of host text against `anchor`, in `style`.
std::u16string Resolve(const slib::Path& anchor, const std::u16string& hostPath,
                       int style = slib::PathStyle::kNative);

class BridgeTest : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(host_.SetFile(kFmhostFileLocal, kDatabase)); }

    // Against the anchor of the moment.
    std::u16string resolve(const std::u16string& hostPath) const {
        return Resolve(Anchor(), hostPath);
    }

    fmhost::driver::Host host_;
};

}  // namespace bridge_test
