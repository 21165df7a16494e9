// Throughput of the calculation engine on the calculations the plug-in and its tests send most.
// Run (optimised, no sanitizers):
//   cmake -S . -B build/bench -DCMAKE_BUILD_TYPE=Release -DVF_SANITIZE=OFF
//   cmake --build build/bench --target benchmarks && build/bench/bin/engine_bench
#include <benchmark/benchmark.h>

#include <string>

#include "core/evaluate.h"
#include "core/function_registry.h"
#include "core/session.h"

namespace {

class BenchContext : public fmhost::EvalContext {
  public:
    fmhost::Session& GetSession() override { return session; }
    const fmhost::FunctionRegistry* Functions() const override { return &registry; }
    fmhost::ErrorCode GetValue(fmhost::GetFunction, fmhost::Value&) override {
        return fmhost::kErrNoDatabase;
    }
    fmhost::Session session;
    fmhost::FunctionRegistry registry;
};

void Evaluate(benchmark::State& state, const std::u16string& expression) {
    BenchContext context;
    fmhost::Value result;
    for (auto _ : state) {
        if (fmhost::Evaluate(expression, context, result) != 0) {
            state.SkipWithError("calculation failed");
            break;
        }
        benchmark::DoNotOptimize(result);
    }
}

void LastErrorLet(benchmark::State& state) {
    Evaluate(state, u"Let ( [ $$VFile_LastError = -50 ; $$VFile_LastErrorMessage = "
                    u"\"Not enough parameters\" ] ; \"\" )");
}
BENCHMARK(LastErrorLet);

void DecimalArithmetic(benchmark::State& state) { Evaluate(state, u"1/3 + 0.1*7 - 5000000000"); }
BENCHMARK(DecimalArithmetic);

// Substitute over a long text: linear in the text, not in matches times text.
void SubstituteLongText(benchmark::State& state) {
    const std::u16string text(static_cast<size_t>(state.range(0)), u'a');
    Evaluate(state, u"Length ( Substitute ( \"" + text + u"\" ; \"a\" ; \"bb\" ) )");
    state.SetComplexityN(state.range(0));
}
BENCHMARK(SubstituteLongText)->RangeMultiplier(4)->Range(1 << 10, 1 << 18)->Complexity();

}  // namespace
