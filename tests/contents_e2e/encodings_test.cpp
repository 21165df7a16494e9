// Every encoding keyword both ways, and the automatic kind of a file read without one.
#include "contents_fixture.h"
#include "system_answers.h"

namespace contents_test {
namespace {

class Encodings : public ContentsTest {};

struct Sample {
    const char* keyword;
    const char* text;  // UTF-8; characters the encoding can represent
};

// Per keyword a text in the script it exists for.
const Sample kTextSamples[] = {
    {"default", "plain ASCII 1-2-3"},
    {"utf-8", "Grüße Ω Привет 日本 한국 עברית عربي 𝄞"},
    {"dos", "plain ASCII 4-5-6"},
    {"windows-1252", "Grüße, café € œ"},
    {"x-mac-roman", "Grüße, café ñ"},
    {"iso-8859-1", "Grüße, café ñ ¿"},
    {"x-mac-japanese", "日本語テキスト"},
    {"euc-jp", "日本語テキスト"},
    {"x-mac-korean", "한국어 텍스트"},
    {"euc-kr", "한국어 텍스트"},
    {"johab", "한국어 텍스트"},
    {"x-mac-chinesetrad", "繁體中文"},
    {"big5", "繁體中文"},
    {"x-mac-chinesesimp", "简体中文"},
    {"gb2312", "简体中文"},
    {"x-mac-cyrillic", "Привет, мир"},
    {"windows-1251", "Привет, мир"},
    {"iso-8859-5", "Привет, мир"},
    {"x-mac-centraleurroman", "Příliš žluťoučký kůň"},
    {"windows-1250", "Příliš žluťoučký kůň"},
    {"iso-8859-2", "Příliš žluťoučký kůň"},
    {"x-mac-turkish", "Türkçe ğüşıöç"},
    {"windows-1254", "Türkçe ğüşıöç"},
    {"iso-8859-3", "Ħal Ġ ċ ż"},
    {"iso-8859-9", "Türkçe ğüşıöç"},
    {"windows-1257", "Ąžuolas ėūš"},
    {"iso-8859-4", "Ąžuolas ķēū"},
    {"x-mac-arabic", "مرحبا"},
    {"windows-1256", "مرحبا"},
    {"iso-8859-6", "مرحبا"},
    {"x-mac-greek", "Καλημέρα"},
    {"windows-1253", "Καλημέρα"},
    {"iso-8859-7", "Καλημέρα"},
    {"x-mac-hebrew", "שלום"},
    {"windows-1255", "שלום"},
    {"iso-8859-8", "שלום"},
    {"iso-8859-15", "Grüße € œ"},
};

TEST_F(Encodings, EveryTextKeywordReadsBackWhatItWrote) {
    ASSERT_EQ(std::size(kTextSamples), 37u);
    for (const Sample& sample : kTextSamples) {
        const std::u16string keyword = Quoted(Utf16(sample.keyword));
        const std::u16string text = Utf16(sample.text);
        if (kKeywordsWithoutConverter.count(sample.keyword) != 0) {
            writeFile(u"sample.txt", "kept");
            EXPECT_NE(write(u"sample.txt", Quoted(text), keyword), Succeeded()) << sample.keyword;
            EXPECT_EQ(bytesOf(u"sample.txt"), "kept") << sample.keyword;
            continue;
        }
        EXPECT_EQ(write(u"sample.txt", Quoted(text), keyword), Succeeded()) << sample.keyword;
        EXPECT_EQ(read(u"sample.txt", keyword), sample.text) << sample.keyword;
    }
}

TEST_F(Encodings, BytesAreThoseOfTheEncoding) {
    struct Row {
        const char* keyword;
        const char* text;
        std::string bytes;
    };
    for (const Row& row : {
             Row{"windows-1251", "Привет", "\xCF\xF0\xE8\xE2\xE5\xF2"},
             Row{"iso-8859-15", "€5",
                 "\xA4"
                 "5"},
             Row{"euc-jp", "日本", "\x93\xfa\x96\x7b"},
             Row{"utf-16", "AΩ", std::string("A\0\xA9\x03", 4)},  // no byte-order mark
             Row{"utf-8", "é", "\xC3\xA9"},                       // no byte-order mark
             Row{"hex-dump", "48 69\r0a", "Hi\n"},
             Row{"base64", "SGk=", "Hi"},
         }) {
        EXPECT_EQ(write(u"bytes.bin", Quoted(Utf16(row.text)), Quoted(Utf16(row.keyword))),
                  Succeeded());
        EXPECT_EQ(bytesOf(u"bytes.bin"), row.bytes) << row.keyword;
    }
}

TEST_F(Encodings, AnUnrepresentableTailKeepsEverythingBeforeIt) {
    EXPECT_EQ(write(u"tail.txt", Quoted(u"abc\u03A9"), u"\"iso-8859-1\""), Succeeded());
    const std::string bytes = bytesOf(u"tail.txt");
    ASSERT_EQ(bytes.size(), 4u);
    EXPECT_EQ(bytes.substr(0, 3), "abc");
    EXPECT_NE(bytes[3], 'x');  // the sentinel never reaches the file
}

TEST_F(Encodings, HexDumpAndBase64OfBinaryBytes) {
    std::string all;
    for (int value = 0; value < 256; ++value) {
        all += static_cast<char>(value);
    }
    writeFile(u"all.bin", all);
    const std::string dump = read(u"all.bin", u"\"hex-dump\"");
    EXPECT_EQ(dump.substr(0, 48), "00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F\r");
    EXPECT_EQ(dump.size(), 256u * 3 - 1);
    const std::string base64 = read(u"all.bin", u"\"base64\"");
    EXPECT_EQ(base64.substr(0, 8), "AAECAwQF");
    EXPECT_EQ(base64.find('\r'), std::string::npos);
    EXPECT_EQ(write(u"from-hex.bin", Quoted(Utf16(dump)), u"\"hex-dump\""), Succeeded());
    EXPECT_EQ(write(u"from-base64.bin", Quoted(Utf16(base64)), u"\"base64\""), Succeeded());
    EXPECT_EQ(bytesOf(u"from-hex.bin"), all);
    EXPECT_EQ(bytesOf(u"from-base64.bin"), all);
}

TEST_F(Encodings, TextWithoutAKeywordFindsItsOwnEncoding) {
    struct Row {
        std::string bytes;
        std::string text;
    };
    for (const Row& row : {
             Row{"\xEF\xBB\xBFGr\xC3\xBC\xC3\x9F"
                 "e",
                 "Grüße"},
             Row{"Gr\xC3\xBC\xC3\x9F"
                 "e",
                 "Grüße"},
             Row{std::string("\xFF\xFEG\0r\0\xFC\0", 8), "Grü"},
             Row{std::string("\xFE\xFF\0G\0r\0\xFC", 8), "Grü"},
             Row{"caf\xE9", NativeText("caf\xE9")},  // not UTF-8: the native code page
             Row{"", ""},
         }) {
        writeFile(u"auto.txt", row.bytes);
        EXPECT_EQ(read(u"auto.txt"), row.text);
    }
}

}  // namespace
}  // namespace contents_test
