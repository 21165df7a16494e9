// What a server engine on Linux cannot do fails at once with its one defined answer.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "foundation/error.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "picture/file_converter.h"
#include "picture/picture_pixels.h"

namespace {

constexpr char kNoDesktop[] = "No interactive desktop to show the dialog on";
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
const std::shared_ptr<const slib::String> kNone;

TEST(UnavailableOnLinux, DesktopActionsAnswerNoDesktop) {
    const slib::FileManager files;
    const RefusalCase cases[] = {
        {"open dialog", [&] { files.chooseFiles(true, kNone, kNone, kNone); }, 2400, kNoDesktop},
        {"folder dialog", [&] { files.chooseFolder(kNone, kNone); }, 2400, kNoDesktop},
        {"save dialog", [&] { files.chooseSaveFile(kNone, kNone); }, 2400, kNoDesktop},
        {"choose file", [&] { files.choose(slib::CreateKind::kFile, false, kNone, kNone, {}); },
         2400, kNoDesktop},
        {"choose new", [&] { files.choose(slib::CreateKind::kNew, false, kNone, kNone, {}); }, 2400,
         kNoDesktop},
        // A bad kind is the caller's mistake before it is the system's lack.
        {"choose bad kind", [&] { files.choose(7, false, kNone, kNone, {}); }, -50,
         "Wrong parameter"},
        {"open", [&] { files.openFile(kItem); }, 2400, kNoDesktop},
        {"open with", [&] { files.openFileWithApplication(kItem, kOther); }, 2400, kNoDesktop},
        {"reveal", [&] { files.revealItem(kItem); }, 2400, kNoDesktop},
    };
    for (const RefusalCase& c : cases) {
        ExpectRefusal(c);
    }
}

TEST(UnavailableOnLinux, MountingIsTheAdministratorsJob) {
    const slib::FileManager files;
    const RefusalCase cases[] = {
        {"mount", [&] { files.mountVolume(slib::String(u"//server/share"), kNone, kNone, kNone); },
         -4, "Mounting is not available on Linux: the administrator mounts shares on the server"},
        {"unmount", [&] { files.unmountVolume(slib::String(u"/mnt/share")); }, -4,
         "Unmounting is not available on Linux: the administrator unmounts shares on the server"},
    };
    for (const RefusalCase& c : cases) {
        ExpectRefusal(c);
    }
}

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
