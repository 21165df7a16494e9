// Picture functions driven through the emulated host in-process, on pictures the tests make.
#pragma once

#include <string>

#include "items_e2e/items_fixture.h"
#include "test_pictures.h"

namespace picturetest {

using items_test::Failed;
using items_test::Succeeded;

class PicturesTest : public items_test::ItemsTest {
  protected:
    // "<format> <width>x<height> <quadrants>" of the file, or "no file".
    std::string picture(const std::u16string& relative) const;
    // Whether the file still records an EXIF orientation.
    bool keepsOrientation(const std::u16string& relative) const;
};

}  // namespace picturetest
