#include "shell/last_error_expression.h"

namespace fmlib {

const char kReadLastErrorExpression[] =
    "If( IsEmpty( $$VFile_LastError ); \"No Error Message\"; $$VFile_LastError )";
const char kReadLastErrorMessageExpression[] =
    "If( IsEmpty( $$VFile_LastErrorMessage ); \"No Error Message\"; $$VFile_LastErrorMessage )";

std::string LastErrorExpression(int16_t code, const std::string& message) {
    std::string expression = "Let ( [ $$VFile_LastError = ";
    expression += std::to_string(code);
    expression += " ; $$VFile_LastErrorMessage = \"";
    expression += message;
    expression += "\" ] ; \"\" )";
    return expression;
}

}  // namespace fmlib
