// Function calls, including the forms with their own syntax: Let, Get and Substitute.
#include <algorithm>
#include <optional>

#include "core/calc/builtins.h"
#include "core/calc/parser.h"
#include "core/case_mapping.h"

namespace fmhost::calc {
namespace {

std::optional<GetFunction> HostGetFunction(std::u16string_view folded) {
    static const std::pair<std::u16string_view, GetFunction> kNames[] = {
        {u"filepath", GetFunction::kFilePath},
        {u"filemakerpath", GetFunction::kFileMakerPath},
        {u"documentspath", GetFunction::kDocumentsPath},
        {u"temporarypath", GetFunction::kTemporaryPath},
        {u"desktoppath", GetFunction::kDesktopPath},
        {u"systemplatform", GetFunction::kSystemPlatform},
        {u"applicationversion", GetFunction::kApplicationVersion},
    };
    for (const auto& [name, function] : kNames) {
        if (name == folded)
            return function;
    }
    return std::nullopt;
}

NodePtr MakeNode(NodeKind kind) {
    return std::make_unique<Node>(kind);
}

ErrorCode CheckCount(size_t count, int minArgs, int maxArgs) {
    if (static_cast<int>(count) < minArgs)
        return kErrTooFewParameters;
    if (maxArgs >= 0 && static_cast<int>(count) > maxArgs)
        return kErrTooManyParameters;
    return kNoError;
}

}  // namespace

ErrorCode Parser::ParseCall(const std::u16string& name, NodePtr& out) {
    const std::u16string folded = ToLower(name);
    if (folded == u"let")
        return ParseLet(out);
    if (folded == u"get")
        return ParseGet(out);
    const bool special = folded == u"if" || folded == u"case" || folded == u"substitute";
    const Builtin* builtin = special ? nullptr : FindBuiltin(folded);
    std::optional<ExternalFunction> plugin;
    if (!special && !builtin && registry_)
        plugin = registry_->Find(name);
    if (!special && !builtin && !plugin)
        return kErrFunctionNotFound;

    std::vector<NodePtr> args;
    if (const ErrorCode error = ParseArguments(args, folded == u"substitute"))
        return error;
    if (folded == u"substitute")
        return ParseSubstitute(std::move(args), out);
    ErrorCode error = kNoError;
    if (folded == u"if" || folded == u"case") {
        error = CheckCount(args.size(), 2, folded == u"if" ? 3 : -1);
        out = MakeNode(folded == u"if" ? NodeKind::kIf : NodeKind::kCase);
    } else if (builtin) {
        error = CheckCount(args.size(), builtin->minArgs, builtin->maxArgs);
        out = MakeNode(NodeKind::kBuiltin);
        out->builtin = builtin;
    } else {
        error = CheckCount(args.size(), plugin->minArgs, plugin->maxArgs);
        out = MakeNode(NodeKind::kPlugin);
        out->plugin = std::make_shared<const ExternalFunction>(std::move(*plugin));
    }
    out->children = std::move(args);
    return error;
}

// On entry the current token is "("; on success the closing ")" has been consumed.
ErrorCode Parser::ParseArguments(std::vector<NodePtr>& args, bool listsAllowed) {
    Advance();
    if (current_.kind == TokenKind::kRParen) {
        Advance();
        return kNoError;
    }
    for (;;) {
        NodePtr arg;
        const ErrorCode error = listsAllowed && current_.kind == TokenKind::kLBracket
                                    ? ParseList(arg)
                                    : ParseExpression(arg);
        if (error)
            return error;
        args.push_back(std::move(arg));
        if (current_.kind == TokenKind::kRParen) {
            Advance();
            return kNoError;
        }
        if (current_.kind != TokenKind::kSemicolon)
            return AfterOperandError();
        Advance();
    }
}

ErrorCode Parser::ParseList(NodePtr& out) {
    out = MakeNode(NodeKind::kList);
    do {
        Advance();
        NodePtr element;
        if (const ErrorCode error = ParseExpression(element))
            return error;
        out->children.push_back(std::move(element));
    } while (current_.kind == TokenKind::kSemicolon);
    if (current_.kind != TokenKind::kRBracket)
        return AfterOperandError();
    Advance();
    return kNoError;
}

// Substitute ( text ; search ; replacement ) or Substitute ( text ; [ s ; r ] ; ... ).
ErrorCode Parser::ParseSubstitute(std::vector<NodePtr> args, NodePtr& out) {
    out = MakeNode(NodeKind::kSubstitute);
    if (args.size() < 2)
        return kErrTooFewParameters;
    if (args[0]->kind == NodeKind::kList)
        return kErrListNotAllowed;
    const bool anyList = std::any_of(args.begin() + 1, args.end(), [](const NodePtr& arg) {
        return arg->kind == NodeKind::kList;
    });
    if (!anyList) {
        if (const ErrorCode error = CheckCount(args.size(), 3, 3))
            return error;
        out->children = std::move(args);
        return kNoError;
    }
    out->children.push_back(std::move(args[0]));
    for (size_t i = 1; i < args.size(); ++i) {
        if (args[i]->kind != NodeKind::kList)
            return kErrListNotAllowed;
        if (const ErrorCode error = CheckCount(args[i]->children.size(), 2, 2))
            return error;
        for (NodePtr& part : args[i]->children)
            out->children.push_back(std::move(part));
    }
    return kNoError;
}

// Let ( name = value ; body ) or Let ( [ name = value ; ... ] ; body ); the current token is
// "(". Plain names are visible in later bindings and in the body only.
ErrorCode Parser::ParseLet(NodePtr& out) {
    out = MakeNode(NodeKind::kLet);
    const size_t scopeMark = letNames_.size();
    Advance();
    const bool bracketed = current_.kind == TokenKind::kLBracket;
    if (bracketed)
        Advance();
    for (;;) {
        Binding binding;
        if (const ErrorCode error = ParseBinding(binding))
            return error;
        if (binding.scope == VariableScope::kLet)
            letNames_.push_back(binding.name);
        out->bindings.push_back(std::move(binding));
        if (!bracketed || current_.kind != TokenKind::kSemicolon)
            break;
        Advance();
    }
    if (bracketed) {
        if (current_.kind != TokenKind::kRBracket)
            return AfterOperandError();
        Advance();
    }
    if (current_.kind == TokenKind::kRParen)
        return kErrTooFewParameters;
    if (current_.kind != TokenKind::kSemicolon)
        return AfterOperandError();
    Advance();
    NodePtr body;
    const ErrorCode error = ParseExpression(body);
    letNames_.resize(scopeMark);
    if (error)
        return error;
    out->children.push_back(std::move(body));
    if (current_.kind == TokenKind::kSemicolon)
        return kErrTooManyParameters;
    if (current_.kind != TokenKind::kRParen)
        return AfterOperandError();
    Advance();
    return kNoError;
}

ErrorCode Parser::ParseBinding(Binding& binding) {
    switch (current_.kind) {
        case TokenKind::kName:
            if (IsKeyword(u"and") || IsKeyword(u"or") || IsKeyword(u"xor") || IsKeyword(u"not")) {
                return kErrNameExpected;
            }
            binding.scope = VariableScope::kLet;
            binding.name = ToLower(current_.text);
            break;
        case TokenKind::kLocal:
            binding.scope = VariableScope::kLocal;
            binding.name = ToLower(current_.text);
            break;
        case TokenKind::kGlobal:
            binding.scope = VariableScope::kGlobal;
            binding.name = current_.text;
            break;
        case TokenKind::kError:
        case TokenKind::kEnd:
            return OperandError();
        default:
            return kErrNameExpected;
    }
    Advance();
    if (current_.kind != TokenKind::kEqual) {
        return current_.kind == TokenKind::kEnd ? kErrUnexpectedEnd : AfterOperandError();
    }
    Advance();
    return ParseExpression(binding.value);
}

ErrorCode Parser::ParseGet(NodePtr& out) {
    Advance();
    if (current_.kind == TokenKind::kRParen)
        return kErrTooFewParameters;
    if (current_.kind == TokenKind::kError || current_.kind == TokenKind::kEnd) {
        return OperandError();
    }
    if (current_.kind != TokenKind::kName)
        return kErrBadGetParameter;
    const std::u16string folded = ToLower(current_.text);
    out = MakeNode(NodeKind::kGet);
    if (folded == u"currentdate") {
        out->getParameter = GetParameter::kCurrentDate;
    } else if (folded == u"currenttime") {
        out->getParameter = GetParameter::kCurrentTime;
    } else if (folded == u"currenttimestamp") {
        out->getParameter = GetParameter::kCurrentTimestamp;
    } else if (std::optional<GetFunction> function = HostGetFunction(folded)) {
        out->getFunction = *function;
    } else {
        return kErrBadGetParameter;
    }
    Advance();
    if (current_.kind == TokenKind::kSemicolon)
        return kErrTooManyParameters;
    if (current_.kind != TokenKind::kRParen)
        return AfterOperandError();
    Advance();
    return kNoError;
}

}  // namespace fmhost::calc
