// wchar_t text as each system has it (UTF-16 units on Windows, code points on Linux) to and
// from the host's UTF-16: what the wide-character calls and the control interface rely on.
#include <gtest/gtest.h>

#include "core/wide_text.h"

namespace {

using fmhost::Utf16FromWide;
using fmhost::WideFromUtf16;

constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;

TEST(WideText, ScalarValuesSurviveTheRoundTrip) {
    for (const std::u16string text : {u"", u"plain", u"Grüße €", u"𝄞 and 😀", u"\uFFFF\u0001"}) {
        SCOPED_TRACE(std::string(text.begin(), text.end()));
        EXPECT_EQ(Utf16FromWide(WideFromUtf16(text)), text);
    }
}

TEST(WideText, APairIsOneWideCharacterOnlyWhereWcharTIsACodePoint) {
    const std::wstring wide = WideFromUtf16(u"a𝄞");
    ASSERT_EQ(wide.size(), kWideIsUtf16 ? 3u : 2u);
    if (!kWideIsUtf16) {
        EXPECT_EQ(static_cast<uint32_t>(wide[1]), 0x1D11Eu);
    }
    EXPECT_EQ(Utf16FromWide(L"a\U0001D11E"), u"a𝄞");
}

TEST(WideText, WhatNoCodePointCanHoldBecomesTheReplacementCharacter) {
    const struct {
        std::u16string utf16;
        std::u16string back;  // where wchar_t is a code point
    } cases[] = {
        {u"a\xD800z", u"a\uFFFDz"},  // lone high surrogate
        {u"a\xDC00z", u"a\uFFFDz"},  // lone low surrogate
        {u"\xDBFF", u"\uFFFD"},      // high surrogate at the end
        {u"\xDC00\xD800", u"\uFFFD\uFFFD"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(&c - cases));
        EXPECT_EQ(Utf16FromWide(WideFromUtf16(c.utf16)), kWideIsUtf16 ? c.utf16 : c.back);
    }
    if (!kWideIsUtf16) {
        for (const uint32_t outside : {0x110000u, 0xD800u, 0xFFFFFFFFu}) {
            const std::wstring wide(1, static_cast<wchar_t>(outside));
            EXPECT_EQ(Utf16FromWide(wide), u"\uFFFD") << outside;
        }
    }
}

}  // namespace
