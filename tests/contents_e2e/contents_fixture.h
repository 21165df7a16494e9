// Contents tests build on the item functions' fixture: a scratch folder holding the calculating
// database, a freshly loaded plug-in, and calls that report "result | lastError | message".
#pragma once

#include <string>

#include "items_fixture.h"

namespace contents_test {

using items_test::Failed;
using items_test::Quoted;
using items_test::Succeeded;
using slib::test::Narrow;

std::u16string Utf16(const std::string& utf8);

// A minimal PNG of the given size: signature, header chunk and a few bytes of body.
std::string PngBytes(uint32_t width, uint32_t height);

class ContentsTest : public items_test::ItemsTest {
  protected:
    // VFile_Read( "name" ; arguments ) printed, e.g. read(u"a.txt", u"4 ; 3 ; \"utf-8\"").
    std::string read(const std::u16string& name, const std::u16string& arguments = u"");
    // VFile_Write( "name" ; data ; arguments ) as call() reports it; `data` is calculation text.
    std::string write(const std::u16string& name, const std::u16string& data,
                      const std::u16string& arguments = u"");
    // The file's bytes, or "<missing>".
    std::string bytesOf(const std::u16string& name) const;
};

}  // namespace contents_test
