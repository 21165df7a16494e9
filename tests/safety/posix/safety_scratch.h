// Test support for the Linux safety cases: file-system paths of scratch items, symbolic links,
// a small volume for the full-disk cases, and the host killed part-way through a call.
#pragma once

#include <optional>
#include <string>

#include "items_fixture.h"

namespace safety_test {

using items_test::Failed;
using items_test::Quoted;
using items_test::Succeeded;
using items_test::Tree;
using slib::test::Narrow;

class SafetyTest : public items_test::ItemsTest {
  protected:
    void TearDown() override;

    // The file-system path of a scratch item.
    std::string bytes(const std::u16string& relative) const;
    void makeLink(const std::u16string& relative, const std::string& leadsTo) const;
    // Whether mode bits refuse this process (root passes them all), proven on a scratch file.
    bool modesRefuse();

    // A folder of its own on a volume of a few MB: in VF_TEST_SMALL_VOLUME (scripts/run-tests.sh
    // mounts one for unprivileged runs), else a tmpfs mounted in the scratch folder where this
    // process may mount. None, with the reason in `why`, otherwise.
    std::optional<std::u16string> smallVolume(std::string& why);
    static void FillVolume(const std::u16string& folder);

    // Runs `calculation` in a copy of this process (the host and plug-in as loaded) and kills it
    // (SIGKILL) `delayMs` after it began, as a crash or an administrator's kill ends the server.
    void killPartWay(const std::u16string& calculation, int delayMs);

    // The result's code (the first field of call()).
    std::string codeOf(const std::u16string& calculation);

  private:
    std::string mounted_;
    std::u16string volumeFolder_;
};

}  // namespace safety_test
