// Texts through the plug-in interface: ranges, searches, case, styles, comparisons.
#include "wrapper_test_support.h"

namespace {

using namespace wrapper_test;

constexpr uint32_t kEnd = 0xFFFFFFFF;

TEST(TextExports, RangesEditInPlaceAndClipAtTheEnd) {
    TextPtr text = MakeText(u"Hello World");
    TextPtr other = MakeText(u"Big ");
    Checked([&](FmxErr& e) { FM_Text_InsertText(text.get(), *other, 6, e); });
    EXPECT_EQ(TextChars(*text), u"Hello Big World");
    Checked([&](FmxErr& e) { FM_Text_DeleteText(text.get(), 5, 5, e); });
    EXPECT_EQ(TextChars(*text), u"HelloWorld");
    Checked([&](FmxErr& e) { FM_Text_AppendText(text.get(), *other, 0, 3, e); });
    EXPECT_EQ(TextChars(*text), u"HelloWorldBig");
    Checked([&](FmxErr& e) { FM_Text_SetText(text.get(), *text, 5, kEnd, e); });
    EXPECT_EQ(TextChars(*text), u"WorldBig") << "a text may take a range of itself";
    Checked([&](FmxErr& e) { FM_Text_DeleteText(text.get(), 5, kEnd, e); });
    EXPECT_EQ(TextChars(*text), u"World");
    Checked([&](FmxErr& e) { FM_Text_DeleteText(text.get(), 99, 1, e); });
    EXPECT_EQ(TextChars(*text), u"World");
}

TEST(TextExports, GetUnicodeCopiesTheRangeWithoutATerminator) {
    TextPtr text = MakeText(u"abcdef");
    std::u16string buffer(8, u'#');
    Checked([&](FmxErr& e) {
        FM_Text_GetUnicode(text.get(), reinterpret_cast<uint16_t*>(&buffer[0]), 2, 10, e);
    });
    EXPECT_EQ(buffer, u"cdef####");
}

TEST(TextExports, FindsForwardAndBackwardWithTheNotFoundSentinel) {
    TextPtr text = MakeText(u"abcABCabc");
    TextPtr needle = MakeText(u"abc");
    TextPtr upper = MakeText(u"ABC");
    auto find = [&](auto fn, const TextPtr& what, uint32_t from) {
        return Checked([&](FmxErr& e) { return fn(text.get(), *what, from, e); });
    };
    EXPECT_EQ(find(FM_Text_Find, needle, 0), 0u);
    EXPECT_EQ(find(FM_Text_Find, needle, 1), 6u);
    EXPECT_EQ(find(FM_Text_Find, needle, 7), kEnd);
    EXPECT_EQ(find(FM_Text_Find, needle, 100), kEnd);
    EXPECT_EQ(find(FM_Text_FindPrev, needle, kEnd), 6u);
    EXPECT_EQ(find(FM_Text_FindPrev, needle, 5), 0u);
    EXPECT_EQ(find(FM_Text_FindPrev, upper, 2), kEnd);
    EXPECT_EQ(find(FM_Text_FindIgnoringCase, upper, 1), 3u);
    EXPECT_EQ(find(FM_Text_FindPrevIgnoringCase, upper, kEnd), 6u);
    TextPtr missing = MakeText(u"xyz");
    EXPECT_EQ(find(FM_Text_FindIgnoringCase, missing, 0), kEnd);
}

TEST(TextExports, CaseChangesInPlaceThroughAConstText) {
    TextPtr text = MakeText(u"Grüße, Ωmega");
    Checked([&](FmxErr& e) { FM_Text_Uppercase(text.get(), e); });
    EXPECT_EQ(TextChars(*text), u"GRÜßE, ΩMEGA") << "one unit for one: ß stays";
    Checked([&](FmxErr& e) { FM_Text_Lowercase(text.get(), e); });
    EXPECT_EQ(TextChars(*text), u"grüße, ωmega");
}

TEST(TextExports, ComparisonsLookAtCodeUnitsOnly) {
    TextPtr a = MakeText(u"abc");
    TextPtr b = MakeText(u"abd");
    TextPtr bold = MakeText(u"abc");
    StylePtr style(Checked([](FmxErr& e) { return FM_CharacterStyle_Constructor1(e); }));
    Checked([&](FmxErr& e) { FM_CharacterStyle_SetFace(style.get(), 0x0100, e); });
    Checked([&](FmxErr& e) { FM_Text_SetStyle(bold.get(), *style, 0, kEnd, e); });
    EXPECT_TRUE(Checked([&](FmxErr& e) { return FM_Text_operatorEQ(a.get(), *bold, e); }));
    EXPECT_TRUE(Checked([&](FmxErr& e) { return FM_Text_operatorLT(a.get(), *b, e); }));
    EXPECT_TRUE(Checked([&](FmxErr& e) { return FM_Text_operatorGE(b.get(), *a, e); }));
    EXPECT_FALSE(Checked([&](FmxErr& e) { return FM_Text_operatorGT(a.get(), *bold, e); }));
}

TEST(TextExports, StylesApplyPerRangeWithFontFaceSizeAndColour) {
    TextPtr text = MakeText(u"plain bold red");
    ColorPtr red(Checked([](FmxErr& e) { return FM_Color_Constructor2(255, 0, 0, 255, e); }));
    StylePtr bold(Checked([&](FmxErr& e) {
        return FM_CharacterStyle_Constructor2(3, 0x0100, 14, *FM_Color_Black(), e);
    }));
    StylePtr colour(Checked([](FmxErr& e) { return FM_CharacterStyle_Constructor1(e); }));
    Checked([&](FmxErr& e) { FM_CharacterStyle_SetColor(colour.get(), *red, e); });
    Checked([&](FmxErr& e) { FM_Text_SetStyle(text.get(), *bold, 6, 4, e); });
    Checked([&](FmxErr& e) { FM_Text_SetStyle(text.get(), *colour, 11, kEnd, e); });

    StylePtr probe(Checked([](FmxErr& e) { return FM_CharacterStyle_Constructor1(e); }));
    auto styleAt = [&](uint32_t position) {
        Checked([&](FmxErr& e) { FM_Text_GetStyle(text.get(), *probe, position, e); });
        return probe.get();
    };
    EXPECT_TRUE(Checked([&](FmxErr& e) { return FM_CharacterStyle_IsAllDisabled(styleAt(0), e); }));
    uint16_t font = 0, face = 0, size = 0;
    Checked(
        [&](FmxErr& e) { FM_CharacterStyle_GetFontInformation(styleAt(9), font, face, size, e); });
    EXPECT_EQ(font, 3);
    EXPECT_EQ(face, 0x0100);
    EXPECT_EQ(size, 14);
    EXPECT_TRUE(
        Checked([&](FmxErr& e) { return FM_CharacterStyle_IsAllDisabled(styleAt(10), e); }));
    const FmxColor* got =
        Checked([&](FmxErr& e) { return FM_CharacterStyle_GetColor(styleAt(13), e); });
    EXPECT_TRUE(Checked([&](FmxErr& e) { return FM_Color_operatorEQ(got, *red, e); }));
    EXPECT_FALSE(
        Checked([&](FmxErr& e) { return FM_CharacterStyle_IsFontEnabled(probe.get(), e); }));

    // Removing bold everywhere leaves font and size in place.
    StylePtr boldOnly(Checked([](FmxErr& e) { return FM_CharacterStyle_Constructor1(e); }));
    Checked([&](FmxErr& e) { FM_CharacterStyle_EnableFace(boldOnly.get(), 0x0100, e); });
    Checked([&](FmxErr& e) { FM_Text_RemoveStyle(text.get(), *boldOnly, e); });
    EXPECT_FALSE(
        Checked([&](FmxErr& e) { return FM_CharacterStyle_IsAnyFaceEnabled(styleAt(7), e); }));
    EXPECT_TRUE(
        Checked([&](FmxErr& e) { return FM_CharacterStyle_IsSizeEnabled(probe.get(), e); }));
    Checked([&](FmxErr& e) { FM_Text_ResetAllStyleBuffers(text.get(), e); });
    EXPECT_TRUE(Checked([&](FmxErr& e) { return FM_CharacterStyle_IsAllDisabled(styleAt(7), e); }));
}

TEST(ColorExports, WhiteAndBlackAreSharedAndCannotBeFreed) {
    const FmxColor* white = FM_Color_White();
    EXPECT_EQ(white, FM_Color_White());
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_Color_GetRedUpsample(white, e); }), 65535);
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_Color_GetGreen(FM_Color_Black(), e); }), 0);
    Slot slot;
    FM_Color_Delete(const_cast<FmxColor*>(white), slot);
    EXPECT_EQ(slot.code(), kFmxErrOther);
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_Color_GetBlue(white, e); }), 255);
}

}  // namespace
