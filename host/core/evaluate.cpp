#include "core/evaluate.h"

#include "core/calc/interpreter.h"
#include "core/calc/parser.h"
#include "core/session.h"

namespace fmhost {
namespace {

constexpr int kMaxNestedEvaluations = 16;

// The evaluations running on this thread, innermost first. A nested evaluation of the same
// session shares the $local variables of the one it runs inside.
struct ActiveEvaluation {
    const Session* session;
    calc::LocalVariables* locals;
    ActiveEvaluation* outer;
    int nesting;
};

thread_local ActiveEvaluation* tInnermost = nullptr;

class ActiveScope {
  public:
    explicit ActiveScope(const Session& session) {
        frame_.session = &session;
        frame_.locals = &ownLocals_;
        frame_.outer = tInnermost;
        frame_.nesting = tInnermost ? tInnermost->nesting + 1 : 0;
        for (ActiveEvaluation* e = tInnermost; e; e = e->outer) {
            if (e->session == &session) {
                frame_.locals = e->locals;
                break;
            }
        }
        tInnermost = &frame_;
    }
    ~ActiveScope() { tInnermost = frame_.outer; }
    ActiveScope(const ActiveScope&) = delete;
    ActiveScope& operator=(const ActiveScope&) = delete;

    calc::LocalVariables& Locals() { return *frame_.locals; }
    bool TooDeep() const { return frame_.nesting >= kMaxNestedEvaluations; }

  private:
    calc::LocalVariables ownLocals_;
    ActiveEvaluation frame_{};
};

}  // namespace

ErrorCode Evaluate(std::u16string_view expression, EvalContext& context, Value& result) noexcept {
    try {
        ActiveScope scope(context.GetSession());
        if (scope.TooDeep())
            return kErrCalcGeneric;
        calc::NodePtr root;
        calc::Parser parser(expression, context.Functions());
        if (const ErrorCode error = parser.Parse(root))
            return error;
        calc::Interpreter interpreter(context, scope.Locals());
        Value value;
        if (const ErrorCode error = interpreter.Eval(*root, value))
            return error;
        result = std::move(value);
        return kNoError;
    } catch (...) {
        // Out of memory, or a plug-in function that threw: the calculation fails.
        return kErrCalcGeneric;
    }
}

}  // namespace fmhost
