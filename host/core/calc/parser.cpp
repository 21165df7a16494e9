#include "core/calc/parser.h"

#include <algorithm>
#include <optional>

#include "core/calc/builtins.h"
#include "core/calc/depth_guard.h"
#include "core/case_mapping.h"

namespace fmhost::calc {
namespace {

enum Level {
    kOrLevel,
    kAndLevel,
    kNotLevel,
    kCompareLevel,
    kConcatLevel,
    kAddLevel,
    kMultiplyLevel,
    kPowerLevel,
    kUnaryLevel
};

std::optional<Operator> SymbolOperator(int level, TokenKind kind) {
    switch (level) {
        case kCompareLevel:
            switch (kind) {
                case TokenKind::kEqual:
                    return Operator::kEqual;
                case TokenKind::kNotEqual:
                    return Operator::kNotEqual;
                case TokenKind::kLess:
                    return Operator::kLess;
                case TokenKind::kLessEqual:
                    return Operator::kLessEqual;
                case TokenKind::kGreater:
                    return Operator::kGreater;
                case TokenKind::kGreaterEqual:
                    return Operator::kGreaterEqual;
                default:
                    return std::nullopt;
            }
        case kConcatLevel:
            if (kind == TokenKind::kAmpersand)
                return Operator::kConcat;
            return std::nullopt;
        case kAddLevel:
            if (kind == TokenKind::kPlus)
                return Operator::kAdd;
            if (kind == TokenKind::kMinus)
                return Operator::kSubtract;
            return std::nullopt;
        case kMultiplyLevel:
            if (kind == TokenKind::kStar)
                return Operator::kMultiply;
            if (kind == TokenKind::kSlash)
                return Operator::kDivide;
            return std::nullopt;
        case kPowerLevel:
            if (kind == TokenKind::kCaret)
                return Operator::kPower;
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

NodePtr MakeNode(NodeKind kind) {
    return std::make_unique<Node>(kind);
}

}  // namespace

Parser::Parser(std::u16string_view source, const FunctionRegistry* registry)
    : lexer_(source), registry_(registry) {}

ErrorCode Parser::Parse(NodePtr& root) {
    Advance();
    if (const ErrorCode error = ParseLevel(kOrLevel, root))
        return error;
    if (current_.kind == TokenKind::kEnd)
        return kNoError;
    return AfterOperandError();
}

bool Parser::IsKeyword(std::u16string_view keyword) const {
    return current_.kind == TokenKind::kName && EqualsIgnoringCase(current_.text, keyword);
}

ErrorCode Parser::AfterOperandError() const {
    switch (current_.kind) {
        case TokenKind::kError:
            return current_.error;
        case TokenKind::kEnd:
        case TokenKind::kRParen:
            return kErrUnbalancedParenthesis;
        case TokenKind::kLParen:
            return kErrFunctionNotFound;
        default:
            return kErrOperatorExpected;
    }
}

ErrorCode Parser::OperandError() const {
    switch (current_.kind) {
        case TokenKind::kError:
            return current_.error;
        case TokenKind::kEnd:
            return kErrUnexpectedEnd;
        case TokenKind::kLBracket:
            return kErrListNotAllowed;
        default:
            return kErrOperandExpected;
    }
}

ErrorCode Parser::ParseExpression(NodePtr& out) {
    return ParseLevel(kOrLevel, out);
}

ErrorCode Parser::ParseLevel(int level, NodePtr& out) {
    if (level == kNotLevel)
        return ParseNot(out);
    if (level == kUnaryLevel)
        return ParseUnary(out);
    NodePtr first;
    if (const ErrorCode error = ParseLevel(level + 1, first))
        return error;
    auto operatorHere = [&]() -> std::optional<Operator> {
        if (level == kOrLevel && IsKeyword(u"or"))
            return Operator::kOr;
        if (level == kOrLevel && IsKeyword(u"xor"))
            return Operator::kXor;
        if (level == kAndLevel && IsKeyword(u"and"))
            return Operator::kAnd;
        return SymbolOperator(level, current_.kind);
    };
    std::optional<Operator> op = operatorHere();
    if (!op) {
        out = std::move(first);
        return kNoError;
    }
    NodePtr chain = MakeNode(NodeKind::kChain);
    chain->children.push_back(std::move(first));
    while (op) {
        Advance();
        NodePtr next;
        if (const ErrorCode error = ParseLevel(level + 1, next))
            return error;
        chain->ops.push_back(*op);
        chain->children.push_back(std::move(next));
        op = operatorHere();
    }
    out = std::move(chain);
    return kNoError;
}

ErrorCode Parser::ParseNot(NodePtr& out) {
    if (!IsKeyword(u"not"))
        return ParseLevel(kCompareLevel, out);
    DepthGuard depth;
    if (depth.Exceeded())
        return kErrCalcGeneric;
    Advance();
    NodePtr operand;
    if (const ErrorCode error = ParseNot(operand))
        return error;
    out = MakeNode(NodeKind::kUnary);
    out->op = Operator::kNot;
    out->children.push_back(std::move(operand));
    return kNoError;
}

ErrorCode Parser::ParseUnary(NodePtr& out) {
    DepthGuard depth;
    if (depth.Exceeded())
        return kErrCalcGeneric;
    if (IsKeyword(u"not"))
        return ParseNot(out);
    if (current_.kind != TokenKind::kMinus)
        return ParsePrimary(out);
    Advance();
    NodePtr operand;
    if (const ErrorCode error = ParseUnary(operand))
        return error;
    out = MakeNode(NodeKind::kUnary);
    out->op = Operator::kNegate;
    out->children.push_back(std::move(operand));
    return kNoError;
}

ErrorCode Parser::ParsePrimary(NodePtr& out) {
    switch (current_.kind) {
        case TokenKind::kNumber: {
            std::optional<Decimal> number = Decimal::Parse(current_.text);
            if (!number || !number->IsValid())
                return kErrOperandExpected;
            out = MakeNode(NodeKind::kLiteral);
            out->literal = Value(*number);
            Advance();
            return kNoError;
        }
        case TokenKind::kText:
            out = MakeNode(NodeKind::kLiteral);
            out->literal = Value::FromText(std::move(current_.text));
            Advance();
            return kNoError;
        case TokenKind::kLocal:
        case TokenKind::kGlobal:
            out =
                MakeNode(current_.kind == TokenKind::kLocal ? NodeKind::kLocal : NodeKind::kGlobal);
            out->name = current_.kind == TokenKind::kLocal ? ToLower(current_.text)
                                                           : std::move(current_.text);
            Advance();
            return kNoError;
        case TokenKind::kLParen: {
            Advance();
            if (const ErrorCode error = ParseLevel(kOrLevel, out))
                return error;
            if (current_.kind != TokenKind::kRParen)
                return AfterOperandError();
            Advance();
            return kNoError;
        }
        case TokenKind::kName: {
            if (IsKeyword(u"and") || IsKeyword(u"or") || IsKeyword(u"xor")) {
                return kErrOperandExpected;
            }
            const std::u16string name = std::move(current_.text);
            Advance();
            if (current_.kind == TokenKind::kLParen)
                return ParseCall(name, out);
            return ParseName(name, out);
        }
        default:
            return OperandError();
    }
}

// A bare name: a Let variable in scope or a style keyword; anything else would be a field.
ErrorCode Parser::ParseName(const std::u16string& name, NodePtr& out) {
    const std::u16string folded = ToLower(name);
    if (std::find(letNames_.begin(), letNames_.end(), folded) != letNames_.end()) {
        out = MakeNode(NodeKind::kLetName);
        out->name = folded;
        return kNoError;
    }
    if (std::optional<FaceBits> faces = FindStyleKeyword(folded)) {
        out = MakeNode(NodeKind::kLiteral);
        out->literal = Value(Decimal(*faces));
        return kNoError;
    }
    // A plug-in function may be written without parentheses, as a call with no arguments.
    if (registry_) {
        if (std::optional<ExternalFunction> plugin = registry_->Find(name)) {
            if (plugin->minArgs > 0)
                return kErrTooFewParameters;
            out = MakeNode(NodeKind::kPlugin);
            out->plugin = std::make_shared<const ExternalFunction>(std::move(*plugin));
            return kNoError;
        }
    }
    return kErrFieldMissing;
}

}  // namespace fmhost::calc
