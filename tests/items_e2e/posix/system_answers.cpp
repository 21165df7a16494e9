#include "system_answers.h"

namespace items_test {

namespace {
const char* const kNoDesktop = "No interactive desktop to show the dialog on";
}  // namespace

const char* const kOpenInApplicationRefusal = kNoDesktop;
const char* const kOpenInDefaultRefusal = kNoDesktop;
const char* const kRevealRefusal = kNoDesktop;

}  // namespace items_test
