// Parses a calculation into a tree, finding every syntax error, unknown name and wrong
// argument count before anything is evaluated.
//
// Precedence, lowest first: or xor | and | not (prefix) | = ≠ <> < > ≤ <= ≥ >= | & | + - |
// * / | ^ | unary minus. Binary operators group from the left.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/calc/ast.h"
#include "core/calc/lexer.h"
#include "core/function_registry.h"

namespace fmhost::calc {

class Parser {
  public:
    // `registry` may be null.
    Parser(std::u16string_view source, const FunctionRegistry* registry);
    ErrorCode Parse(NodePtr& root);

  private:
    // A whole expression: the lowest precedence level.
    ErrorCode ParseExpression(NodePtr& out);
    ErrorCode ParseLevel(int level, NodePtr& out);
    ErrorCode ParseNot(NodePtr& out);
    ErrorCode ParseUnary(NodePtr& out);
    ErrorCode ParsePrimary(NodePtr& out);
    ErrorCode ParseName(const std::u16string& name, NodePtr& out);
    ErrorCode ParseCall(const std::u16string& name, NodePtr& out);
    ErrorCode ParseArguments(std::vector<NodePtr>& args, bool listsAllowed);
    ErrorCode ParseList(NodePtr& out);
    ErrorCode ParseLet(NodePtr& out);
    ErrorCode ParseBinding(Binding& binding);
    ErrorCode ParseGet(NodePtr& out);
    ErrorCode ParseSubstitute(std::vector<NodePtr> args, NodePtr& out);

    void Advance() { current_ = lexer_.Next(); }
    bool IsKeyword(std::u16string_view keyword) const;
    // The error for an unexpected token where an operator, ";" or ")" could follow.
    ErrorCode AfterOperandError() const;
    // The error for an unexpected token where an operand must start.
    ErrorCode OperandError() const;

    Lexer lexer_;
    Token current_;
    const FunctionRegistry* registry_;
    std::vector<std::u16string> letNames_;  // case-folded, innermost last
};

}  // namespace fmhost::calc
