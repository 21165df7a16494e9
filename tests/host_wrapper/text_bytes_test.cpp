// Texts to and from bytes in the host's encodings. One table for both hosts: Windows converts
// through its code pages, Linux through iconv, and each row must give the same bytes on both.
#include <cstring>

#include "wrapper_test_support.h"

namespace {

using namespace wrapper_test;

constexpr uint32_t kEnd = 0xFFFFFFFF;

struct Sample {
    int32_t encoding;
    std::u16string text;
    std::string bytes;
};

bool Installed(int32_t encoding) {
    TextPtr text = MakeText(u"");
    Slot slot;
    FM_Text_Assign(text.get(), "A", encoding, slot);
    return slot.code() == kFmxErrNone;
}

// Encodings a system may lack (Wine some code pages, glibc some Mac tables) are skipped only
// after asking the host.
#define SKIP_UNLESS_INSTALLED(encoding)                                                  \
    if (!Installed(encoding)) {                                                          \
        GTEST_SKIP() << "encoding " << (encoding) << " is not installed on this system"; \
    }

std::string GetBytes(const FmxText* text, uint32_t buffersize, int32_t encoding,
                     uint32_t position = 0, uint32_t size = kEnd) {
    std::string buffer(buffersize + 4, '#');
    Checked([&](FmxErr& e) {
        FM_Text_GetBytes(text, &buffer[0], buffersize, position, size, encoding, e);
    });
    return buffer;
}

class EncodingRoundTrip : public ::testing::TestWithParam<Sample> {};

TEST_P(EncodingRoundTrip, AssignsAndGetsTheSameBytes) {
    const Sample& sample = GetParam();
    SKIP_UNLESS_INSTALLED(sample.encoding);
    TextPtr text = MakeText(u"");
    Checked([&](FmxErr& e) {
        FM_Text_AssignWithLength(text.get(), sample.bytes.data(),
                                 static_cast<uint32_t>(sample.bytes.size()), sample.encoding, e);
    });
    EXPECT_EQ(TextChars(*text), sample.text);

    const std::string buffer = GetBytes(text.get(), 64, sample.encoding);
    EXPECT_EQ(std::string(buffer.c_str()), sample.bytes);

    std::string exact(sample.bytes.size(), '\0');
    const uint32_t written = Checked([&](FmxErr& e) {
        return FM_Text_GetBytesEx(text.get(), &exact[0], static_cast<uint32_t>(exact.size()), 0,
                                  kEnd, sample.encoding, e);
    });
    EXPECT_EQ(written, sample.bytes.size());
    EXPECT_EQ(exact, sample.bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Encodings, EncodingRoundTrip,
    ::testing::Values(Sample{1, u"Grüße ✓ 𝄞",
                             "Gr\xC3\xBC\xC3\x9F"
                             "e \xE2\x9C\x93 \xF0\x9D\x84\x9E"},
                      // The native encoding is the Windows host's ANSI code page, 1252.
                      Sample{0, u"Café € ½", "Caf\xE9 \x80 \xBD"},
                      Sample{2, u"Café ½", "Caf\x82 \xAB"}, Sample{3, u"€ 5", "\x80 5"},
                      // Bytes 1252 leaves undefined stand for the C1 controls of the same number.
                      Sample{3, u"\u0081\u008D\u009D", "\x81\x8D\x9D"},
                      Sample{4, u"Café ñ", "Caf\x8E \x96"}, Sample{5, u"\u00E9", "\xE9"},
                      Sample{7, u"日本語テキスト",
                             "\x93\xfa\x96\x7b\x8c\xea\x83\x65\x83\x4c\x83\x58\x83\x67"},
                      Sample{9, u"한국", "\xC7\xD1\xB1\xB9"},
                      Sample{12, u"中文", "\xA4\xA4\xA4\xE5"},
                      Sample{14, u"中文", "\xD6\xD0\xCE\xC4"},
                      Sample{16, u"Привет", "\xCF\xF0\xE8\xE2\xE5\xF2"}, Sample{17, u"Я", "\xCF"},
                      Sample{19, u"řád",
                             "\xF8\xE1"
                             "d"},
                      Sample{20, u"łza",
                             "\xB3"
                             "za"},
                      Sample{22, u"şeker",
                             "\xFE"
                             "eker"},
                      Sample{25, u"ąžuolas",
                             "\xE0\xFE"
                             "uolas"},
                      Sample{28, u"ب", "\xC8"}, Sample{31, u"Ωμέγα", "\xD9\xEC\xDD\xE3\xE1"},
                      Sample{34, u"אב", "\xE0\xE1"}, Sample{36, u"€ 5", "\xA4 5"}));

// What an encoding cannot hold becomes "?", one for each UTF-16 unit, on both hosts. (Letters
// Windows replaces by a close one of its own choosing, "A" for "\u0100", are left out: Linux
// has no such tables and gives "?".)
TEST(TextBytes, CharactersAnEncodingLacksBecomeQuestionMarks) {
    const struct {
        int32_t encoding;
        std::u16string text;
        std::string bytes;
    } cases[] = {
        {3, u"a日b", "a?b"},   {3, u"a𝄞b", "a??b"},
        {16, u"Ωx", "?x"},     {7, u"Привет", "\x84\x50\x84\x82\x84\x79\x84\x72\x84\x75\x84\x84"},
        {7, u"a\u0E01", "a?"}, {36, u"\u0152\u0416", "\xBC?"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.encoding);
        if (!Installed(c.encoding))
            continue;
        TextPtr text = MakeText(c.text);
        EXPECT_EQ(std::string(GetBytes(text.get(), 64, c.encoding).c_str()), c.bytes);
    }
}

TEST(TextBytes, GetBytesAlwaysTerminatesAndNeverPassesTheBuffer) {
    TextPtr text = MakeText(u"abcdef");
    EXPECT_EQ(GetBytes(text.get(), 4, 1), std::string("abc\0####", 8));
    EXPECT_EQ(GetBytes(text.get(), 1, 1), std::string("\0####", 5));
    EXPECT_EQ(GetBytes(text.get(), 0, 1), std::string("####"));
    EXPECT_EQ(GetBytes(text.get(), 16, 1, 2, 3).substr(0, 4), std::string("cde\0", 4));
    EXPECT_EQ(GetBytes(text.get(), 16, 1, 9, 3).substr(0, 1), std::string("\0", 1));
}

TEST(TextBytes, ACharacterThatDoesNotFitIsLeftOutWhole) {
    TextPtr text = MakeText(u"aé𝄞");  // 1 + 2 + 4 bytes in UTF-8
    // The buffer has four guard bytes past `buffersize`; unwritten bytes stay '#'.
    EXPECT_EQ(GetBytes(text.get(), 3, 1), std::string("a\0#####", 7)) << "é needs two bytes";
    EXPECT_EQ(GetBytes(text.get(), 7, 1), std::string("a\xC3\xA9\0#######", 11));
    EXPECT_EQ(GetBytes(text.get(), 8, 1).substr(0, 8),
              std::string("a\xC3\xA9\xF0\x9D\x84\x9E", 7) + '\0');

    std::string buffer(8, '#');
    const uint32_t written = Checked(
        [&](FmxErr& e) { return FM_Text_GetBytesEx(text.get(), &buffer[0], 6, 0, kEnd, 1, e); });
    EXPECT_EQ(written, 3u);
    EXPECT_EQ(buffer, "a\xC3\xA9#####") << "no terminator from GetBytesEx";
}

TEST(TextBytes, ShiftJisDoubleByteCharactersAreNotSplit) {
    SKIP_UNLESS_INSTALLED(7);
    TextPtr text = MakeText(u"a日");
    EXPECT_EQ(GetBytes(text.get(), 3, 7), std::string("a\0#####", 7));
    EXPECT_EQ(GetBytes(text.get(), 4, 7), std::string("a\x93\xfa\0####", 8));
}

TEST(TextBytes, UnknownEncodingsAreAFailureOfTheCall) {
    TextPtr text = MakeText(u"abc");
    for (int32_t encoding : {-1, 37, 1000}) {
        Slot slot;
        char buffer[8] = "#######";
        FM_Text_GetBytes(text.get(), buffer, 8, 0, kEnd, encoding, slot);
        EXPECT_EQ(slot.code(), kFmxErrOther) << encoding;
        EXPECT_EQ(buffer[0], '#') << "nothing written";
        Slot assign;
        FM_Text_Assign(text.get(), "xyz", encoding, assign);
        EXPECT_EQ(assign.code(), kFmxErrOther);
        EXPECT_EQ(TextChars(*text), u"abc") << "the text keeps its contents";
    }
}

TEST(TextBytes, EveryEncodingNumberNamesAnInstalledOrReportedCodePage) {
    TextPtr text = MakeText(u"Az09");
    int usable = 0;
    for (int32_t encoding = 0; encoding <= 36; ++encoding) {
        Slot slot;
        char buffer[16] = {};
        FM_Text_GetBytes(text.get(), buffer, sizeof(buffer), 0, kEnd, encoding, slot);
        if (slot.code() == 0) {
            ++usable;
            EXPECT_STREQ(buffer, "Az09") << "encoding " << encoding << " keeps ASCII";
        } else {
            EXPECT_EQ(slot.code(), kFmxErrOther) << "encoding " << encoding;
        }
    }
    EXPECT_GE(usable, 30) << "most encodings exist on any system";
}

}  // namespace
