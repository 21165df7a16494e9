// Containers both ways: pictures and files read into containers and written back unchanged,
// link-only containers, the container refusals, and VFile_Get's facts about values.
#include "contents_fixture.h"
#include "system_answers.h"

namespace contents_test {
namespace {

class Containers : public ContentsTest {};

TEST_F(Containers, PicturesAndFilesComeBackByteForByte) {
    const std::string png = PngBytes(2, 3);
    const std::string blob("\0\x01\x02\x03zip?", 8);
    writeFile(u"p.png", png);
    writeFile(u"blob.dat", blob);
    writeFile(u"disguised.txt", png);
    writeFile(u"zero.bin", "");
    struct Row {
        std::u16string read;
        std::string printed;
        std::string bytes;
    };
    for (const Row& row : {
             Row{u"VFile_Read( \"p.png\" )",
                 "[PNGf:" + std::to_string(png.size()) + " bytes, SIZE:2x3, FNAM:p.png]", png},
             Row{u"VFile_Read( \"disguised.txt\" ; \"image\" )",
                 "[PNGf:" + std::to_string(png.size()) + " bytes, SIZE:2x3, FNAM:disguised.txt]",
                 png},
             Row{u"VFile_Read( \"p.png\" ; \"png\" )",
                 "[PNGf:" + std::to_string(png.size()) + " bytes, SIZE:2x3, FNAM:p.png]", png},
             Row{u"VFile_Read( \"blob.dat\" )", "[FILE:8 bytes, FNAM:blob.dat]", blob},
             Row{u"VFile_Read( \"blob.dat\" ; \"file\" )", "[FILE:8 bytes, FNAM:blob.dat]", blob},
             Row{u"VFile_Read( \"blob.dat\" ; 2 ; 3 ; \"file\" )", "[FILE:3 bytes, FNAM:blob.dat]",
                 blob.substr(2, 3)},
             // An empty file is a name with no stream; it still writes back (as nothing).
             Row{u"VFile_Read( \"zero.bin\" ; \"file\" )", "[FNAM:zero.bin]", ""},
             Row{u"VFile_Read( \"blob.dat\" ; 8 ; \"file\" )", "[FNAM:blob.dat]", ""},
         }) {
        EXPECT_EQ(evaluate(row.read), row.printed) << Narrow(row.read);
        for (const char16_t* keyword : {u"", u" ; \"file\"", u" ; \"image\""}) {
            const bool picture = row.bytes == png;
            if (!picture && std::u16string(keyword) == u" ; \"image\"") {
                continue;
            }
            writeFile(u"out.bin", "stale");
            EXPECT_EQ(call(u"VFile_Write( \"out.bin\" ; " + row.read + keyword + u" )"),
                      Succeeded())
                << Narrow(row.read) << Narrow(keyword);
            EXPECT_EQ(bytesOf(u"out.bin"), row.bytes) << Narrow(row.read) << Narrow(keyword);
        }
    }
}

// A 2 x 2 uncompressed RGB TIFF, little-endian: header, one directory of ten entries, the
// bits-per-sample triple, then twelve bytes of pixels.
std::string TiffBytes() {
    std::string tiff("II*\0\x08\0\0\0", 8);
    auto le = [&tiff](uint32_t value, int bytes) {
        for (int index = 0; index < bytes; ++index) {
            tiff += static_cast<char>(value >> (8 * index) & 0xFF);
        }
    };
    le(10, 2);
    const uint32_t entries[][4] = {
        {256, 3, 1, 2},   {257, 3, 1, 2}, {258, 3, 3, 134}, {259, 3, 1, 1},  {262, 3, 1, 2},
        {273, 4, 1, 140}, {277, 3, 1, 3}, {278, 3, 1, 2},   {279, 4, 1, 12}, {284, 3, 1, 1}};
    for (const auto& entry : entries) {
        le(entry[0], 2);
        le(entry[1], 2);
        le(entry[2], 4);
        le(entry[3], 4);
    }
    le(0, 4);
    for (int channel = 0; channel < 3; ++channel) {
        le(8, 2);
    }
    return tiff + std::string("\xFF\0\0\0\xFF\0\0\0\xFF\xFF\xFF\xFF", 12);
}

TEST_F(Containers, ATiffComesWithAPreviewTheHostCanShow) {
    const std::string tiff = TiffBytes();
    ASSERT_EQ(tiff.size(), 152u);
    writeFile(u"t.tif", tiff);
    const std::string printed = evaluate(u"VFile_Read( \"t.tif\" )");
    EXPECT_EQ(printed.rfind("[TIFF:152 bytes, PNGf:", 0), 0u) << printed;
    EXPECT_NE(printed.find(" bytes, SIZE:2x2, FNAM:t.tif]"), std::string::npos) << printed;
    EXPECT_EQ(write(u"back.tif", u"VFile_Read( \"t.tif\" )"), Succeeded());
    EXPECT_EQ(bytesOf(u"back.tif"), tiff);
}

TEST_F(Containers, ALinkOnlyContainerWritesTheLinkedFile) {
    writeFile(u"linked.bin", "linked bytes");
    std::u16string hostPath = u"filewin:/" + path(u"linked.bin");
    std::replace(hostPath.begin(), hostPath.end(), u'\\', u'/');
    const std::u16string link = u"ContainerReference( " + Quoted(hostPath) + u" )";
    EXPECT_EQ(write(u"out.bin", link), Succeeded());
    EXPECT_EQ(bytesOf(u"out.bin"), "linked bytes");
    EXPECT_EQ(write(u"out2.bin", u"ContainerReference( \"size:1,1\rimage:linked.bin\" )"),
              Succeeded());
    EXPECT_EQ(bytesOf(u"out2.bin"), "linked bytes");
    EXPECT_EQ(evaluate(u"VFile_Get( \"type\" ; " + link + u" )"), "LINK");
}

TEST_F(Containers, RefusalsKeepTheTargetUnchanged) {
    writeFile(u"keep.txt", "keep");
    writeFile(u"p.png", PngBytes(1, 1));
    const std::string wrong = Failed(-50, "Wrong encoding specified for binary data");
    const std::u16string text = u"Base64Decode( \"AAEC\" ; \"a.bin\" )";
    struct Row {
        std::u16string calculation;
        std::string outcome;
    };
    for (const Row& row : {
             Row{u"VFile_Write( \"keep.txt\" ; " + text + u" ; \"utf-8\" )", wrong},
             Row{u"VFile_Write( \"keep.txt\" ; " + text + u" ; \"base64\" )", wrong},
             Row{u"VFile_Write( \"keep.txt\" ; " + text + u" ; \"png\" )", wrong},
             Row{u"VFile_Write( \"keep.txt\" ; VFile_Read( \"p.png\" ) ; \"gif\" )", wrong},
             Row{u"VFile_Write( \"keep.txt\" ; VFile_Read( \"p.png\" ) ; 0 ; \"x-pict\" )", wrong},
             Row{u"VFile_Read( \"keep.txt\" ; \"jpeg\" )", wrong},
             Row{u"VFile_Write( \"keep.txt\" ; ContainerReference( \"\" ) )",
                 Failed(-50, "No link to file in container")},
             // "just a name.txt" with no data is an empty file (the host keeps no empty stream).
             Row{u"VFile_Write( \"keep.txt\" ; ContainerReference( \"size:640,480\" ) )",
                 Failed(-50, "No link to file in container")},
             Row{u"VFile_Write( \"keep.txt\" ; ContainerReference( \"file:gone.txt\" ) )",
                 Failed(-50, "Linked file in container does not exist")},
         }) {
        EXPECT_EQ(call(row.calculation), row.outcome) << Narrow(row.calculation);
    }
    EXPECT_EQ(bytesOf(u"keep.txt"), "keep");
}

TEST_F(Containers, ValueFactsNameTheTypeAndListTheStreams) {
    writeFile(u"p.png", PngBytes(640, 480));
    const std::string size = std::to_string(PngBytes(1, 1).size());
    struct Row {
        std::u16string calculation;
        std::string result;
    };
    for (const Row& row : {
             Row{u"VFile_Get( \"type\" ; \"text\" )", "TEXT"},
             Row{u"VFile_Get( \"TYPE\" ; 12 )", "NUMBER"},
             Row{u"VFile_Get( \"type\" ; Date( 1 ; 2 ; 2024 ) )", "DATE"},
             Row{u"VFile_Get( \"type\" ; Time( 1 ; 2 ; 3 ) )", "TIME"},
             Row{u"VFile_Get( \"type\" ; Get( CurrentTimestamp ) )", "TIMESTAMP"},
             Row{u"VFile_Get( \"type\" ; VFile_Read( \"p.png\" ) )", "CONTAINER"},
             Row{u"VFile_Get( \"analyze-container\" ; \"a\" )", "TEXT:\r"},
             Row{u"VFile_Get( \"analyze-container\" ; VFile_Read( \"p.png\" ) )",
                 "CONTAINER:\rSTREAMS:\rPNGf " + size + "\rSIZE 4 640x480\rFNAM 5 p.png\r"},
             Row{u"VFile_Get( \"picture-width\" ; VFile_Read( \"p.png\" ) )", "640"},
             Row{u"VFile_Get( \"picture-height\" ; VFile_Read( \"p.png\" ) )", "480"},
         }) {
        EXPECT_EQ(evaluate(row.calculation), row.result) << Narrow(row.calculation);
    }
    EXPECT_EQ(call(u"VFile_Get( \"picture-width\" ; \"no picture\" )"),
              Failed(-50, "No picture in container"));
    EXPECT_EQ(call(u"VFile_Get( \"type\" )"), Failed(-50, "Not enough parameters"));
}

}  // namespace
}  // namespace contents_test
