// Hex-dump and Base64 text forms of bytes, both ways.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foundation/base64.h"
#include "foundation/exception.h"
#include "foundation/hex_dump.h"

namespace slib {
namespace {

using Bytes = std::vector<uint8_t>;

std::u16string Wide(const std::string& ascii) {
    return std::u16string(ascii.begin(), ascii.end());
}

std::string FailureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Exception& exception) {
        return std::to_string(exception.error()->code()) + " " + exception.what();
    }
    return "no failure";
}

Bytes Counting(size_t size) {
    Bytes bytes(size);
    for (size_t index = 0; index < size; ++index) {
        bytes[index] = static_cast<uint8_t>(index * 7 + 3);
    }
    return bytes;
}

TEST(HexDump, LinesOfSixteenGroupsWithoutTrailingBlank) {
    EXPECT_EQ(EncodeHexDump(nullptr, 0), "");
    const Bytes hi{0x48, 0x69, 0x0A};
    EXPECT_EQ(EncodeHexDump(hi.data(), hi.size()), "48 69 0A");
    const Bytes seventeen(17, 0xAB);
    const std::string line = "AB AB AB AB AB AB AB AB AB AB AB AB AB AB AB AB";
    EXPECT_EQ(EncodeHexDump(seventeen.data(), seventeen.size()), line + "\rAB");
    const Bytes thirtyTwo(32, 0xAB);
    EXPECT_EQ(EncodeHexDump(thirtyTwo.data(), thirtyTwo.size()), line + "\r" + line);
}

TEST(HexDump, DecodesWhatItEncodesAndTolerantSpacing) {
    for (size_t size : {0, 1, 15, 16, 17, 33, 1000}) {
        const Bytes bytes = Counting(size);
        EXPECT_EQ(DecodeHexDump(Wide(EncodeHexDump(bytes.data(), bytes.size()))), bytes) << size;
    }
    EXPECT_EQ(DecodeHexDump(u"4869 0a\r\n\tFF  00\n"), (Bytes{0x48, 0x69, 0x0A, 0xFF, 0x00}));
}

TEST(HexDump, RefusesAnythingButPairsOfDigits) {
    const std::string odd = "-50 Hex-dump text holds a group with an odd number of digits";
    const std::string foreign = "-50 Hex-dump text holds a character that is not a hex digit";
    for (const auto& [text, failure] :
         std::vector<std::pair<std::u16string, std::string>>{{u"4", odd},
                                                             {u"486 9", odd},
                                                             {u"48 6", odd},
                                                             {u"48,69", foreign},
                                                             {u"0x48", foreign},
                                                             {u"4G", foreign},
                                                             {u"48\u00A069", foreign}}) {
        EXPECT_EQ(FailureOf([&] { DecodeHexDump(text); }), failure);
    }
}

TEST(Base64, MatchesTheStandardVectors) {
    // RFC 4648, section 10.
    for (const auto& [plain, encoded] :
         std::vector<std::pair<std::string, std::string>>{{"", ""},
                                                          {"f", "Zg=="},
                                                          {"fo", "Zm8="},
                                                          {"foo", "Zm9v"},
                                                          {"foob", "Zm9vYg=="},
                                                          {"fooba", "Zm9vYmE="},
                                                          {"foobar", "Zm9vYmFy"}}) {
        const Bytes bytes(plain.begin(), plain.end());
        EXPECT_EQ(EncodeBase64(bytes.data(), bytes.size()), encoded);
        EXPECT_EQ(DecodeBase64(Wide(encoded)), bytes) << encoded;
    }
    const Bytes all = Counting(256 * 3 + 1);
    const std::string text = EncodeBase64(all.data(), all.size());
    EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos);
    EXPECT_EQ(DecodeBase64(Wide(text)), all);
}

TEST(Base64, ToleratesLineBreaksBlanksAndMissingPadding) {
    const Bytes foobar{'f', 'o', 'o', 'b', 'a', 'r'};
    EXPECT_EQ(DecodeBase64(u" Zm9v\r\nYmFy \n"), foobar);
    EXPECT_EQ(DecodeBase64(u"Zm9vYg"), (Bytes{'f', 'o', 'o', 'b'}));
    EXPECT_EQ(DecodeBase64(u"Zm9vYg=\r\n="), (Bytes{'f', 'o', 'o', 'b'}));
}

TEST(Base64, RefusesForeignCharactersAndTruncation) {
    const std::string foreign = "-50 Base64 text holds a character outside the Base64 alphabet";
    for (const std::u16string& text : {std::u16string(u"Zm9v*"), std::u16string(u"Zm9v-_"),
                                       std::u16string(u"Zg==*"), std::u16string(u"Zm\u00E99v")}) {
        EXPECT_EQ(FailureOf([&] { DecodeBase64(text); }), foreign);
    }
    // Blocks joined after their padding: refused, where Python would keep only the first.
    const std::string early = "-50 Base64 text holds padding before the end";
    for (const std::u16string& text :
         {std::u16string(u"SGk=\rSGk="), std::u16string(u"Zg==Zg=="), std::u16string(u"Z=m9")}) {
        EXPECT_EQ(FailureOf([&] { DecodeBase64(text); }), early);
    }
    EXPECT_EQ(FailureOf([] { DecodeBase64(u"Zm9vY"); }),
              "-50 Base64 text ends in the middle of a byte");
}

// A large host text reaches the decoders a range at a time; wherever the ranges are cut, the
// outcome (bytes or refusal) must be that of the whole text.
template <typename Decoder>
std::string OutcomeInPieces(const std::u16string& text, size_t cut, size_t pieceSize) {
    std::string outcome;
    const std::string failure = FailureOf([&] {
        Decoder decoder(text.size());
        decoder.Feed(std::u16string_view(text).substr(0, cut));
        for (size_t start = cut; start < text.size(); start += pieceSize) {
            decoder.Feed(std::u16string_view(text).substr(start, pieceSize));
        }
        const Bytes bytes = decoder.Finish();
        outcome.assign(bytes.begin(), bytes.end());
    });
    return failure == "no failure" ? outcome : failure;
}

template <typename Decoder>
void ExpectCutsChangeNothing(const std::vector<std::u16string>& texts) {
    for (const std::u16string& text : texts) {
        const std::string whole = OutcomeInPieces<Decoder>(text, text.size(), 1);
        for (size_t cut = 0; cut <= text.size(); ++cut) {
            EXPECT_EQ(OutcomeInPieces<Decoder>(text, cut, text.size()), whole) << cut;
            EXPECT_EQ(OutcomeInPieces<Decoder>(text, cut, 1), whole) << cut;
            EXPECT_EQ(OutcomeInPieces<Decoder>(text, cut, 3), whole) << cut;
        }
    }
}

TEST(PiecewiseDecoding, CutsAnywhereGiveTheWholeTextsOutcome) {
    ExpectCutsChangeNothing<HexDumpDecoder>({u"48 69 0A", u"4869 0a\r\n\tFF  00\n", u"486 9",
                                             u"48 6", u"48,69", u"4G", u"", u"ABCDEF01"});
    ExpectCutsChangeNothing<Base64Decoder>({u"Zm9vYmFy", u" Zm9v\r\nYmFy \n", u"Zm9vYg=\r\n=",
                                            u"Zm9vYg", u"Zm9vY", u"Zg==Zg==", u"Z=m9",
                                            u"SGk=\rSGk=", u""});
}

}  // namespace
}  // namespace slib
