// The system's rich-edit control ("Msftedit.dll", class "RICHEDIT50W") as an RTF reader and
// writer: an invisible, message-only window that works without any display. The library is
// loaded once for the process (rich_edit_library.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "foundation/rich_text.h"
#include "foundation/windows/unique_handles.h"

namespace bridge {

using slib::RichFormat;

class RichEditControl {
  public:
    using Run = slib::RichRun;

    // -50 "Cannot convert rich text" with the system's error when the control cannot be made.
    RichEditControl();

    void setText(const std::u16string& text);
    // Applies every trait the format sets to the characters [start, end).
    void format(size_t start, size_t end, const RichFormat& format);
    // The contents as RTF in plain ASCII (characters beyond it as "\uN?").
    std::string rtf() const;
    void loadRtf(const uint8_t* bytes, size_t size);
    std::u16string text() const;
    // The text's stretches of one format each, in order.
    std::vector<Run> runs() const;

  private:
    RichFormat formatOf(size_t start, size_t end, bool& uniform) const;

    slib::UniqueWindow window_;
};

}  // namespace bridge
