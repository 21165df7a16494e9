// Literals, operators, precedence and syntax errors of the calculation language.
#include <gtest/gtest.h>

#include "calc_test_support.h"

namespace fmhost {
namespace {

using calc_test::EvalError;
using calc_test::EvalToText;
using calc_test::TestContext;

class CalcSyntaxTest : public ::testing::Test {
  protected:
    std::string Eval(const std::u16string& expression) { return EvalToText(context_, expression); }
    ErrorCode Error(const std::u16string& expression) { return EvalError(context_, expression); }
    TestContext context_;
};

TEST_F(CalcSyntaxTest, AcceptanceExamples) {
    EXPECT_EQ(Eval(u"1+2"), "3");
    EXPECT_EQ(Eval(u"Let ( [ $$a = 5 ] ; $$a & \"¶\" & Length ( \"abc\" ) )"), "5\r3");
    EXPECT_EQ(Eval(u"1/2"), "0.5");
    EXPECT_EQ(Eval(u"5000000000"), "5000000000");
}

TEST_F(CalcSyntaxTest, NumbersAreExact) {
    EXPECT_EQ(Eval(u"0.1 + 0.2"), "0.3");
    EXPECT_EQ(Eval(u"0.1 + 0.2 = 0.3"), "1");
    EXPECT_EQ(Eval(u"1/3"), "0.3333333333333333");
    EXPECT_EQ(Eval(u"-50"), "-50");
    EXPECT_EQ(Eval(u"5000000000 * 3"), "15000000000");
    EXPECT_EQ(Eval(u".5 + 5."), "5.5");
    EXPECT_EQ(Eval(u"1/0"), "?");
    EXPECT_EQ(Eval(u"1/0 + 1"), "?");
    EXPECT_EQ(Eval(u"\"\" + 1"), "1");
}

TEST_F(CalcSyntaxTest, PrecedenceFromLowestToHighest) {
    EXPECT_EQ(Eval(u"1 + 2 * 3"), "7");
    EXPECT_EQ(Eval(u"(1 + 2) * 3"), "9");
    EXPECT_EQ(Eval(u"2 * 3 ^ 2"), "18");
    EXPECT_EQ(Eval(u"-2 ^ 2"), "4");              // unary minus binds tighter than ^
    EXPECT_EQ(Eval(u"1 + 2 & 3"), "33");          // + before &
    EXPECT_EQ(Eval(u"\"a\" & 1 = \"a1\""), "1");  // & before comparison
    EXPECT_EQ(Eval(u"1 = 1 and 2 = 3"), "0");     // comparison before and
    EXPECT_EQ(Eval(u"1 or 0 and 0"), "1");        // and before or
    EXPECT_EQ(Eval(u"0 and 0 or 1"), "1");
    EXPECT_EQ(Eval(u"not 1 = 2"), "1");    // not (1 = 2)
    EXPECT_EQ(Eval(u"not 0 and 0"), "0");  // (not 0) and 0
    EXPECT_EQ(Eval(u"not not 5"), "1");
    EXPECT_EQ(Eval(u"1 xor 1 or 1"), "1");  // ((1 xor 1) or 1)
    EXPECT_EQ(Eval(u"1 or 1 xor 1"), "0");  // ((1 or 1) xor 1)
}

TEST_F(CalcSyntaxTest, OperatorsGroupFromTheLeft) {
    EXPECT_EQ(Eval(u"10 - 4 - 3"), "3");
    EXPECT_EQ(Eval(u"64 / 4 / 2"), "8");
    EXPECT_EQ(Eval(u"2 ^ 3 ^ 2"), "64");
    EXPECT_EQ(Eval(u"3 > 2 > 1"), "0");  // (3 > 2) = 1, and 1 > 1 is false
    EXPECT_EQ(Eval(u"- - 3"), "3");
}

TEST_F(CalcSyntaxTest, ComparisonOperators) {
    EXPECT_EQ(Eval(u"\"ABC\" = \"abc\""), "1");
    EXPECT_EQ(Eval(u"\"abc\" < \"ABD\""), "1");
    EXPECT_EQ(Eval(u"10 > 9"), "1");
    EXPECT_EQ(Eval(u"\"10\" > \"9\""), "0");  // texts compare as texts
    EXPECT_EQ(Eval(u"\"10\" = 10"), "1");     // a text that is a number meets a number
    EXPECT_EQ(Eval(u"1 ≠ 2"), "1");
    EXPECT_EQ(Eval(u"1 <> 1"), "0");
    EXPECT_EQ(Eval(u"2 ≤ 2"), "1");
    EXPECT_EQ(Eval(u"2 <= 1"), "0");
    EXPECT_EQ(Eval(u"3 ≥ 4"), "0");
    EXPECT_EQ(Eval(u"4 >= 4"), "1");
}

TEST_F(CalcSyntaxTest, TextLiteralsAndComments) {
    EXPECT_EQ(Eval(u"\"say \\\"hi\\\"\""), "say \"hi\"");
    EXPECT_EQ(Eval(u"\"a\\\\b\""), "a\\b");
    EXPECT_EQ(Eval(u"\"a¶b\""), "a\rb");
    EXPECT_EQ(Eval(u"\"a\\¶b\""), "a¶b");
    EXPECT_EQ(Eval(u"\"a\" & ¶ & \"b\""), "a\rb");
    EXPECT_EQ(Eval(u"\"c:\\temp\""), "c:\\temp");  // other backslashes stay
    EXPECT_EQ(Eval(u"/* lead */ 1 + // to the end\r 2"), "3");
    EXPECT_EQ(Eval(u"1 /* a * b */ + 2 // trailing"), "3");
    EXPECT_EQ(Eval(u"\"/* not a comment */\""), "/* not a comment */");
}

TEST_F(CalcSyntaxTest, NamesAndKeywordsIgnoreCase) {
    EXPECT_EQ(Eval(u"LENGTH ( \"ab\" ) AND length(\"\") = 0"), "1");
    EXPECT_EQ(Eval(u"LeT ( X = 2 ; x * 3 )"), "6");
    EXPECT_EQ(Eval(u"NOT 0"), "1");
}

TEST_F(CalcSyntaxTest, EverySyntaxErrorKind) {
    EXPECT_EQ(Error(u""), kErrUnexpectedEnd);
    EXPECT_EQ(Error(u"1 +"), kErrUnexpectedEnd);
    EXPECT_EQ(Error(u"1 + * 2"), kErrOperandExpected);
    EXPECT_EQ(Error(u"Length ( ; )"), kErrOperandExpected);
    EXPECT_EQ(Error(u"1 + and"), kErrOperandExpected);
    EXPECT_EQ(Error(u"1 + #"), kErrOperandExpected);
    EXPECT_EQ(Error(u"1 /* open"), kErrCommentNotClosed);
    EXPECT_EQ(Error(u"\"open"), kErrTextNotClosed);
    EXPECT_EQ(Error(u"(1 + 2"), kErrUnbalancedParenthesis);
    EXPECT_EQ(Error(u"1 + 2)"), kErrUnbalancedParenthesis);
    EXPECT_EQ(Error(u"Length ( \"a\""), kErrUnbalancedParenthesis);
    EXPECT_EQ(Error(u"NoSuchFunction ( 1 )"), kErrFunctionNotFound);
    EXPECT_EQ(Error(u"2 (3)"), kErrFunctionNotFound);
    EXPECT_EQ(Error(u"Let ( 1 = 2 ; 3 )"), kErrNameExpected);
    EXPECT_EQ(Error(u"$ + 1"), kErrNameExpected);
    EXPECT_EQ(Error(u"1 2"), kErrOperatorExpected);
    EXPECT_EQ(Error(u"Length ( \"a\" \"b\" )"), kErrOperatorExpected);
    EXPECT_EQ(Error(u"Length ( )"), kErrTooFewParameters);
    EXPECT_EQ(Error(u"Left ( \"a\" )"), kErrTooFewParameters);
    EXPECT_EQ(Error(u"Left ( \"a\" ; 1 ; 2 )"), kErrTooManyParameters);
    EXPECT_EQ(Error(u"If ( 1 )"), kErrTooFewParameters);
    EXPECT_EQ(Error(u"If ( 1 ; 2 ; 3 ; 4 )"), kErrTooManyParameters);
    EXPECT_EQ(Error(u"Let ( x = 1 )"), kErrTooFewParameters);
    EXPECT_EQ(Error(u"Let ( x = 1 ; x ; x )"), kErrTooManyParameters);
    EXPECT_EQ(Error(u"Length ( [ 1 ; 2 ] )"), kErrListNotAllowed);
    EXPECT_EQ(Error(u"Get ( NoSuchThing )"), kErrBadGetParameter);
    EXPECT_EQ(Error(u"Get ( )"), kErrTooFewParameters);
    EXPECT_EQ(Error(u"someField + 1"), kErrFieldMissing);
}

TEST_F(CalcSyntaxTest, SyntaxErrorsWinOverEvaluation) {
    // Nothing is evaluated when the text does not parse: the global stays unset.
    EXPECT_EQ(Error(u"Let ( $$touched = 1 ; 1 ) + )"), kErrOperandExpected);
    EXPECT_EQ(Eval(u"IsEmpty ( $$touched )"), "1");
    // An untaken branch must still be valid.
    EXPECT_EQ(Error(u"If ( 1 ; 2 ; unknownName )"), kErrFieldMissing);
}

TEST_F(CalcSyntaxTest, DeepNestingFailsCleanly) {
    std::u16string shallow = std::u16string(50, u'(') + u"1" + std::u16string(50, u')');
    EXPECT_EQ(Eval(shallow), "1");
    std::u16string deep = std::u16string(100000, u'(') + u"1" + std::u16string(100000, u')');
    EXPECT_EQ(Error(deep), kErrCalcGeneric);
    std::u16string negations = std::u16string(100000, u'-') + u"1";
    EXPECT_EQ(Error(negations), kErrCalcGeneric);
    std::u16string nots;
    for (int i = 0; i < 20000; ++i)
        nots += u"not ";
    EXPECT_EQ(Error(nots + u"1"), kErrCalcGeneric);
    // Long flat chains are not deep.
    std::u16string sum = u"0";
    for (int i = 0; i < 20000; ++i)
        sum += u"+1";
    EXPECT_EQ(Eval(sum), "20000");
}

}  // namespace
}  // namespace fmhost
