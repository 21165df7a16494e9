// The calculation environment through the plug-in interface. The test registers functions
// itself, acting as a plug-in.
#include <gmock/gmock.h>

#include <string>

#include "fmhost/host_driver.h"
#include "wrapper_test_support.h"

namespace {

using namespace wrapper_test;

void SetResultText(FmxData& result, const std::u16string& text) {
    TextPtr t = MakeText(text);
    LocalePtr locale(Checked([](FmxErr& e) { return FM_Locale_Constructor1(1, e); }));
    Checked([&](FmxErr& e) { return FM_Data_SetAsText(&result, *t, *locale, 1, e); });
}

FmxErrcode Join(int16_t id, const FmxExprEnv&, const FmxDataVect& parms, FmxData& result) {
    std::u16string joined = std::u16string(1, static_cast<char16_t>(u'0' + id)) + u":";
    const uint32_t n = Checked([&](FmxErr& e) { return FM_DataVect_Size(&parms, e); });
    for (uint32_t i = 0; i < n; ++i) {
        if (i > 0)
            joined += u"|";
        joined +=
            TextChars(*Checked([&](FmxErr& e) { return FM_DataVect_AtAsText(&parms, i, e); }));
    }
    SetResultText(result, joined);
    return 0;
}

FmxErrcode Nested(int16_t, const FmxExprEnv& env, const FmxDataVect&, FmxData& result) {
    TextPtr calc = MakeText(u"Let ( $$seen = $v ; $v + 1 )");
    return Checked([&](FmxErr& e) { return FM_ExprEnv_Evaluate(&env, *calc, result, e); });
}

FmxErrcode Failing(int16_t, const FmxExprEnv&, const FmxDataVect&, FmxData&) {
    return 1555;
}

class ExprEnvExports : public ::testing::Test {
  protected:
    void TearDown() override {
        for (const auto& [plugin, id] : registered_) {
            Checked(
                [&](FmxErr& e) { return FM_ExprEnv_UnRegisterExternalFunction(*plugin, id, e); });
        }
    }

    FmxErrcode Register(const char (&plugin)[5], int16_t id, const std::u16string& name,
                        int16_t minArgs, int16_t maxArgs, FmxExtPluginFn fn) {
        QuadCharPtr code = Code(plugin);
        TextPtr n = MakeText(name);
        TextPtr prototype = MakeText(name + u"( x )");
        const FmxErrcode error = Checked([&](FmxErr& e) {
            return FM_ExprEnv_RegisterExternalFunction(*code, id, *n, *prototype, minArgs, maxArgs,
                                                       0, fn, e);
        });
        if (error == 0)
            registered_.emplace_back(std::move(code), id);
        return error;
    }

    std::string Eval(const std::u16string& calculation) {
        const fmhost::driver::Evaluation result = host_.Evaluate(calculation);
        return result.error != 0 ? "error " + std::to_string(result.error) : result.text;
    }

    fmhost::driver::Host host_;
    std::vector<std::pair<QuadCharPtr, int16_t>> registered_;
};

TEST_F(ExprEnvExports, RegisteredFunctionsAreCalledByNameWithinTheirBounds) {
    ASSERT_EQ(Register("TsT1", 7, u"T_Join", 1, 3, Join), 0);
    EXPECT_EQ(Eval(u"T_Join ( \"a\" ; 2 )"), "7:a|2");
    EXPECT_EQ(Eval(u"T_Join ( )"), "error 1201");
    EXPECT_EQ(Eval(u"T_Join ( 1 ; 2 ; 3 ; 4 )"), "error 1202");
    Checked([&](FmxErr& e) {
        return FM_ExprEnv_UnRegisterExternalFunction(*registered_[0].first, 7, e);
    });
    EXPECT_EQ(Eval(u"T_Join ( 1 )"), "error 1208");
}

TEST_F(ExprEnvExports, EachPluginHasItsOwnIdsButNamesAreShared) {
    ASSERT_EQ(Register("TsT1", 1, u"T_One", 0, -1, Join), 0);
    EXPECT_EQ(Register("TsT1", 1, u"T_Other", 0, -1, Join), 1210) << "id taken in this plug-in";
    EXPECT_EQ(Register("TsT2", 2, u"t_one", 0, -1, Join), 1210) << "name taken, any case";
    ASSERT_EQ(Register("TsT2", 1, u"T_Two", 0, -1, Join), 0) << "same id, other plug-in";
    EXPECT_EQ(Eval(u"T_One ( \"x\" ) & T_Two ( \"y\" )"), "1:x1:y");
}

TEST_F(ExprEnvExports, MalformedRegistrationsAreRefused) {
    EXPECT_NE(Register("TsT1", 3, u"T_NoCallback", 0, -1, nullptr), 0);
    EXPECT_NE(Register("TsT1", 3, u"", 0, -1, Join), 0);
    EXPECT_NE(Register("TsT1", 3, u"T_Bounds", 2, 1, Join), 0);
    EXPECT_NE(Register("TsT1", 3, u"T_Negative", -1, -1, Join), 0);
    EXPECT_EQ(Eval(u"T_Bounds ( 1 )"), "error 1208");
}

TEST_F(ExprEnvExports, CallbacksEvaluateInTheCallingCalculation) {
    ASSERT_EQ(Register("TsT1", 4, u"T_Nested", 0, 0, Nested), 0);
    EXPECT_EQ(Eval(u"Let ( $v = 41 ; T_Nested ( ) )"), "42");
    EXPECT_EQ(Eval(u"$$seen"), "41");
    EXPECT_EQ(Eval(u"T_Nested ( )"), "1") << "a new calculation has no $v";
}

TEST_F(ExprEnvExports, APluginErrorIsTheCalculationsError) {
    ASSERT_EQ(Register("TsT1", 5, u"T_Fail", 0, -1, Failing), 0);
    EXPECT_EQ(Eval(u"T_Fail ( )"), "error 1555");
    EXPECT_EQ(Eval(u"If ( 0 ; T_Fail ( ) ; \"skipped\" )"), "skipped");
}

TEST_F(ExprEnvExports, AnUnfilledEnvironmentEvaluatesInTheHostsContext) {
    ExprEnvPtr env(Checked([](FmxErr& e) { return FM_ExprEnv_Constructor1(e); }));
    DataPtr result = NewData();
    // The platform number goes with the path syntax: -2 with Windows paths, 8 with Linux ones.
    TextPtr calc = MakeText(
        u"Let ( $$fromPlugin = 5 ; Get ( SystemPlatform ) & \" \" & "
        u"Left ( Get ( FilePath ) ; Position ( Get ( FilePath ) ; \":\" ; 1 ; 1 ) ) )");
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_ExprEnv_Evaluate(env.get(), *calc, *result, e); }),
              0);
    EXPECT_THAT(DataText(*result), ::testing::AnyOf(u"-2 file:", u"8 filelinux:"));
    EXPECT_EQ(Eval(u"$$fromPlugin"), "5");

    auto get = [&](int16_t id) {
        return Checked(
            [&](FmxErr& e) { return FM_ExprEnv_EvaluateGetFunction(env.get(), id, *result, e); });
    };
    EXPECT_EQ(get(1001), 0);
    EXPECT_EQ(DataText(*result), u"Pro 22.0v1");
    EXPECT_EQ(get(1009), 1215) << "a Get() this host does not know";
    host_.SetFile(kFmhostFileNone);
    EXPECT_EQ(get(1040), 100);
    EXPECT_EQ(Checked([&](FmxErr& e) { return FM_ExprEnv_FileID(env.get(), e); }), 0u);
    EXPECT_NE(Checked([&](FmxErr& e) { return FM_ExprEnv_SessionID(env.get(), e); }), 0u);
}

TEST_F(ExprEnvExports, PathsConvertBetweenNativeAndHostSyntax) {
    ExprEnvPtr env(Checked([](FmxErr& e) { return FM_ExprEnv_Constructor1(e); }));
    auto to = [&](const std::u16string& path, int32_t format) -> std::u16string {
        TextPtr in = MakeText(path);
        TextPtr out = MakeText(u"");
        const FmxErrcode error = Checked([&](FmxErr& e) {
            return FM_ExprEnv_EvaluateConvertToFileMakerPath(env.get(), *in, format, *out, e);
        });
        return error != 0 ? u"error" : TextChars(*out);
    };
    auto from = [&](const std::u16string& path, int32_t format) -> std::u16string {
        TextPtr in = MakeText(path);
        TextPtr out = MakeText(u"");
        const FmxErrcode error = Checked([&](FmxErr& e) {
            return FM_ExprEnv_EvaluateConvertFromFileMakerPath(env.get(), *in, format, *out, e);
        });
        return error != 0 ? u"error" : TextChars(*out);
    };
    EXPECT_EQ(to(u"C:\\Data\\a b.txt", 2), u"file:/C:/Data/a b.txt");
    EXPECT_EQ(to(u"\\\\server\\share\\x.txt", 2), u"file://server/share/x.txt");
    EXPECT_EQ(to(u"file:///C:/a%20b/%C3%A9.txt", 3), u"file:/C:/a b/é.txt");
    EXPECT_EQ(to(u"C:\\x", 9), u"error");
    EXPECT_EQ(from(u"file:/C:/Data/a.txt", 2), u"C:\\Data\\a.txt");
    EXPECT_EQ(from(u"filewin:/D:/x/", 2), u"D:\\x\\");
    EXPECT_EQ(from(u"file://server/share/x", 2), u"\\\\server\\share\\x");
    EXPECT_EQ(from(u"file:/C:/a b.txt", 3), u"file:///C:/a%20b.txt");
    EXPECT_EQ(from(u"fmnet:/host/db.fmp12", 2), u"error");
}

TEST_F(ExprEnvExports, FontIdsAreStablePerSessionAndNamesComeBack) {
    ExprEnvPtr env(Checked([](FmxErr& e) { return FM_ExprEnv_Constructor1(e); }));
    DataPtr data = NewData();
    TextPtr name = MakeText(u"Helvetica-Bold");
    auto id = [&] {
        return Checked(
            [&](FmxErr& e) { return FM_Data_GetPostscriptFontID(data.get(), *name, *env, e); });
    };
    const uint16_t first = id();
    EXPECT_NE(first, 0xFFFF);
    EXPECT_EQ(id(), first);
    TextPtr back = MakeText(u"");
    EXPECT_TRUE(Checked([&](FmxErr& e) {
        return FM_Data_GetPostscriptFontInfo(data.get(), first, *back, *env, e);
    }));
    EXPECT_EQ(TextChars(*back), u"Helvetica-Bold");
    EXPECT_FALSE(Checked([&](FmxErr& e) {
        return FM_Data_GetPostscriptFontInfo(data.get(), 0xFFFE, *back, *env, e);
    }));
}

TEST_F(ExprEnvExports, TheDatabaseHasNoTablesForSql) {
    ExprEnvPtr env(Checked([](FmxErr& e) { return FM_ExprEnv_Constructor1(e); }));
    TextPtr query = MakeText(u"SELECT 1");
    TextPtr file = MakeText(u"");
    DataVectPtr parameters(Checked([](FmxErr& e) { return FM_DataVect_Constructor1(e); }));
    DataPtr result = NewData();
    EXPECT_EQ(Checked([&](FmxErr& e) {
                  return FM_ExprEnv_ExecuteFileSQLTextResult(env.get(), *query, *file, *parameters,
                                                             *result, ',', '\r', e);
              }),
              100);
}

}  // namespace
