// Picture functions driven through the emulated host in-process, on pictures the tests make.
#pragma once

#include "items_e2e/items_fixture.h"
#include "test_pictures.h"

namespace picturetest {

using items_test::Failed;
using items_test::Narrow;
using items_test::Quoted;
using items_test::Succeeded;

class PicturesTest : public items_test::ItemsTest {
  protected:
    // Describe() of the file, or "no file".
    std::string picture(const std::u16string& relative) const {
        const auto bytes = readFile(relative);
        return bytes ? Describe(*bytes) : "no file";
    }
};

}  // namespace picturetest
