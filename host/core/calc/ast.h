// The parsed form of a calculation. Chains of operators of one precedence level are one node
// with many operands, so long sums do not make deep trees.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/eval_context.h"
#include "core/function_registry.h"
#include "core/value.h"

namespace fmhost::calc {

struct Builtin;

enum class Operator {
    kOr,
    kXor,
    kAnd,
    kNot,
    kEqual,
    kNotEqual,
    kLess,
    kLessEqual,
    kGreater,
    kGreaterEqual,
    kConcat,
    kAdd,
    kSubtract,
    kMultiply,
    kDivide,
    kPower,
    kNegate,
};

enum class NodeKind {
    kLiteral,     // literal
    kLetName,     // name (case-folded): a variable bound by an enclosing Let
    kLocal,       // name (case-folded): $name
    kGlobal,      // name: $$name
    kUnary,       // op, children[0]
    kChain,       // children[0] ops[0] children[1] ops[1] ...
    kBuiltin,     // builtin, children = arguments
    kPlugin,      // plugin, children = arguments
    kLet,         // bindings, children[0] = body
    kIf,          // children: test, result, optional else
    kCase,        // children: test, result, ..., optional default
    kGet,         // get
    kSubstitute,  // children[0] = text, then search / replacement pairs
    kList,        // "[ a ; b ]", only as an argument of Substitute
};

enum class VariableScope { kLet, kLocal, kGlobal };

// Get() parameters: those the host answers and those the engine answers from the clock.
enum class GetParameter { kHost, kCurrentDate, kCurrentTime, kCurrentTimestamp };

struct Node;
using NodePtr = std::unique_ptr<Node>;

struct Binding {
    VariableScope scope;
    std::u16string name;  // case-folded except for globals
    NodePtr value;
};

struct Node {
    explicit Node(NodeKind k) : kind(k) {}

    NodeKind kind;
    Value literal;
    std::u16string name;
    Operator op = Operator::kAdd;
    std::vector<Operator> ops;
    const Builtin* builtin = nullptr;
    std::shared_ptr<const ExternalFunction> plugin;
    std::vector<Binding> bindings;
    GetParameter getParameter = GetParameter::kHost;
    GetFunction getFunction = GetFunction::kFilePath;
    std::vector<NodePtr> children;
};

}  // namespace fmhost::calc
