#include "core/calc/interpreter.h"

#include "core/calc/builtins.h"
#include "core/calc/depth_guard.h"
#include "core/calc/operators.h"
#include "core/function_registry.h"
#include "core/session.h"

namespace fmhost::calc {

ErrorCode Interpreter::Eval(const Node& node, Value& out) {
    DepthGuard depth;
    if (depth.Exceeded())
        return kErrCalcGeneric;
    switch (node.kind) {
        case NodeKind::kLiteral:
            out = node.literal;
            return kNoError;
        case NodeKind::kLetName:
            if (const Value* value = FindLetVariable(node.name)) {
                out = *value;
                return kNoError;
            }
            return kErrFieldMissing;  // the parser only lets names in scope through
        case NodeKind::kLocal: {
            auto found = locals_.find(node.name);
            out = found == locals_.end() ? Value() : found->second;
            return kNoError;
        }
        case NodeKind::kGlobal:
            out = context_.GetSession().GetGlobal(node.name);
            return kNoError;
        case NodeKind::kUnary: {
            Value operand;
            if (const ErrorCode error = Eval(*node.children[0], operand))
                return error;
            out = ApplyUnary(node.op, operand);
            return kNoError;
        }
        case NodeKind::kChain:
            return EvalChain(node, out);
        case NodeKind::kBuiltin: {
            std::vector<Value> args;
            if (const ErrorCode error = EvalArguments(node, args))
                return error;
            return node.builtin->impl(context_, args, out);
        }
        case NodeKind::kPlugin:
            return EvalPlugin(node, out);
        case NodeKind::kLet:
            return EvalLet(node, out);
        case NodeKind::kIf:
            return EvalIf(node, out);
        case NodeKind::kCase:
            return EvalCase(node, out);
        case NodeKind::kGet:
            return EvalGet(node, out);
        case NodeKind::kSubstitute:
            return EvalSubstitute(node, out);
        case NodeKind::kList:
            break;
    }
    return kErrCalcGeneric;
}

// "and" and "or" stop as soon as the outcome is known.
ErrorCode Interpreter::EvalChain(const Node& node, Value& out) {
    Value result;
    if (const ErrorCode error = Eval(*node.children[0], result))
        return error;
    for (size_t i = 0; i < node.ops.size(); ++i) {
        const Operator op = node.ops[i];
        if ((op == Operator::kAnd && !result.AsBoolean()) ||
            (op == Operator::kOr && result.AsBoolean())) {
            result = FromBool(op == Operator::kOr);
            continue;
        }
        Value right;
        if (const ErrorCode error = Eval(*node.children[i + 1], right))
            return error;
        result = ApplyBinary(op, result, right);
    }
    out = std::move(result);
    return kNoError;
}

ErrorCode Interpreter::EvalArguments(const Node& node, std::vector<Value>& args) {
    args.resize(node.children.size());
    for (size_t i = 0; i < node.children.size(); ++i) {
        if (const ErrorCode error = Eval(*node.children[i], args[i]))
            return error;
    }
    return kNoError;
}

// The plug-in runs with no lock of ours held: it may evaluate again, on this thread or others.
ErrorCode Interpreter::EvalPlugin(const Node& node, Value& out) {
    std::vector<Value> args;
    if (const ErrorCode error = EvalArguments(node, args))
        return error;
    Value result;
    if (const ErrorCode error = node.plugin->call(context_, args, result))
        return error;
    out = std::move(result);
    return kNoError;
}

ErrorCode Interpreter::EvalLet(const Node& node, Value& out) {
    const size_t mark = letVariables_.size();
    ErrorCode error = kNoError;
    for (const Binding& binding : node.bindings) {
        Value value;
        if ((error = Eval(*binding.value, value)))
            break;
        switch (binding.scope) {
            case VariableScope::kLet:
                letVariables_.emplace_back(binding.name, std::move(value));
                break;
            case VariableScope::kLocal:
                locals_[binding.name] = std::move(value);
                break;
            case VariableScope::kGlobal:
                context_.GetSession().SetGlobal(binding.name, std::move(value));
                break;
        }
    }
    if (!error)
        error = Eval(*node.children[0], out);
    letVariables_.resize(mark);
    return error;
}

ErrorCode Interpreter::EvalIf(const Node& node, Value& out) {
    Value test;
    if (const ErrorCode error = Eval(*node.children[0], test))
        return error;
    if (test.AsBoolean())
        return Eval(*node.children[1], out);
    if (node.children.size() > 2)
        return Eval(*node.children[2], out);
    out = Value::FromText(u"");
    return kNoError;
}

ErrorCode Interpreter::EvalCase(const Node& node, Value& out) {
    const size_t count = node.children.size();
    for (size_t i = 0; i + 1 < count; i += 2) {
        Value test;
        if (const ErrorCode error = Eval(*node.children[i], test))
            return error;
        if (test.AsBoolean())
            return Eval(*node.children[i + 1], out);
    }
    if (count % 2 == 1)
        return Eval(*node.children[count - 1], out);
    out = Value::FromText(u"");
    return kNoError;
}

ErrorCode Interpreter::EvalGet(const Node& node, Value& out) {
    const DateTime now = DateTime::Now();
    switch (node.getParameter) {
        case GetParameter::kCurrentDate:
            out = Value::FromDate(now);
            return kNoError;
        case GetParameter::kCurrentTime: {
            DateTime time;
            time.SetNormalizedTime(now.Hour(), now.Minute(), now.Second());
            out = Value::FromTime(time);
            return kNoError;
        }
        case GetParameter::kCurrentTimestamp: {
            DateTime timestamp = now;
            timestamp.SetNormalizedTime(now.Hour(), now.Minute(), now.Second());
            out = Value::FromTimestamp(timestamp);
            return kNoError;
        }
        case GetParameter::kHost:
            break;
    }
    Value result;
    if (const ErrorCode error = context_.GetValue(node.getFunction, result))
        return error;
    out = std::move(result);
    return kNoError;
}

ErrorCode Interpreter::EvalSubstitute(const Node& node, Value& out) {
    std::vector<Value> args;
    if (const ErrorCode error = EvalArguments(node, args))
        return error;
    Text text = args[0].AsText();
    for (size_t i = 1; i + 1 < args.size(); i += 2) {
        text = SubstituteText(text, args[i].AsText(), args[i + 1].AsText());
    }
    out = Value(std::move(text));
    return kNoError;
}

const Value* Interpreter::FindLetVariable(const std::u16string& name) const {
    for (auto it = letVariables_.rbegin(); it != letVariables_.rend(); ++it) {
        if (it->first == name)
            return &it->second;
    }
    return nullptr;
}

}  // namespace fmhost::calc
