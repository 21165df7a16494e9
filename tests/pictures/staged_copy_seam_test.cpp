// The staged picture copy with the options staged straight through their seam, the plug-in's
// shell and handlers linked into the test: VFile_Copy converts while options wait, clears them
// whatever happens, and copies plain files again afterwards.
#include <gtest/gtest.h>

#include <string>

#include "bridge/staged_picture_options.h"
#include "file_manager/scratch_folder.h"
#include "functions/handlers.h"
#include "shell/host_objects.h"
#include "shell/host_test_support.h"
#include "test_pictures.h"

namespace picturetest {
namespace {

using bridge::StagedPictureOptions;

class StagedCopy : public slib::test::ScratchTest {
  protected:
    void SetUp() override {
        ScratchTest::SetUp();
        StagedPictureOptions::Take();
        writeFile(u"a.jpg", MakePicture(Format::kJpeg, 64, 48));
        writeFile(u"six.jpg", MakePicture(Format::kJpeg, 64, 48, 6));
    }
    void TearDown() override {
        StagedPictureOptions::Take();
        ScratchTest::TearDown();
    }

    // VFile_Copy( source ; target ) on files of the scratch folder: "result | lastErrorMessage".
    std::string copy(const std::u16string& source, const std::u16string& target) {
        const auto args = host_.Arguments({Literal(source).c_str(), Literal(target).c_str()});
        const fmlib::DataPtr result = fmlib::NewData();
        host_.Value("Let ( $$VFile_LastErrorMessage = \"\" ; 1 )");
        EXPECT_EQ(VFile_Copy(4, host_.env(), *args, *result), 0);
        const std::string message = host_.Print("$$VFile_LastErrorMessage");
        return host_.Print(*result) + (message.empty() ? "" : " | " + message);
    }
    std::string picture(const std::u16string& relative) const {
        const auto bytes = readFile(relative);
        return bytes ? Describe(Inspect(*bytes)) : "no file";
    }

  private:
    std::string Literal(const std::u16string& relative) const {
        std::string text = "\"";
        for (const char unit : slib::test::Narrow(path(relative))) {
            text += unit == '\\' ? std::string("\\\\") : std::string(1, unit);
        }
        return text + "\"";
    }

    shelltest::HostFixture host_;
};

TEST_F(StagedCopy, ConvertsOnceWithTheStagedSidesThenCopiesPlainly) {
    const struct {
        const char* name;
        double width;   // 0: not staged
        double height;  // 0: not staged
        const char16_t* target;
        const char* expected;
    } cases[] = {
        {"both sides, exact", 120, 80, u"b.jpg", "jpeg 120x80 RGBY"},
        {"width alone, proportional", 32, 0, u"w.jpg", "jpeg 32x24 RGBY"},
        {"height alone, proportional", 0, 12, u"h.jpg", "jpeg 16x12 RGBY"},
        {"format by extension", 32, 24, u"p.PNG", "png 32x24 RGBY"},
        {"source format otherwise", 32, 24, u"x.dat", "jpeg 32x24 RGBY"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        StagedPictureOptions::Create();
        if (c.width) {
            StagedPictureOptions::Set(u"width", c.width);
        }
        if (c.height) {
            StagedPictureOptions::Set(u"height", c.height);
        }
        EXPECT_EQ(copy(u"a.jpg", c.target), "0");
        EXPECT_EQ(picture(c.target), c.expected);
        EXPECT_TRUE(StagedPictureOptions::IsEmpty());
    }
    EXPECT_EQ(copy(u"a.jpg", u"plain.jpg"), "0");
    EXPECT_EQ(readFile(u"plain.jpg"), readFile(u"a.jpg"));
}

TEST_F(StagedCopy, TurnsUprightAndRefusesAPictureWithoutExif) {
    StagedPictureOptions::Set(u"exif-rotate", 1);
    EXPECT_EQ(copy(u"six.jpg", u"up.jpg"), "0");
    EXPECT_EQ(picture(u"up.jpg"), "jpeg 64x48 RGBY");

    StagedPictureOptions::Set(u"exif-rotate", 1);
    EXPECT_EQ(copy(u"a.jpg", u"none.jpg"), "-43 | Picture has no exif");
    EXPECT_FALSE(exists(u"none.jpg"));
    EXPECT_TRUE(StagedPictureOptions::IsEmpty());

    StagedPictureOptions::Set(u"width", 10);
    EXPECT_EQ(copy(u"missing.jpg", u"m.jpg"), "-43 | Source item does not exist");
    EXPECT_TRUE(StagedPictureOptions::IsEmpty());
    EXPECT_EQ(copy(u"six.jpg", u"six copy.jpg"), "0");
    EXPECT_EQ(readFile(u"six copy.jpg"), readFile(u"six.jpg"));
}

}  // namespace
}  // namespace picturetest
