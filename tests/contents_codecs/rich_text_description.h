// Rich text as one line to compare against: each run as "text=font/size/colour/face".
#pragma once

#include <cstdio>
#include <string>

#include "foundation/rich_text.h"
#include "foundation/utf_conversion.h"

namespace rich_text_test {

inline std::string Describe(const slib::RichFormat& format) {
    char tail[32];
    if (format.hasColor) {
        std::snprintf(tail, sizeof tail, "/%u/%02x%02x%02x/%04x", unsigned{format.size},
                      unsigned{format.red}, unsigned{format.green}, unsigned{format.blue},
                      unsigned{format.face});
    } else {
        std::snprintf(tail, sizeof tail, "/%u/auto/%04x", unsigned{format.size},
                      unsigned{format.face});
    }
    return slib::Utf16ToUtf8(format.font) + tail;
}

inline std::string Describe(const slib::RichText& rich) {
    std::string out;
    for (const slib::RichRun& run : rich.runs) {
        if (!out.empty()) {
            out += ' ';
        }
        out += slib::Utf16ToUtf8(rich.text.substr(run.start, run.end - run.start)) + "=" +
               Describe(run.format);
    }
    return out;
}

}  // namespace rich_text_test
