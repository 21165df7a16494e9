// What the Linux build cannot do yet fails at once with its one defined answer (the server's
// refusals of dialogs and mounts are the file manager's own tests).
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "foundation/error.h"
#include "foundation/exception.h"
#include "picture/file_converter.h"
#include "picture/picture_pixels.h"

namespace {

constexpr char kNoPictures[] = "Pictures are not available on Linux yet";

struct RefusalCase {
    const char* what;
    std::function<void()> call;
    int32_t code;
    std::string message;
};

void ExpectRefusal(const RefusalCase& c) {
    try {
        c.call();
        ADD_FAILURE() << c.what << ": no failure";
    } catch (const slib::Exception& failure) {
        EXPECT_EQ(failure.error()->code(), c.code) << c.what;
        EXPECT_EQ(failure.message(), c.message) << c.what;
    }
}

const slib::String kItem(u"/tmp/vf-never-made/a.jpg");
const slib::String kOther(u"/tmp/vf-never-made/b.png");

TEST(UnavailableOnLinux, PicturesFailWithOneAnswer) {
    const std::shared_ptr<slib::FileConverter> converter = slib::MakeFileConverter();
    converter->setOption(slib::kOptionWidth, slib::MakeNumberOption(10));
    const RefusalCase cases[] = {
        {"convert", [&] { converter->convert(kItem, 0, kOther, slib::FileType::kPng); }, -4,
         kNoPictures},
        {"measure bytes",
         [] {
             slib::MeasurePictureBytes({0xFF, 0xD8, 0xFF});
         },
         -4, kNoPictures},
        {"measure file", [] { slib::MeasurePictureFile(kItem, "Item does not exist"); }, -4,
         kNoPictures},
    };
    for (const RefusalCase& c : cases) {
        ExpectRefusal(c);
    }
}

}  // namespace
