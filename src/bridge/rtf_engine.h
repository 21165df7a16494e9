// RTF bytes to the neutral rich-text form and back: the system's rich-edit control on Windows,
// our own reader and writer elsewhere.
#pragma once

#include <string>

#include "foundation/data.h"
#include "foundation/rich_text.h"

namespace bridge {

// Plain ASCII RTF; text holds no NUL (the caller refuses it).
std::string RtfOfRichText(const slib::RichText& rich);
slib::RichText RichTextOfRtf(const slib::Data& rtf);

}  // namespace bridge
