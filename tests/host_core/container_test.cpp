#include "core/container.h"

#include <gtest/gtest.h>

#include <string>

namespace fmhost {
namespace {

namespace ce = container_error;

int16_t AddText(Container& c, TypeCode type, const std::string& bytes) {
    return c.Add(type, bytes.data(), bytes.size());
}

std::string StreamText(const Container& c, TypeCode type) {
    const Bytes* bytes = c.BytesOf(type);
    return bytes ? std::string(bytes->begin(), bytes->end()) : std::string("<none>");
}

// A minimal PNG header: signature, IHDR length and type, width 300, height 20.
Bytes PngHeader() {
    Bytes png = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n', 0, 0, 0, 13,
                 'I',  'H', 'D', 'R', 0,    0,    1,    44,   0, 0, 0, 20};
    png.resize(40, 0);
    return png;
}

TEST(TypeCodeTest, MacTypeHasTheFirstCharacterHigh) {
    EXPECT_EQ(stream_type::kFileName.AsMacType(), 0x464E414Du);
    EXPECT_EQ(TypeCode::FromMacType(0x50444620u), stream_type::kPdf);
    EXPECT_EQ(stream_type::kPdf.ToString(), "PDF ");
    EXPECT_EQ(stream_type::kGif.At(3), 'f');
    EXPECT_EQ(stream_type::kGif.At(4), '\0');
    EXPECT_LT(stream_type::kFile, stream_type::kFileName);
}

TEST(ContainerTest, StreamsKeepTheirOrderAndAreFoundByType) {
    Container c;
    EXPECT_EQ(c.IndexOf(stream_type::kFile), -1);
    EXPECT_EQ(AddText(c, stream_type::kFile, "hello"), ce::kOk);
    EXPECT_EQ(AddText(c, stream_type::kJpeg, "xy"), ce::kOk);
    EXPECT_EQ(c.Count(), 2);
    EXPECT_EQ(c.IndexOf(stream_type::kJpeg), 1);
    EXPECT_EQ(c.TypeAt(0), stream_type::kFile);
    EXPECT_EQ(c.TypeAt(7), TypeCode());
    EXPECT_EQ(c.SizeAt(0), 5u);
    EXPECT_EQ(c.SizeAt(-1), 0u);
    EXPECT_EQ(c.TotalSize(), 7u);

    char buffer[4] = {};
    EXPECT_EQ(c.Read(0, 1, 3, buffer), ce::kOk);
    EXPECT_EQ(std::string(buffer, 3), "ell");
    EXPECT_EQ(c.Read(0, 3, 3, buffer), ce::kBadIndex);  // past the end of the stream
    EXPECT_EQ(c.Read(5, 0, 1, buffer), ce::kBadIndex);

    EXPECT_TRUE(c.Remove(stream_type::kFile));
    EXPECT_FALSE(c.Remove(stream_type::kFile));
    EXPECT_EQ(c.IndexOf(stream_type::kJpeg), 0);
    c.RemoveAll();
    EXPECT_TRUE(c.Empty());
}

TEST(ContainerTest, RejectsEmptyAndDuplicateStreams) {
    Container c;
    EXPECT_EQ(c.Add(stream_type::kFile, nullptr, 0), ce::kEmptyStream);
    EXPECT_EQ(AddText(c, stream_type::kFile, "a"), ce::kOk);
    EXPECT_EQ(AddText(c, stream_type::kFile, "b"), ce::kDuplicateType);
    EXPECT_EQ(StreamText(c, stream_type::kFile), "a");
}

TEST(ContainerTest, FileNameAndSizeUseTheDocumentedLayout) {
    Container c;
    Text name;
    EXPECT_EQ(c.GetFileName(name), ce::kNoSuchStream);
    EXPECT_EQ(c.AddFileName(Text(u"Größe.txt")), ce::kOk);
    EXPECT_EQ(StreamText(c, stream_type::kFileName),
              "Gr\xC3\xB6\xC3\x9F"
              "e.txt");
    EXPECT_EQ(c.GetFileName(name), ce::kOk);
    EXPECT_EQ(name.Chars(), u"Größe.txt");

    EXPECT_EQ(c.AddPictureSize(300, -2), ce::kOk);
    EXPECT_EQ(StreamText(c, stream_type::kPictureSize), std::string("\x2C\x01\xFE\xFF", 4));
    int16_t width = 0, height = 0;
    EXPECT_EQ(c.GetPictureSize(width, height), ce::kOk);
    EXPECT_EQ(width, 300);
    EXPECT_EQ(height, -2);

    Container bad;
    AddText(bad, stream_type::kPictureSize, "abc");
    EXPECT_EQ(bad.GetPictureSize(width, height), ce::kMalformed);
}

TEST(ContainerTest, FromFileChoosesStreamsByExtensionAndContent) {
    const Bytes png = PngHeader();
    const Container picture = Container::FromFile(Text(u"pic.PNG"), png.data(), png.size());
    EXPECT_GE(picture.IndexOf(stream_type::kPng), 0);
    int16_t width = 0, height = 0;
    ASSERT_EQ(picture.GetPictureSize(width, height), ce::kOk);
    EXPECT_EQ(width, 300);
    EXPECT_EQ(height, 20);

    // A ".png" that is no PNG is stored as a plain file.
    const std::string text = "not a picture";
    const Container fake = Container::FromFile(
        Text(u"fake.png"), reinterpret_cast<const uint8_t*>(text.data()), text.size());
    EXPECT_EQ(fake.IndexOf(stream_type::kPng), -1);
    EXPECT_EQ(StreamText(fake, stream_type::kFile), text);
    Text name;
    fake.GetFileName(name);
    EXPECT_EQ(name.Chars(), u"fake.png");

    const Container empty = Container::FromFile(Text(u"empty.bin"), nullptr, 0);
    EXPECT_EQ(empty.Count(), 1);  // FNAM only: streams are never empty
}

TEST(ContainerTest, PiecewiseAdding) {
    Container c;
    uint32_t context = 0;
    ASSERT_EQ(c.BeginStream(stream_type::kFile, context), ce::kOk);
    EXPECT_NE(context, 0u);
    EXPECT_EQ(c.AppendStream(context, "ab", 2), ce::kOk);
    EXPECT_EQ(c.AppendStream(context, "cd", 2), ce::kOk);
    EXPECT_EQ(c.Count(), 0);  // nothing visible before Finish
    EXPECT_EQ(c.FinishStream(context), ce::kOk);
    EXPECT_EQ(StreamText(c, stream_type::kFile), "abcd");
    EXPECT_EQ(c.AppendStream(context, "x", 1), ce::kBadContext);
    EXPECT_EQ(c.FinishStream(context), ce::kBadContext);

    Container file;
    const Bytes png = PngHeader();
    ASSERT_EQ(file.BeginFile(Text(u"a.png"), context), ce::kOk);
    file.AppendStream(context, png.data(), 10);
    file.AppendStream(context, png.data() + 10, png.size() - 10);
    EXPECT_EQ(file.FinishStream(context), ce::kOk);
    EXPECT_EQ(file, Container::FromFile(Text(u"a.png"), png.data(), png.size()));
}

TEST(ContainerTest, CopiesCompareByContent) {
    Container a;
    AddText(a, stream_type::kFile, "x");
    Container b = a;
    EXPECT_EQ(a, b);
    b.Remove(stream_type::kFile);
    AddText(b, stream_type::kFile, "y");
    EXPECT_NE(a, b);
    EXPECT_EQ(StreamText(a, stream_type::kFile), "x");
}

}  // namespace
}  // namespace fmhost
