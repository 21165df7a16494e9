// Evaluates a parsed calculation.
#pragma once

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/calc/ast.h"
#include "core/eval_context.h"

namespace fmhost::calc {

// $local variables of one top-level evaluation; keys are case-folded names without "$".
using LocalVariables = std::unordered_map<std::u16string, Value>;

class Interpreter {
  public:
    Interpreter(EvalContext& context, LocalVariables& locals)
        : context_(context), locals_(locals) {}

    ErrorCode Eval(const Node& node, Value& out);

  private:
    ErrorCode EvalChain(const Node& node, Value& out);
    ErrorCode EvalArguments(const Node& node, std::vector<Value>& args);
    ErrorCode EvalPlugin(const Node& node, Value& out);
    ErrorCode EvalLet(const Node& node, Value& out);
    ErrorCode EvalIf(const Node& node, Value& out);
    ErrorCode EvalCase(const Node& node, Value& out);
    ErrorCode EvalGet(const Node& node, Value& out);
    ErrorCode EvalSubstitute(const Node& node, Value& out);
    const Value* FindLetVariable(const std::u16string& name) const;

    EvalContext& context_;
    LocalVariables& locals_;
    // Variables of the enclosing Let calls, innermost last.
    std::vector<std::pair<std::u16string, Value>> letVariables_;
};

}  // namespace fmhost::calc
