// The one rule every failing call keeps, on both systems: a non-zero code as the result, the
// same code in the last-error global, and a message saying what failed.
#pragma once

#include <gtest/gtest.h>

#include <string>

namespace safety_test {

// `outcome` as items_test::ItemsTest::call() gives it: "result | lastError | lastErrorMessage".
inline ::testing::AssertionResult ReportedFailure(const std::string& outcome) {
    const std::string code = outcome.substr(0, outcome.find(" | "));
    const std::string prefix = code + " | " + code + " | ";
    if (code.empty() || code == "0" || outcome.rfind(prefix, 0) != 0 ||
        outcome.size() == prefix.size()) {
        return ::testing::AssertionFailure() << "not a reported failure: " << outcome;
    }
    return ::testing::AssertionSuccess();
}

}  // namespace safety_test
