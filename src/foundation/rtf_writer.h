#pragma once
// Text and its character formats as an RTF document in plain ASCII, laid out as the Windows
// rich-edit control writes it (\rtf1\ansi\ansicpg1252\deff0, a font table, a colour table when
// a colour is set), so RTF from either build reads the same in other programs.

#include <string>

#include "foundation/rich_text.h"

namespace slib {

// Every character beyond ASCII (and every control character but TAB and CR) is written as
// "\uN?"; CR is a paragraph mark, and one more closes the document, as the control writes it.
// Unset fonts and sizes are Arial and 12 points, as is text outside every run. Face bits RTF
// cannot say (outline, shadow, title and lower case, ...) are left out. NUL is the caller's to
// refuse; here it is written as "\u0?".
std::string WriteRtf(const RichText& rich);

}  // namespace slib
