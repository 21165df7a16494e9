// Item functions driven through the emulated host in-process: every test gets a scratch folder
// that holds the calculating database (so relative paths land in it) and a freshly loaded plug-in.
#pragma once

#include <map>
#include <string>

#include "file_manager/scratch_folder.h"
#include "fmhost/host_driver.h"

namespace items_test {

using slib::test::BesideProgram;
using slib::test::Narrow;
using slib::test::Quote;
using slib::test::Wide;
using Tree = std::map<std::u16string, std::string>;

// The host's interface takes wide text: UTF-16 on Windows, UTF-32 on Linux.
std::wstring HostText(const std::u16string& text);
// The plug-in this build made, beside the test program (its name comes from the build).
std::u16string BuiltPlugin();
// `path` as a "file:" path: "file:/C:/dir/x" for a drive path, "file:/dir/x" for a POSIX one.
std::u16string FileForm(const std::u16string& path);

// A text constant of the calculation language holding `text` exactly.
std::u16string Quoted(const std::u16string& text);

// What a call leaves behind, as "result | lastError | lastErrorMessage".
std::string Succeeded();  // "0 | No Error Message | No Error Message"
std::string Failed(int code, const std::string& message);

class ItemsTest : public slib::test::ScratchTest {
  protected:
    void SetUp() override;

    // Runs a calculation with both last-error globals cleared first, then reads them back with
    // VFile_Get( "lastError" ) and VFile_Get( "lastErrorMessage" ).
    std::string call(const std::u16string& calculation);
    // The printed value of a calculation, or "host error N".
    std::string evaluate(const std::u16string& calculation);

    fmhost::driver::Host host_;
};

}  // namespace items_test
