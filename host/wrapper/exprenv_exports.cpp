// Calculation environments: evaluation, Get() values, path conversion, ids, SQL.
#include "core/evaluate.h"
#include "core/session.h"
#include "environment.h"
#include "guard.h"
#include "host_runtime.h"
#include "path_syntax.h"

using fmwrapper::Guard;
using fmwrapper::Ref;

namespace {

fmhost::EvalContext& ContextOf(const void* self) {
    return fmwrapper::ContextOf(Ref<FmxExprEnv>(self));
}

fmhost::ErrorCode EvaluateInto(fmhost::EvalContext& context, std::u16string_view expression,
                               FmxData& result) {
    fmhost::Value value;
    const fmhost::ErrorCode error = fmhost::Evaluate(expression, context, value);
    if (error == 0)
        result.value = std::move(value);
    return error;
}

// A path the conversion cannot handle: the calculation engine's generic error.
FmxErrcode Converted(const std::optional<std::u16string>& path, FmxText& out) {
    if (!path)
        return fmhost::kErrCalcGeneric;
    out.text.Assign(*path);
    return 0;
}

}  // namespace

extern "C" {

FmxExprEnv* FM_ExprEnv_Constructor1(FmxErr& err) {
    return Guard(err, [] { return new FmxExprEnv(); });
}

void FM_ExprEnv_Delete(void* self, FmxErr& err) {
    Guard(err, [&] { delete static_cast<FmxExprEnv*>(self); });
}

FmxErrcode FM_ExprEnv_Evaluate(const void* self, const FmxText& expression, FmxData& result,
                               FmxErr& err) {
    return Guard(err, [&] {
        return EvaluateInto(ContextOf(self), Ref(expression).text.Chars(), Ref(result));
    });
}

// Only the Get() values the host knows; any other id is a bad Get parameter.
FmxErrcode FM_ExprEnv_EvaluateGetFunction(const void* self, int16_t functionValue, FmxData& result,
                                          FmxErr& err) {
    return Guard(err, [&]() -> FmxErrcode {
        fmhost::EvalContext& context = ContextOf(self);
        FmxData& out = Ref(result);
        switch (functionValue) {
            case 1002:
                return EvaluateInto(context, u"Get ( CurrentDate )", out);
            case 1029:
                return EvaluateInto(context, u"Get ( CurrentTime )", out);
            case 1063:
                return EvaluateInto(context, u"Get ( CurrentTimeStamp )", out);
            default:
                break;
        }
        fmhost::Value value;
        const auto function = static_cast<fmhost::GetFunction>(functionValue);
        const fmhost::ErrorCode error = context.GetValue(function, value);
        if (error == 0)
            out.value = std::move(value);
        return error;
    });
}

FmxErrcode FM_ExprEnv_EvaluateConvertToFileMakerPath(const void* self, const FmxText& inPath,
                                                     int32_t inFormat, FmxText& outFMPath,
                                                     FmxErr& err) {
    return Guard(err, [&] {
        ContextOf(self);
        return Converted(fmwrapper::ToHostPath(Ref(inPath).text.Chars(), inFormat), Ref(outFMPath));
    });
}

FmxErrcode FM_ExprEnv_EvaluateConvertFromFileMakerPath(const void* self, const FmxText& inFMPath,
                                                       int32_t inFormat, FmxText& outPath,
                                                       FmxErr& err) {
    return Guard(err, [&] {
        ContextOf(self);
        return Converted(fmwrapper::FromHostPath(Ref(inFMPath).text.Chars(), inFormat),
                         Ref(outPath));
    });
}

// The emulated database has no tables: every query fails as one on a missing file would.
FmxErrcode FM_ExprEnv_ExecuteFileSQL(const void* self, const FmxText& expression,
                                     const FmxText& filename, const FmxDataVect& parameters,
                                     FmxRowVect& result, FmxErr& err) {
    return Guard(err, [&]() -> FmxErrcode {
        ContextOf(self);
        Ref(expression);
        Ref(filename);
        Ref(parameters);
        Ref(result).rows.clear();
        return fmhost::kErrNoDatabase;
    });
}

FmxErrcode FM_ExprEnv_ExecuteFileSQLTextResult(const void* self, const FmxText& expression,
                                               const FmxText& filename,
                                               const FmxDataVect& parameters, FmxData& result,
                                               uint16_t, uint16_t, FmxErr& err) {
    return Guard(err, [&]() -> FmxErrcode {
        ContextOf(self);
        Ref(expression);
        Ref(filename);
        Ref(parameters);
        Ref(result);
        return fmhost::kErrNoDatabase;
    });
}

uint64_t FM_ExprEnv_SessionID(const void* self, FmxErr& err) {
    return Guard(err, [&] { return ContextOf(self).GetSession().Id(); });
}

uint64_t FM_ExprEnv_FileID(const void* self, FmxErr& err) {
    return Guard(err, [&] {
        ContextOf(self);
        return fmwrapper::HostRuntime::Instance().FileId();
    });
}

}  // extern "C"
