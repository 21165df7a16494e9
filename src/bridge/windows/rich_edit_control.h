// The system's rich-edit control ("Msftedit.dll", class "RICHEDIT50W") as an RTF reader and
// writer: an invisible, message-only window that works without any display. The library is
// loaded once for the process (rich_edit_library.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "foundation/windows/unique_handles.h"

namespace bridge {

// One character format, in the host's terms.
struct RichFormat {
    std::u16string font;  // empty: not set
    uint16_t size = 0;    // points; 0: not set
    bool hasColor = false;
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    uint16_t face = 0;  // the host's face bits (bold 0x0100, italic 0x0200, ...)

    bool operator==(const RichFormat& other) const;
};

class RichEditControl {
  public:
    struct Run {
        size_t start;
        size_t end;
        RichFormat format;
    };

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
