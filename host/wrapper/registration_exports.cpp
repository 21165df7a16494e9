// Registration of plug-in functions and script steps. These take no environment: the host
// keeps one table, per plug-in id.
#include "guard.h"
#include "host_runtime.h"
#include "objects.h"

using fmwrapper::FunctionRecord;
using fmwrapper::Guard;
using fmwrapper::Ref;

namespace {

fmwrapper::Registrations& Table() {
    return fmwrapper::HostRuntime::Instance().Functions();
}

FunctionRecord Describe(const FmxQuadChar& pluginId, int16_t id, const FmxText& name,
                        const FmxText& prototype, uint32_t flags, FmxExtPluginFn callback) {
    FunctionRecord record;
    record.pluginId = Ref(pluginId).code.AsMacType();
    record.functionId = id;
    record.name = Ref(name).text.Chars();
    record.prototype = Ref(prototype).text.Chars();
    record.flags = flags;
    record.callback = callback;
    return record;
}

}  // namespace

extern "C" {

FmxErrcode FM_ExprEnv_RegisterExternalFunction(const FmxQuadChar& pluginId, int16_t functionId,
                                               const FmxText& functionName,
                                               const FmxText& functionPrototype, int16_t minArgs,
                                               int16_t maxArgs, uint32_t compatibleOnFlags,
                                               FmxExtPluginFn funcPtr, FmxErr& err) {
    return Guard(err, [&] {
        FunctionRecord record = Describe(pluginId, functionId, functionName, functionPrototype,
                                         compatibleOnFlags, funcPtr);
        record.minArgs = minArgs;
        record.maxArgs = maxArgs;
        return Table().RegisterFunction(std::move(record));
    });
}

FmxErrcode FM_ExprEnv_RegisterExternalFunctionEx(
    const FmxQuadChar& pluginId, int16_t functionId, const FmxText& functionName,
    const FmxText& functionPrototype, const FmxText& functionDescription, int16_t minArgs,
    int16_t maxArgs, uint32_t compatibleOnFlags, FmxExtPluginFn funcPtr, FmxErr& err) {
    return Guard(err, [&] {
        FunctionRecord record = Describe(pluginId, functionId, functionName, functionPrototype,
                                         compatibleOnFlags, funcPtr);
        record.description = Ref(functionDescription).text.Chars();
        record.minArgs = minArgs;
        record.maxArgs = maxArgs;
        return Table().RegisterFunction(std::move(record));
    });
}

FmxErrcode FM_ExprEnv_UnRegisterExternalFunction(const FmxQuadChar& pluginId, int16_t functionId,
                                                 FmxErr& err) {
    return Guard(err, [&] {
        return Table().UnregisterFunction(Ref(pluginId).code.AsMacType(), functionId);
    });
}

FmxErrcode FM_ExprEnv_RegisterScriptStep(const FmxQuadChar& pluginId, int16_t scriptStepId,
                                         const FmxText& scriptStepName,
                                         const FmxText& scriptStepDefinition,
                                         const FmxText& scriptStepDescription,
                                         uint32_t compatibleOnFlags, FmxExtPluginFn funcPtr,
                                         FmxErr& err) {
    return Guard(err, [&] {
        FunctionRecord record = Describe(pluginId, scriptStepId, scriptStepName,
                                         scriptStepDefinition, compatibleOnFlags, funcPtr);
        record.description = Ref(scriptStepDescription).text.Chars();
        return Table().RegisterScriptStep(std::move(record));
    });
}

FmxErrcode FM_ExprEnv_UnRegisterScriptStep(const FmxQuadChar& pluginId, int16_t scriptStepId,
                                           FmxErr& err) {
    return Guard(err, [&] {
        return Table().UnregisterScriptStep(Ref(pluginId).code.AsMacType(), scriptStepId);
    });
}

}  // extern "C"
