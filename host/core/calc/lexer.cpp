#include "core/calc/lexer.h"

namespace fmhost::calc {
namespace {

constexpr char16_t kPilcrow = 0x00B6;  // stands for a carriage return
constexpr char16_t kNotEqualSign = 0x2260;
constexpr char16_t kLessEqualSign = 0x2264;
constexpr char16_t kGreaterEqualSign = 0x2265;

bool IsBlank(char16_t c) {
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n' || c == 0x00A0 || c == 0x2028 ||
           c == 0x2029 || c == 0x3000 || c == u'\f' || c == u'\v';
}

bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

Token Simple(TokenKind kind) {
    return Token{kind, {}, kNoError};
}

Token Error(ErrorCode error) {
    return Token{TokenKind::kError, {}, error};
}

}  // namespace

bool IsNameChar(char16_t c) {
    if ((c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || IsDigit(c) || c == u'_' ||
        c == u'.') {
        return true;
    }
    return c >= 0x80 && !IsBlank(c) && c != kPilcrow && c != kNotEqualSign && c != kLessEqualSign &&
           c != kGreaterEqualSign;
}

ErrorCode Lexer::SkipBlank() {
    while (pos_ < source_.size()) {
        const char16_t c = source_[pos_];
        if (IsBlank(c)) {
            ++pos_;
        } else if (source_.substr(pos_, 2) == u"/*") {
            const size_t end = source_.find(u"*/", pos_ + 2);
            if (end == std::u16string_view::npos)
                return kErrCommentNotClosed;
            pos_ = end + 2;
        } else if (source_.substr(pos_, 2) == u"//") {
            while (pos_ < source_.size() && source_[pos_] != u'\r' && source_[pos_] != u'\n') {
                ++pos_;
            }
        } else {
            break;
        }
    }
    return kNoError;
}

Token Lexer::Next() {
    if (const ErrorCode error = SkipBlank())
        return Error(error);
    if (pos_ >= source_.size())
        return Simple(TokenKind::kEnd);
    const char16_t c = source_[pos_];
    const char16_t next = pos_ + 1 < source_.size() ? source_[pos_ + 1] : u'\0';
    if (c == u'"')
        return ReadText();
    if (IsDigit(c) || (c == u'.' && IsDigit(next)))
        return ReadNumber();
    if (c == u'$') {
        if (next == u'$')
            return ReadName(TokenKind::kGlobal, 2);
        return ReadName(TokenKind::kLocal, 1);
    }
    if (IsNameChar(c) && c != u'.')
        return ReadName(TokenKind::kName, 0);
    ++pos_;
    switch (c) {
        case kPilcrow:
            return Token{TokenKind::kText, u"\r", kNoError};
        case u'(':
            return Simple(TokenKind::kLParen);
        case u')':
            return Simple(TokenKind::kRParen);
        case u'[':
            return Simple(TokenKind::kLBracket);
        case u']':
            return Simple(TokenKind::kRBracket);
        case u';':
            return Simple(TokenKind::kSemicolon);
        case u'+':
            return Simple(TokenKind::kPlus);
        case u'-':
            return Simple(TokenKind::kMinus);
        case u'*':
            return Simple(TokenKind::kStar);
        case u'/':
            return Simple(TokenKind::kSlash);
        case u'^':
            return Simple(TokenKind::kCaret);
        case u'&':
            return Simple(TokenKind::kAmpersand);
        case u'=':
            return Simple(TokenKind::kEqual);
        case kNotEqualSign:
            return Simple(TokenKind::kNotEqual);
        case kLessEqualSign:
            return Simple(TokenKind::kLessEqual);
        case kGreaterEqualSign:
            return Simple(TokenKind::kGreaterEqual);
        case u'<':
            if (next == u'>' || next == u'=') {
                ++pos_;
                return Simple(next == u'>' ? TokenKind::kNotEqual : TokenKind::kLessEqual);
            }
            return Simple(TokenKind::kLess);
        case u'>':
            if (next == u'=') {
                ++pos_;
                return Simple(TokenKind::kGreaterEqual);
            }
            return Simple(TokenKind::kGreater);
        default:
            return Simple(TokenKind::kUnknown);
    }
}

// Inside quotes: \" and \\ escape, ¶ is a carriage return, \¶ a literal pilcrow; any other
// backslash stays as written.
Token Lexer::ReadText() {
    std::u16string out;
    for (++pos_; pos_ < source_.size(); ++pos_) {
        const char16_t c = source_[pos_];
        if (c == u'"') {
            ++pos_;
            return Token{TokenKind::kText, std::move(out), kNoError};
        }
        if (c == u'\\' && pos_ + 1 < source_.size()) {
            const char16_t escaped = source_[pos_ + 1];
            if (escaped == u'"' || escaped == u'\\' || escaped == kPilcrow) {
                out.push_back(escaped);
                ++pos_;
                continue;
            }
        }
        out.push_back(c == kPilcrow ? u'\r' : c);
    }
    return Error(kErrTextNotClosed);
}

Token Lexer::ReadNumber() {
    const size_t start = pos_;
    bool point = false;
    while (pos_ < source_.size() && (IsDigit(source_[pos_]) || (source_[pos_] == u'.' && !point))) {
        point = point || source_[pos_] == u'.';
        ++pos_;
    }
    return Token{TokenKind::kNumber, std::u16string(source_.substr(start, pos_ - start)), kNoError};
}

Token Lexer::ReadName(TokenKind kind, size_t prefix) {
    pos_ += prefix;
    const size_t start = pos_;
    while (pos_ < source_.size() && IsNameChar(source_[pos_]))
        ++pos_;
    if (pos_ == start)
        return Error(kErrNameExpected);  // "$" or "$$" alone
    return Token{kind, std::u16string(source_.substr(start, pos_ - start)), kNoError};
}

}  // namespace fmhost::calc
