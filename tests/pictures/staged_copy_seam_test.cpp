// The staged picture copy with the options staged straight through their seam (the plug-in's
// shell and handlers are linked into the test): VFile_Copy converts while options wait, clears
// them whatever happens, and copies plain files again afterwards.
#include <gtest/gtest.h>

#include "bridge/staged_picture_options.h"
#include "file_manager/scratch_folder.h"
#include "functions/handlers.h"
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
        writeFile(u"a.jpg", MakePicture(L"image/jpeg", 64, 48));
        writeFile(u"six.jpg", MakePicture(L"image/jpeg", 64, 48, 6));
    }

    // VFile_Copy( source ; target ) in the scratch folder: "result lastErrorMessage".
    std::string copy(const std::u16string& source, const std::u16string& target) {
        const auto literal = [&](const std::u16string& name) {
            std::string text = slib::test::Narrow(path(name));
            for (size_t at = text.find('\\'); at != std::string::npos;
                 at = text.find('\\', at + 2)) {
                text.insert(at, 1, '\\');
            }
            return "\"" + text + "\"";
        };
        const auto args = host_.Arguments({literal(source).c_str(), literal(target).c_str()});
        const fmlib::DataPtr result = fmlib::NewData();
        host_.Value("Let ( $$VFile_LastErrorMessage = \"\" ; 1 )");
        EXPECT_EQ(VFile_Copy(4, host_.env(), *args, *result), 0);
        EXPECT_TRUE(StagedPictureOptions::IsEmpty());
        return host_.Print(*result) + " " + host_.Print("$$VFile_LastErrorMessage");
    }

    shelltest::HostFixture host_;
};

TEST_F(StagedCopy, ConvertsOnceWithTheStagedOptionsThenCopiesPlainly) {
    const struct {
        double width, height;  // 0: not staged
        bool rotate;
        const char16_t *source, *target;
        const char* expected;
    } cases[] = {
        {120, 80, false, u"a.jpg", u"b.jpg", "0  jpeg 120x80 RGBY"},
        {32, 0, false, u"a.jpg", u"w.jpg", "0  jpeg 32x24 RGBY"},  // proportional
        {0, 12, false, u"a.jpg", u"h.PNG", "0  png 16x12 RGBY"},   // format by extension
        {0, 0, true, u"six.jpg", u"up.dat", "0  jpeg 64x48 RGBY"},
        {0, 0, true, u"a.jpg", u"no exif.jpg", "-43 Picture has no exif no file"},
        {10, 0, false, u"missing.jpg", u"m.jpg", "-43 Source item does not exist no file"},
    };
    for (const auto& c : cases) {
        StagedPictureOptions::Create();
        const std::pair<const char16_t*, double> staged[] = {
            {u"width", c.width}, {u"height", c.height}, {u"exif-rotate", double(c.rotate)}};
        for (const auto& [name, value] : staged) {
            if (value != 0) {
                StagedPictureOptions::Set(name, value);
            }
        }
        const std::string outcome = copy(c.source, c.target);
        const auto written = readFile(c.target);
        EXPECT_EQ(outcome + " " + (written ? Describe(*written) : "no file"), c.expected);
    }
    EXPECT_EQ(copy(u"six.jpg", u"plain.jpg"), "0 ");
    EXPECT_EQ(readFile(u"plain.jpg"), readFile(u"six.jpg"));
}

}  // namespace
}  // namespace picturetest
