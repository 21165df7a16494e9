#include "core/text.h"

#include <gtest/gtest.h>

#include <vector>

namespace fmhost {
namespace {

CharacterStyle Bold() {
    CharacterStyle style;
    style.EnableFace(face::kBold);
    return style;
}

CharacterStyle Red() {
    CharacterStyle style;
    style.SetColor(Color{255, 0, 0, 255});
    return style;
}

TEST(TextTest, FindsForwardAndBackward) {
    const Text text(u"abcabc");
    EXPECT_EQ(text.Find(Text(u"bc")), 1u);
    EXPECT_EQ(text.Find(Text(u"bc"), 2), 4u);
    EXPECT_EQ(text.Find(Text(u"bc"), 5), Text::kNotFound);
    EXPECT_EQ(text.Find(Text(u"x")), Text::kNotFound);
    EXPECT_EQ(text.Find(Text(u"a"), Text::kEnd), Text::kNotFound);
    EXPECT_EQ(text.FindPrev(Text(u"bc")), 4u);
    EXPECT_EQ(text.FindPrev(Text(u"bc"), 3), 1u);  // a match may start at the position itself
    EXPECT_EQ(text.FindPrev(Text(u"bc"), 4), 4u);
    EXPECT_EQ(text.FindPrev(Text(u"bc"), 0), Text::kNotFound);
    // Empty needles behave as std::u16string's searches.
    EXPECT_EQ(text.Find(Text(), 6), 6u);
    EXPECT_EQ(text.Find(Text(), 7), Text::kNotFound);
    EXPECT_EQ(Text().Find(Text(u"a")), Text::kNotFound);
}

TEST(TextTest, FindsIgnoringCase) {
    const Text text(u"Grüße ÄRGER");
    EXPECT_EQ(text.FindIgnoringCase(Text(u"ärger")), 6u);
    EXPECT_EQ(text.Find(Text(u"ärger")), Text::kNotFound);
    EXPECT_EQ(text.FindPrevIgnoringCase(Text(u"g"), Text::kEnd), 8u);
    EXPECT_EQ(text.FindPrevIgnoringCase(Text(u"g"), 7), 0u);
}

TEST(TextTest, EditsClipOutOfRangePositions) {
    Text text(u"hello");
    EXPECT_EQ(text.Range(3).Chars(), u"lo");
    EXPECT_EQ(text.Range(1, 2).Chars(), u"el");
    EXPECT_EQ(text.Range(9, 2).Chars(), u"");
    EXPECT_EQ(text.Range(4, Text::kEnd).Chars(), u"o");
    text.InsertText(Text(u"!"), 100);
    EXPECT_EQ(text.Chars(), u"hello!");
    text.DeleteText(1, 3);
    EXPECT_EQ(text.Chars(), u"ho!");
    text.DeleteText(2);
    EXPECT_EQ(text.Chars(), u"ho");
    text.DeleteText(50, 1);
    EXPECT_EQ(text.Chars(), u"ho");
    text.AppendText(Text(u"xyz"), 1, 1);
    EXPECT_EQ(text.Chars(), u"hoy");
    text.SetText(Text(u"abcdef"), 2, 3);
    EXPECT_EQ(text.Chars(), u"cde");
    text.AppendText(text);  // appending itself
    EXPECT_EQ(text.Chars(), u"cdecde");
}

TEST(TextTest, StylesFollowTheirCharactersThroughEdits) {
    Text text(u"abcdef");
    text.SetStyle(Bold(), 2, 2);  // "cd"
    EXPECT_TRUE(text.StyleAt(1).IsAllDisabled());
    EXPECT_EQ(text.StyleAt(2), Bold());
    EXPECT_EQ(text.StyleAt(3), Bold());
    EXPECT_TRUE(text.StyleAt(4).IsAllDisabled());

    text.InsertText(Text(u"XY"), 0);  // "XYabcdef": bold moves to 4..5
    EXPECT_EQ(text.StyleAt(4), Bold());
    EXPECT_TRUE(text.StyleAt(3).IsAllDisabled());

    text.DeleteText(5, 2);  // deletes "de": only "c" at 4 stays bold
    EXPECT_EQ(text.Chars(), u"XYabcf");
    EXPECT_EQ(text.StyleAt(4), Bold());
    EXPECT_TRUE(text.StyleAt(5).IsAllDisabled());

    const Text piece = text.Range(4, 1);
    EXPECT_EQ(piece.StyleAt(0), Bold());
    Text plain(u"zz");
    plain.AppendText(piece);
    EXPECT_TRUE(plain.StyleAt(1).IsAllDisabled());
    EXPECT_EQ(plain.StyleAt(2), Bold());
    ASSERT_EQ(plain.Runs().size(), 2u);
}

TEST(TextTest, ApplyAddsTraitsAndSetOverwrites) {
    Text text(u"abcd");
    text.SetStyle(Bold(), 0, 2);
    text.ApplyStyle(Red(), 1, 2);
    CharacterStyle boldRed = Bold();
    boldRed.SetColor(Color{255, 0, 0, 255});
    EXPECT_EQ(text.StyleAt(0), Bold());
    EXPECT_EQ(text.StyleAt(1), boldRed);
    EXPECT_EQ(text.StyleAt(2), Red());
    text.SetStyle(Red());
    EXPECT_EQ(text.StyleAt(0), Red());
    EXPECT_EQ(text.Runs().size(), 1u);
}

TEST(TextTest, RemoveStyleDisablesOnlyMatchingTraits) {
    Text text(u"abc");
    CharacterStyle mixed = Bold();
    mixed.SetColor(Color{1, 2, 3, 255});
    mixed.SetSize(12);
    text.SetStyle(mixed);
    CharacterStyle otherColor;
    otherColor.SetColor(Color{9, 9, 9, 255});
    text.RemoveStyle(otherColor);  // colour differs: stays
    EXPECT_TRUE(text.StyleAt(0).IsColorEnabled());
    CharacterStyle remove = Bold();
    remove.SetSize(12);
    text.RemoveStyle(remove);
    EXPECT_FALSE(text.StyleAt(1).IsAnyFaceEnabled());
    EXPECT_FALSE(text.StyleAt(1).IsSizeEnabled());
    EXPECT_TRUE(text.StyleAt(1).IsColorEnabled());
    text.ResetAllStyles();
    EXPECT_FALSE(text.HasStyles());
}

TEST(TextTest, CaseMappingKeepsStylesAndLength) {
    Text text(u"straße Ölçü ΣΑΣ жук");
    text.SetStyle(Bold(), 0, 3);
    text.Uppercase();
    EXPECT_EQ(text.Chars(), u"STRAßE ÖLÇÜ ΣΑΣ ЖУК");
    EXPECT_EQ(text.StyleAt(2), Bold());
    text.Lowercase();
    EXPECT_EQ(text.Chars(), u"straße ölçü σασ жук");
}

TEST(TextTest, CopiesShareCharactersButNeverEachOthersEdits) {
    const Text original(u"abc");
    const std::u16string* shared = &original.Chars();
    for (const auto& edit : std::vector<void (*)(Text&)>{
             [](Text& t) { t.Uppercase(); }, [](Text& t) { t.AppendText(Text(u"d")); },
             [](Text& t) { t.DeleteText(0, 1); }, [](Text& t) { t.SetText(t, 1); },
             [](Text& t) { t.Replace(0, 3, t); }, [](Text& t) { t.Assign(u"x"); }}) {
        Text copy = original;
        Text whole;
        whole.SetText(original);
        EXPECT_EQ(&copy.Chars(), shared);
        EXPECT_EQ(&whole.Chars(), shared);
        edit(copy);
        edit(whole);
        EXPECT_EQ(original.Chars(), u"abc");
        EXPECT_EQ(copy, whole);
    }
}

TEST(TextTest, ComparesCodeUnitsOnly) {
    Text styled(u"abc");
    styled.SetStyle(Bold());
    EXPECT_EQ(styled, Text(u"abc"));
    EXPECT_NE(Text(u"abc"), Text(u"ABC"));
    EXPECT_LT(Text(u"ABC"), Text(u"abc"));
    EXPECT_LE(Text(u"ab"), Text(u"abc"));
    EXPECT_GT(Text(u"b"), Text(u"abc"));
}

TEST(TextTest, Utf8RoundTripAndMalformedInput) {
    const Text text(u"Ä€😀");
    EXPECT_EQ(text.Size(), 4u);  // the emoji takes two code units
    EXPECT_EQ(Text::FromUtf8(text.ToUtf8()), text);
    EXPECT_EQ(Text::FromUtf8("a\xFF"
                             "b")
                  .Chars(),
              u"a\uFFFDb");
    EXPECT_EQ(Text::FromUtf8("\xE2\x82").Chars(), u"\uFFFD");
    EXPECT_EQ(Text::FromUtf8("\xC0\x80").Chars(), u"\uFFFD");  // overlong NUL
}

TEST(CharacterStyleTest, EqualityIgnoresValuesOfDisabledTraits) {
    CharacterStyle a;
    a.SetSize(10);
    a.DisableSize();
    EXPECT_EQ(a, CharacterStyle());
    EXPECT_TRUE(a.IsAllDisabled());
    CharacterStyle full(3, face::kItalic, 14);
    EXPECT_TRUE(full.IsFontEnabled() && full.IsSizeEnabled() && full.IsColorEnabled());
    EXPECT_EQ(full.GetColor(), Color::Black());
    EXPECT_TRUE(full.IsFaceEnabled(face::kItalic));
    EXPECT_FALSE(full.IsFaceEnabled(face::kItalic | face::kBold));
    full.DisableAll();
    EXPECT_TRUE(full.IsAllDisabled());
    EXPECT_EQ(Color::Upsample(255), 65535);
}

}  // namespace
}  // namespace fmhost
