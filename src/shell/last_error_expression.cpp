#include "shell/last_error_expression.h"

#include "foundation/utf_conversion.h"

namespace fmlib {

namespace {

constexpr char16_t kPilcrow = u'\u00B6';
constexpr char16_t kControlPictures = u'\u2400';
constexpr char16_t kDeletePicture = u'\u2421';

}  // namespace

const char kReadLastErrorExpression[] =
    "If( IsEmpty( $$VFile_LastError ); \"No Error Message\"; $$VFile_LastError )";
const char kReadLastErrorMessageExpression[] =
    "If( IsEmpty( $$VFile_LastErrorMessage ); \"No Error Message\"; $$VFile_LastErrorMessage )";

std::u16string CalculationTextConstant(std::u16string_view text) {
    std::u16string constant = u"\"";
    constant.reserve(text.size() + 2);
    for (const char16_t unit : text) {
        if (unit == u'"' || unit == u'\\' || unit == kPilcrow) {
            constant += u'\\';
            constant += unit;
        } else if (unit == u'\r') {
            constant += kPilcrow;
        } else if (unit < 0x20) {
            constant += static_cast<char16_t>(kControlPictures + unit);
        } else if (unit == 0x7F) {
            constant += kDeletePicture;
        } else {
            constant += unit;
        }
    }
    return constant + u'"';
}

std::u16string LastErrorExpression(int16_t code, std::string_view message) {
    const std::string codeText = std::to_string(code);
    return u"Let ( [ $$VFile_LastError = " + std::u16string(codeText.begin(), codeText.end()) +
           u" ; $$VFile_LastErrorMessage = " + CalculationTextConstant(slib::Utf8ToUtf16(message)) +
           u" ] ; \"\" )";
}

}  // namespace fmlib
