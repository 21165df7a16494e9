#include "system_answers.h"

namespace items_test {

const char* const kOpenInApplicationRefusal = "Cannot open file in the given application";
const char* const kOpenInDefaultRefusal = "Cannot open file in the default application";
const char* const kRevealRefusal = "Cannot reveal the file";

}  // namespace items_test
