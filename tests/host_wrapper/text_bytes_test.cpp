// Texts to and from bytes in the host's encodings, through real Windows code pages.
#include <windows.h>

#include <cstring>

#include "wrapper_test_support.h"

namespace {

using namespace wrapper_test;

constexpr uint32_t kEnd = 0xFFFFFFFF;

struct Sample {
    int32_t encoding;
    uint32_t codePage;  // what the encoding names
    std::u16string text;
    std::string bytes;
};

// Code pages Wine may lack are skipped only after asking the system.
void SkipUnlessInstalled(uint32_t codePage) {
    if (!IsValidCodePage(codePage)) {
        GTEST_SKIP() << "code page " << codePage << " is not installed on this system";
    }
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
    SkipUnlessInstalled(sample.codePage);
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
    CodePages, EncodingRoundTrip,
    ::testing::Values(Sample{1, CP_UTF8, u"Grüße ✓ 𝄞",
                             "Gr\xC3\xBC\xC3\x9F"
                             "e \xE2\x9C\x93 \xF0\x9D\x84\x9E"},
                      Sample{7, 932, u"日本語テキスト",
                             "\x93\xfa\x96\x7b\x8c\xea\x83\x65\x83\x4c\x83\x58\x83\x67"},
                      Sample{16, 1251, u"Привет", "\xCF\xF0\xE8\xE2\xE5\xF2"},
                      Sample{4, 10000, u"Café ñ", "Caf\x8E \x96"},
                      Sample{3, 1252, u"€ 5", "\x80 5"}, Sample{36, 28605, u"€ 5", "\xA4 5"},
                      Sample{5, 28591, u"\u00E9", "\xE9"}));

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
    SkipUnlessInstalled(932);
    TextPtr text = MakeText(u"a日");
    EXPECT_EQ(GetBytes(text.get(), 3, 7), std::string("a\0#####", 7));
    EXPECT_EQ(GetBytes(text.get(), 4, 7), std::string("a\x93\xfa\0####", 8));
}

TEST(TextBytes, NativeEncodingIsTheAnsiCodePage) {
    TextPtr text = MakeText(u"");
    const char bytes[] = "plain ASCII";
    Checked([&](FmxErr& e) { FM_Text_Assign(text.get(), bytes, 0, e); });
    EXPECT_EQ(TextChars(*text), u"plain ASCII");
    const std::u16string accented = u"\u00E9";
    char expected[8] = {};
    WideCharToMultiByte(CP_ACP, 0, reinterpret_cast<const wchar_t*>(accented.c_str()), 1, expected,
                        sizeof(expected), nullptr, nullptr);
    TextPtr e2 = MakeText(accented);
    EXPECT_EQ(std::string(GetBytes(e2.get(), 8, 0).c_str()), std::string(expected));
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
    EXPECT_GE(usable, 30) << "most code pages exist on any Windows";
}

}  // namespace
