// Splits a calculation into tokens, one at a time. Comments and white space are skipped;
// and / or / xor / not arrive as names (the parser knows them as keywords).
#pragma once

#include <string>
#include <string_view>

#include "core/calc_errors.h"

namespace fmhost::calc {

enum class TokenKind {
    kEnd,
    kNumber,  // text: the literal's characters
    kText,    // text: the decoded contents
    kName,    // text: the name as written
    kLocal,   // $name; text: name without "$"
    kGlobal,  // $$name; text: name without "$$"
    kLParen,
    kRParen,
    kLBracket,
    kRBracket,
    kSemicolon,
    kPlus,
    kMinus,
    kStar,
    kSlash,
    kCaret,
    kAmpersand,
    kEqual,
    kNotEqual,
    kLess,
    kLessEqual,
    kGreater,
    kGreaterEqual,
    kUnknown,  // a character the language has no use for
    kError,    // error: what went wrong (unterminated text or comment, bad variable name)
};

struct Token {
    TokenKind kind = TokenKind::kEnd;
    std::u16string text;
    ErrorCode error = kNoError;
};

class Lexer {
  public:
    explicit Lexer(std::u16string_view source) : source_(source) {}
    Token Next();

  private:
    // Skips white space and comments; an error for a comment without its end.
    ErrorCode SkipBlank();
    Token ReadText();
    Token ReadNumber();
    Token ReadName(TokenKind kind, size_t prefix);

    std::u16string_view source_;
    size_t pos_ = 0;
};

// Characters that may appear in names (letters, digits, "_", ".", most non-ASCII).
bool IsNameChar(char16_t c);

}  // namespace fmhost::calc
