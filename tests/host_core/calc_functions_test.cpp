// The engine's own functions.
#include <gtest/gtest.h>

#include "calc_test_support.h"

namespace fmhost {
namespace {

using calc_test::EvalToText;
using calc_test::TestContext;

class CalcFunctionsTest : public ::testing::Test {
  protected:
    std::string Eval(const std::u16string& expression) { return EvalToText(context_, expression); }
    Value ValueOf(const std::u16string& expression) {
        Value result;
        EXPECT_EQ(Evaluate(expression, context_, result), kNoError) << Utf8(expression);
        return result;
    }
    ErrorCode ErrorOf(const std::u16string& expression) {
        return calc_test::EvalError(context_, expression);
    }
    static std::string Utf8(const std::u16string& s) { return Text(s).ToUtf8(); }
    TestContext context_;
};

TEST_F(CalcFunctionsTest, LeftRightMiddleClipToTheText) {
    EXPECT_EQ(Eval(u"Left ( \"abcdef\" ; 2 )"), "ab");
    EXPECT_EQ(Eval(u"Left ( \"abc\" ; 10 )"), "abc");
    EXPECT_EQ(Eval(u"Left ( \"abc\" ; -1 )"), "");
    EXPECT_EQ(Eval(u"Right ( \"abcdef\" ; 2 )"), "ef");
    EXPECT_EQ(Eval(u"Right ( \"abc\" ; 99 )"), "abc");
    EXPECT_EQ(Eval(u"Right ( \"\" ; 1 )"), "");
    EXPECT_EQ(Eval(u"Middle ( \"abcdef\" ; 2 ; 3 )"), "bcd");
    EXPECT_EQ(Eval(u"Middle ( \"abcdef\" ; 5 ; 10 )"), "ef");
    EXPECT_EQ(Eval(u"Middle ( \"abcdef\" ; 0 ; 2 )"), "a");  // position 0 does not exist
    EXPECT_EQ(Eval(u"Middle ( \"abcdef\" ; 9 ; 2 )"), "");
    EXPECT_EQ(Eval(u"Middle ( \"abcdef\" ; 2 ; -1 )"), "");
    EXPECT_EQ(Eval(u"Length ( \"\" ) & Length ( 1/4 ) & Length ( \"😀\" )"), "042");
}

TEST_F(CalcFunctionsTest, PositionSearchesBothWaysIgnoringCase) {
    EXPECT_EQ(Eval(u"Position ( \"Mississippi\" ; \"SS\" ; 1 ; 1 )"), "3");
    EXPECT_EQ(Eval(u"Position ( \"Mississippi\" ; \"ss\" ; 1 ; 2 )"), "6");
    EXPECT_EQ(Eval(u"Position ( \"Mississippi\" ; \"ss\" ; 1 ; 3 )"), "0");
    EXPECT_EQ(Eval(u"Position ( \"Mississippi\" ; \"ss\" ; 4 ; 1 )"), "6");
    EXPECT_EQ(Eval(u"Position ( \"Mississippi\" ; \"ss\" ; 99 ; -1 )"), "6");
    EXPECT_EQ(Eval(u"Position ( \"Mississippi\" ; \"ss\" ; 5 ; -1 )"), "3");
    EXPECT_EQ(Eval(u"Position ( \"Mississippi\" ; \"i\" ; 11 ; -2 )"), "8");
    EXPECT_EQ(Eval(u"Position ( \"aaaa\" ; \"aa\" ; 1 ; 2 )"), "2");
    EXPECT_EQ(Eval(u"Position ( \"abc\" ; \"\" ; 1 ; 1 )"), "0");
    EXPECT_EQ(Eval(u"Position ( \"abc\" ; \"a\" ; 1 ; 0 )"), "0");
    EXPECT_EQ(Eval(u"Position ( \"\" ; \"a\" ; 1 ; 1 )"), "0");
}

TEST_F(CalcFunctionsTest, PatternCountAndSubstitute) {
    EXPECT_EQ(Eval(u"PatternCount ( \"aaaa\" ; \"aa\" )"), "3");
    EXPECT_EQ(Eval(u"PatternCount ( \"Hello hello\" ; \"HELLO\" )"), "2");
    EXPECT_EQ(Eval(u"PatternCount ( \"abc\" ; \"\" )"), "0");
    EXPECT_EQ(Eval(u"Substitute ( \"a-b-c\" ; \"-\" ; \"+\" )"), "a+b+c");
    EXPECT_EQ(Eval(u"Substitute ( \"Aa\" ; \"a\" ; \"x\" )"), "Ax");  // case-sensitive
    EXPECT_EQ(Eval(u"Substitute ( \"aaa\" ; \"aa\" ; \"b\" )"), "ba");
    EXPECT_EQ(Eval(u"Substitute ( \"abc\" ; \"\" ; \"x\" )"), "abc");
    EXPECT_EQ(Eval(u"Substitute ( \"abc\" ; [ \"a\" ; \"b\" ] ; [ \"b\" ; \"c\" ] )"), "ccc");
    EXPECT_EQ(Eval(u"Substitute ( \"a¶b\" ; [ ¶ ; \", \" ] )"), "a, b");
    EXPECT_EQ(ErrorOf(u"Substitute ( \"a\" ; [ \"a\" ] )"), kErrTooFewParameters);
    EXPECT_EQ(ErrorOf(u"Substitute ( \"a\" ; [ \"a\" ; 1 ; 2 ] )"), kErrTooManyParameters);
    EXPECT_EQ(ErrorOf(u"Substitute ( \"a\" ; [ \"a\" ; 1 ] ; \"b\" )"), kErrListNotAllowed);
    EXPECT_EQ(ErrorOf(u"Substitute ( \"a\" ; \"b\" )"), kErrTooFewParameters);
}

TEST_F(CalcFunctionsTest, CaseTrimAndCharacterCodes) {
    EXPECT_EQ(Eval(u"Upper ( \"straße\" ) & Lower ( \"ÀB\" )"), "STRAßEàb");
    EXPECT_EQ(Eval(u"\"[\" & Trim ( \"  a b  \" ) & \"]\""), "[a b]");
    EXPECT_EQ(Eval(u"\"[\" & Trim ( \"   \" ) & \"]\""), "[]");
    EXPECT_EQ(Eval(u"Trim ( ¶ & \" a\" )"), "\r a");  // only blanks are trimmed
    EXPECT_EQ(Eval(u"Code ( \"AB\" )"), "6600065");
    EXPECT_EQ(Eval(u"Char ( 6600065 )"), "AB");
    EXPECT_EQ(Eval(u"Char ( 65 ) & Char ( 0 ) & Char ( -5 )"), "A");
    EXPECT_EQ(Eval(u"Char ( Code ( \"é¶x\" ) )"), "é\rx");
    EXPECT_EQ(Eval(u"IsEmpty ( Code ( \"\" ) )"), "1");
}

TEST_F(CalcFunctionsTest, ValueLists) {
    EXPECT_EQ(Eval(u"List ( \"a\" ; \"\" ; 2 ; \"b\" )"), "a\r2\rb");
    EXPECT_EQ(Eval(u"List ( \"\" ; \"\" )"), "");
    EXPECT_EQ(Eval(u"ValueCount ( \"a¶b¶c\" )"), "3");
    EXPECT_EQ(Eval(u"ValueCount ( \"a¶b¶\" )"), "2");
    EXPECT_EQ(Eval(u"ValueCount ( \"a¶¶b\" )"), "3");
    EXPECT_EQ(Eval(u"ValueCount ( \"\" )"), "0");
    EXPECT_EQ(Eval(u"ValueCount ( \"a\" & Char ( 13 ) & Char ( 10 ) & \"b\" )"), "2");
    EXPECT_EQ(Eval(u"GetValue ( \"a¶b¶c\" ; 2 )"), "b");
    EXPECT_EQ(Eval(u"GetValue ( \"a¶b¶c\" ; 4 )"), "");
    EXPECT_EQ(Eval(u"GetValue ( \"a¶b¶c\" ; 0 )"), "");
}

TEST_F(CalcFunctionsTest, ConversionsAndTests) {
    EXPECT_EQ(Eval(u"GetAsNumber ( \"x1,5y.2\" )"), "15.2");
    EXPECT_EQ(Eval(u"IsEmpty ( GetAsNumber ( \"abc\" ) )"), "1");
    EXPECT_EQ(Eval(u"GetAsText ( 007.50 )"), "7.5");
    EXPECT_EQ(Eval(u"IsEmpty ( \"\" ) & IsEmpty ( 0 ) & IsEmpty ( $nothing )"), "101");
    EXPECT_EQ(Eval(u"If ( 0 ; 1 )"), "");
    EXPECT_EQ(Eval(u"If ( \"a\" ; \"yes\" ; \"no\" )"), "no");  // text without digits is false
    EXPECT_EQ(Eval(u"Case ( 0 ; \"a\" ; 1 ; \"b\" ; \"c\" )"), "b");
    EXPECT_EQ(Eval(u"Case ( 0 ; \"a\" ; 0 ; \"b\" ; \"c\" )"), "c");
    EXPECT_EQ(Eval(u"Case ( 0 ; \"a\" )"), "");
    // Untaken branches are not evaluated.
    EXPECT_EQ(Eval(u"If ( 1 ; \"ok\" ; Let ( $$side = 1 ; 0 ) ) & IsEmpty ( $$side )"), "ok1");
    EXPECT_EQ(Eval(u"0 and Let ( $$side = 1 ; 1 )"), "0");
    EXPECT_EQ(Eval(u"IsEmpty ( $$side )"), "1");
}

TEST_F(CalcFunctionsTest, DateAndTimeArithmeticAndTextForms) {
    EXPECT_EQ(Eval(u"Date ( 2 ; 29 ; 2024 )"), "2/29/2024");
    EXPECT_EQ(Eval(u"Date ( 13 ; 1 ; 2023 )"), "1/1/2024");
    EXPECT_EQ(Eval(u"Date ( 1 ; 31 ; 2024 ) + 1"), "2/1/2024");
    EXPECT_EQ(Eval(u"Date ( 3 ; 1 ; 2024 ) - Date ( 2 ; 1 ; 2024 )"), "29");
    EXPECT_EQ(Eval(u"GetAsNumber ( Date ( 1 ; 1 ; 1 ) )"), "1");
    EXPECT_EQ(Eval(u"Date ( 1 ; 1 ; 4001 )"), "?");
    EXPECT_EQ(Eval(u"Time ( 1 ; 30 ; 0 ) + 60"), "1:31:00");
    EXPECT_EQ(Eval(u"Time ( 0 ; 0 ; 1.25 )"), "0:00:01.25");
    EXPECT_EQ(Eval(u"Time ( 25 ; 0 ; 0 )"), "25:00:00");
    EXPECT_EQ(Eval(u"Time ( 1 ; 0 ; 0 ) - Time ( 2 ; 0 ; 0 )"), "-1:00:00");
    EXPECT_EQ(Eval(u"Timestamp ( Date ( 12 ; 31 ; 2023 ) ; Time ( 25 ; 0 ; 0 ) )"),
              "1/1/2024 1:00:00");
    EXPECT_EQ(Eval(u"Timestamp ( Date ( 1 ; 1 ; 2024 ) ; 0 ) + 90"), "1/1/2024 0:01:30");
    EXPECT_EQ(Eval(u"GetAsNumber ( Timestamp ( Date ( 1 ; 2 ; 1 ) ; 0 ) )"), "86400");
    EXPECT_EQ(Eval(u"GetAsDate ( \"7/4/1976\" ) + 0"), "7/4/1976");
    EXPECT_EQ(Eval(u"GetAsDate ( \"tomorrow\" )"), "?");
    EXPECT_EQ(Eval(u"IsEmpty ( GetAsDate ( \"\" ) )"), "1");
    EXPECT_EQ(Eval(u"GetAsTime ( \"8:15 PM\" )"), "20:15:00");
    EXPECT_EQ(Eval(u"GetAsTimestamp ( \"7/4/1976 1:02:03\" ) - "
                   u"GetAsTimestamp ( \"7/4/1976\" )"),
              "3723");
    EXPECT_EQ(Eval(u"Year ( \"3/1/2024\" ) & \"-\" & Month ( \"3/1/2024\" ) & \"-\" & "
                   u"Day ( \"3/1/2024\" ) & \"-\" & DayOfWeek ( \"3/1/2024\" ) & \"-\" & "
                   u"DayOfYear ( \"3/1/2024\" ) & \"-\" & WeekOfYear ( \"3/1/2024\" )"),
              "2024-3-1-6-61-9");
    EXPECT_EQ(Eval(u"Hour ( \"13:14:15.5\" ) & Minute ( \"13:14:15.5\" ) & "
                   u"Seconds ( \"13:14:15.5\" )"),
              "131415.5");
    EXPECT_EQ(Eval(u"Date ( 1 ; 1 ; 2024 ) = \"1/1/2024\""), "1");
}

TEST_F(CalcFunctionsTest, Base64AndContainers) {
    EXPECT_EQ(Eval(u"Base64Encode ( \"Hi €\" )"), "SGkg4oKs");
    EXPECT_EQ(Eval(u"Base64Decode ( \"SGkg4oKs\" )"), "Hi €");
    EXPECT_EQ(Eval(u"Base64Decode ( \"SGk=\r\n\" )"), "Hi");
    EXPECT_EQ(Eval(u"Base64Decode ( \"S*Gk\" )"), "?");
    const std::string longText(100, 'x');
    const std::string encoded = Eval(u"Base64Encode ( \"" + std::u16string(100, u'x') + u"\" )");
    EXPECT_EQ(encoded.find("\r\n"), 76u);
    EXPECT_EQ(Eval(u"Base64Decode ( Base64Encode ( \"" + std::u16string(100, u'x') + u"\" ) )"),
              longText);

    const Value file = ValueOf(u"Base64Decode ( \"AAEC\" ; \"data.bin\" )");
    ASSERT_EQ(file.Type(), NativeType::kContainer);
    const Bytes* bytes = file.AsContainer().BytesOf(stream_type::kFile);
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(*bytes, (Bytes{0, 1, 2}));
    EXPECT_EQ(file.AsText().Chars(), u"data.bin");
    EXPECT_EQ(Eval(u"Base64Encode ( Base64Decode ( \"AAEC\" ; \"data.bin\" ) )"), "AAEC");
    EXPECT_EQ(Eval(u"GetAsText ( Base64Decode ( \"AAEC\" ; \"data.bin\" ) )"), "data.bin");

    // A picture is stored as the host stores an inserted picture: its own stream and SIZE.
    const Container gif =
        ValueOf(
            u"Base64Decode ( \"R0lGODlhAwACAIAAAP///wAAACwAAAAAAwACAAACAoRRADs=\" ; \"dot.gif\" )")
            .AsContainer();
    EXPECT_NE(gif.BytesOf(stream_type::kGif), nullptr);
    EXPECT_EQ(gif.BytesOf(stream_type::kFile), nullptr);
    int16_t width = 0;
    int16_t height = 0;
    EXPECT_EQ(gif.GetPictureSize(width, height), container_error::kOk);
    EXPECT_EQ(width, 3);
    EXPECT_EQ(height, 2);

    // A reference: the path list and nothing else.
    const Value link = ValueOf(u"ContainerReference ( \"filewin:/C:/a.pdf\" )");
    ASSERT_EQ(link.Type(), NativeType::kContainer);
    EXPECT_EQ(link.AsContainer().Count(), 1);
    EXPECT_EQ(link.AsText().Chars(), u"filewin:/C:/a.pdf");
    EXPECT_TRUE(ValueOf(u"ContainerReference ( \"\" )").AsContainer().Empty());
}

TEST_F(CalcFunctionsTest, StyledTextKeepsItsStyles) {
    EXPECT_EQ(Eval(u"RGB ( 255 ; 0 ; 128 )"), "16711808");
    EXPECT_EQ(Eval(u"RGB ( 999 ; -4 ; 1 )"), "16711681");  // channels clamp to 0..255

    const Value red = ValueOf(u"TextColor ( \"ab\" ; RGB ( 255 ; 0 ; 0 ) ) & \"c\"");
    const Text& text = red.StoredText();
    EXPECT_EQ(text.Chars(), u"abc");
    EXPECT_TRUE(text.StyleAt(1).IsColorEnabled());
    EXPECT_EQ(text.StyleAt(1).GetColor(), (Color{255, 0, 0, 255}));
    EXPECT_FALSE(text.StyleAt(2).IsColorEnabled());

    const Value styled = ValueOf(
        u"TextSize ( TextFont ( TextStyleAdd ( \"x\" ; Bold + Italic ) ; \"Arial\" ) ; "
        u"14 )");
    const CharacterStyle style = styled.StoredText().StyleAt(0);
    EXPECT_TRUE(style.IsFaceEnabled(face::kBold | face::kItalic));
    EXPECT_EQ(style.Size(), 14);
    EXPECT_EQ(context_.GetSession().Fonts().NameOf(style.Font()), u"Arial");

    const Value plain = ValueOf(u"TextStyleAdd ( TextStyleAdd ( \"x\" ; bold ) ; Plain )");
    EXPECT_FALSE(plain.StoredText().StyleAt(0).IsAnyFaceEnabled());
    const Value removed =
        ValueOf(u"TextStyleRemove ( TextStyleAdd ( \"x\" ; Bold + Underline ) ; Bold )");
    EXPECT_EQ(removed.StoredText().StyleAt(0).Faces(), face::kUnderline);
    const Value cut = ValueOf(u"Left ( TextStyleAdd ( \"xyz\" ; Italic ) ; 2 )");
    EXPECT_TRUE(cut.StoredText().StyleAt(1).IsFaceEnabled(face::kItalic));
}

}  // namespace
}  // namespace fmhost
