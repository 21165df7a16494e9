// Variables, sessions, Get(), plug-in functions, nested and concurrent evaluation.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "calc_test_support.h"

namespace fmhost {
namespace {

using calc_test::EvalError;
using calc_test::EvalToText;
using calc_test::TestContext;

ExternalFunction Function(const std::u16string& name, int16_t minArgs, int16_t maxArgs,
                          ExternalFunction::Callable call, int16_t id = 1) {
    ExternalFunction f;
    f.pluginId = 0x51727646;  // 'QrvF'
    f.functionId = id;
    f.name = name;
    f.minArgs = minArgs;
    f.maxArgs = maxArgs;
    f.call = std::move(call);
    return f;
}

TEST(CalcVariablesTest, LetNamesAreVisibleOnlyInsideTheirLet) {
    TestContext context;
    EXPECT_EQ(EvalToText(context, u"Let ( [ x = 1 ; y = x + 1 ] ; x & y )"), "12");
    EXPECT_EQ(EvalToText(context, u"Let ( [ x = 1 ; x = x + 1 ] ; x )"), "2");
    EXPECT_EQ(EvalToText(context, u"Let ( x = 1 ; Let ( x = 2 ; x ) & x )"), "21");
    EXPECT_EQ(EvalError(context, u"Let ( x = 1 ; x ) + x"), kErrFieldMissing);
    EXPECT_EQ(EvalError(context, u"Let ( x = y ; 1 )"), kErrFieldMissing);
    // A Let name shadows a style keyword.
    EXPECT_EQ(EvalToText(context, u"Let ( bold = 7 ; bold )"), "7");
}

TEST(CalcVariablesTest, LocalsLastForOneTopLevelEvaluation) {
    TestContext context;
    EXPECT_EQ(EvalToText(context, u"Let ( $x = 5 ; $x ) + $x"), "10");
    EXPECT_EQ(EvalToText(context, u"IsEmpty ( $x )"), "1");
    EXPECT_EQ(EvalToText(context, u"Let ( $Case = 1 ; $CASE )"), "1");  // names ignore case
}

TEST(CalcVariablesTest, GlobalsLastForTheSession) {
    TestContext context;
    EXPECT_EQ(EvalToText(context, u"Let ( $$count = 1 ; \"\" )"), "");
    EXPECT_EQ(EvalToText(context, u"Let ( $$COUNT = $$count + 1 ; $$Count )"), "2");
    EXPECT_EQ(context.GetSession().GetGlobal(u"count").AsText().Chars(), u"2");

    TestContext other;  // another session
    EXPECT_EQ(EvalToText(other, u"IsEmpty ( $$count )"), "1");
    EXPECT_NE(context.GetSession().Id(), other.GetSession().Id());
}

TEST(CalcVariablesTest, TheLastErrorExpressionOfThePlugIn) {
    TestContext context;
    EXPECT_EQ(EvalToText(context,
                         u"Let ( [ $$VFile_LastError = -50 ; $$VFile_LastErrorMessage = "
                         u"\"Not enough parameters\" ] ; \"\" )"),
              "");
    EXPECT_EQ(EvalToText(context,
                         u"If( IsEmpty( $$VFile_LastError ); \"No Error Message\"; "
                         u"$$VFile_LastError )"),
              "-50");
    EXPECT_EQ(EvalToText(context,
                         u"If( IsEmpty( $$VFile_LastErrorMessage ); \"No Error Message\"; "
                         u"$$VFile_LastErrorMessage )"),
              "Not enough parameters");
    EXPECT_EQ(EvalToText(context, u"If( IsEmpty( $$Unset ); \"No Error Message\"; $$Unset )"),
              "No Error Message");
    // A message with a quote breaks the expression and sets nothing.
    EXPECT_NE(EvalError(context,
                        u"Let ( [ $$VFile_LastError = 7 ; $$VFile_LastErrorMessage = "
                        u"\"say \"x\"\" ] ; \"\" )"),
              kNoError);
    EXPECT_EQ(EvalToText(context, u"$$VFile_LastError"), "-50");
}

TEST(CalcVariablesTest, GetAsksTheHost) {
    TestContext context;
    context.getValues[GetFunction::kFilePath] = u"file:/C:/db/Test.fmp12";
    EXPECT_EQ(EvalToText(context, u"Get ( FilePath )"), "file:/C:/db/Test.fmp12");
    EXPECT_EQ(EvalToText(context, u"Get(filePath) & \"!\""), "file:/C:/db/Test.fmp12!");
    EXPECT_EQ(EvalError(context, u"Get ( DocumentsPath )"), kErrNoDatabase);
    EXPECT_EQ(EvalError(context, u"Length ( Get ( TemporaryPath ) )"), kErrNoDatabase);
    EXPECT_EQ(EvalToText(context,
                         u"Get ( CurrentDate ) = GetAsDate ( Get ( CurrentTimestamp ) ) or "
                         u"Get ( CurrentTime ) < Time ( 0 ; 0 ; 2 )"),  // around midnight
              "1");
}

TEST(CalcVariablesTest, PluginFunctionsGetEvaluatedArgumentsAndCounts) {
    TestContext context;
    std::vector<Value> seen;
    ASSERT_EQ(context.registry.Register(
                  Function(u"VFile_Echo", 1, 2,
                           [&](EvalContext&, const std::vector<Value>& args, Value& result) {
                               seen = args;
                               result = args[0];
                               return kNoError;
                           })),
              kNoError);
    EXPECT_EQ(EvalToText(context, u"vfile_echo ( 1 + 1 ; \"x\" & \"y\" )"), "2");
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[0].Type(), NativeType::kNumber);
    EXPECT_EQ(seen[1].AsText().Chars(), u"xy");
    EXPECT_EQ(EvalError(context, u"VFile_Echo ( )"), kErrTooFewParameters);
    EXPECT_EQ(EvalError(context, u"VFile_Echo ( 1 ; 2 ; 3 )"), kErrTooManyParameters);

    // Styled text reaches the plug-in with its styles.
    EvalToText(context, u"VFile_Echo ( TextColor ( \"red\" ; RGB ( 255 ; 0 ; 0 ) ) )");
    EXPECT_TRUE(seen[0].StoredText().StyleAt(0).IsColorEnabled());

    EXPECT_EQ(context.registry.Register(Function(u"VFILE_ECHO", 0, -1, nullptr, 2)),
              kErrAlreadyRegistered);
    EXPECT_TRUE(context.registry.Unregister(0x51727646, 1));
    EXPECT_FALSE(context.registry.Unregister(0x51727646, 1));
    EXPECT_EQ(EvalError(context, u"VFile_Echo ( 1 )"), kErrFunctionNotFound);
}

TEST(CalcVariablesTest, APluginFunctionWithoutParenthesesIsACallWithNoArguments) {
    TestContext context;
    size_t calls = 0;
    auto count = [&](EvalContext&, const std::vector<Value>& args, Value& result) {
        ++calls;
        result = Value(Decimal(static_cast<int64_t>(args.size())));
        return kNoError;
    };
    ASSERT_EQ(context.registry.Register(Function(u"VFile_Version", 0, -1, count, 1)), kNoError);
    ASSERT_EQ(context.registry.Register(Function(u"VFile_Run", 1, 2, count, 19)), kNoError);
    EXPECT_EQ(EvalToText(context, u"vfile_version & \"/\" & VFile_Version ( )"), "0/0");
    EXPECT_EQ(calls, 2u);
    EXPECT_EQ(EvalError(context, u"VFile_Run"), kErrTooFewParameters);
    EXPECT_EQ(calls, 2u);
    // A Let name of the same spelling still wins.
    EXPECT_EQ(EvalToText(context, u"Let ( vfile_version = 7 ; vfile_version )"), "7");
}

TEST(CalcVariablesTest, PluginErrorsAndExceptionsFailTheCalculation) {
    TestContext context;
    context.registry.Register(Function(
        u"Fails", 0, 0,
        [](EvalContext&, const std::vector<Value>&, Value&) -> ErrorCode { return 1552; }, 1));
    context.registry.Register(Function(
        u"Throws", 0, 0,
        [](EvalContext&, const std::vector<Value>&, Value&) -> ErrorCode {
            throw std::runtime_error("boom");
        },
        2));
    EXPECT_EQ(EvalError(context, u"Fails ( ) & \"x\""), 1552);
    EXPECT_EQ(EvalError(context, u"Throws ( )"), kErrCalcGeneric);
    EXPECT_EQ(EvalToText(context, u"1"), "1");  // the engine is still usable
}

TEST(CalcVariablesTest, NestedEvaluationSharesTheSessionAndLocals) {
    TestContext context;
    context.registry.Register(Function(
        u"Eval", 1, 1, [](EvalContext& ctx, const std::vector<Value>& args, Value& result) {
            return Evaluate(args[0].AsText().Chars(), ctx, result);
        }));
    EXPECT_EQ(EvalToText(context, u"Let ( $outer = 3 ; Eval ( \"$outer * 2\" ) )"), "6");
    EXPECT_EQ(EvalToText(context, u"Eval ( \"Let ( $$fromInside = 9 ; 0 )\" ) + $$fromInside"),
              "9");
    EXPECT_EQ(EvalToText(context, u"Eval ( \"Let ( $set = 4 ; 0 )\" ) + $set"), "4");
    // Let names are not variables: the nested calculation cannot see them.
    EXPECT_EQ(EvalError(context, u"Let ( hidden = 1 ; Eval ( \"hidden\" ) )"), kErrFieldMissing);
    EXPECT_EQ(EvalError(context, u"Eval ( \"1 +\" )"), kErrUnexpectedEnd);

    // Endless recursion through the plug-in ends with an error, not a crash.
    EXPECT_EQ(EvalError(context, u"Let ( $$loop = \"Eval ( $$loop )\" ; Eval ( $$loop ) )"),
              kErrCalcGeneric);
}

TEST(CalcVariablesTest, EightThreadsEvaluateInOneSession) {
    TestContext context;
    context.registry.Register(Function(
        u"Eval", 1, 1, [](EvalContext& ctx, const std::vector<Value>& args, Value& result) {
            return Evaluate(args[0].AsText().Chars(), ctx, result);
        }));
    constexpr int kThreads = 8;
    constexpr int kRounds = 200;
    std::atomic<int> failures{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            const std::u16string own = u"$$thread" + Text::FromUtf8(std::to_string(t)).Chars();
            for (int i = 0; i < kRounds; ++i) {
                // Each thread counts its own global and its locals stay its own.
                const std::string expected = std::to_string(i + 1);
                const std::string got = EvalToText(
                    context, u"Let ( [ $mine = " + Text::FromUtf8(std::to_string(t)).Chars() +
                                 u" ; " + own + u" = " + own +
                                 u" + 1 ] ; "
                                 u"Eval ( \"$mine\" ) & \"/\" & " +
                                 own + u" )");
                if (got != std::to_string(t) + "/" + expected)
                    ++failures;
                EvalToText(context, u"Let ( $$shared = $$shared & \"x\" ; 0 )");
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(failures.load(), 0);
    for (int t = 0; t < kThreads; ++t) {
        EXPECT_EQ(EvalToText(context, u"$$thread" + Text::FromUtf8(std::to_string(t)).Chars()),
                  std::to_string(kRounds));
    }
    // Read-modify-write of one global by several threads may lose updates (the host gives no
    // atomicity either), but the value stays a well-formed run of x.
    const std::string shared = EvalToText(context, u"$$shared");
    EXPECT_GT(shared.size(), 0u);
    EXPECT_LE(shared.size(), size_t(kThreads * kRounds));
    EXPECT_EQ(shared.find_first_not_of('x'), std::string::npos);
}

}  // namespace
}  // namespace fmhost
