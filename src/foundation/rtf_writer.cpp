#include "foundation/rtf_writer.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace slib {

namespace {

constexpr char16_t kDefaultFont[] = u"Arial";
constexpr uint16_t kDefaultSize = 12;

void AppendUnicodeEscape(std::string& out, char16_t unit) {
    out += "\\u";
    out += std::to_string(static_cast<int16_t>(unit));
    out += '?';
}

// A character of text or of a font name; `inName` also escapes the table's ";" terminator.
void AppendCharacter(std::string& out, char16_t unit, bool inName) {
    if (unit == u'\\' || unit == u'{' || unit == u'}') {
        out += '\\';
        out += static_cast<char>(unit);
    } else if (unit < 0x20 || unit >= 0x7F || (inName && unit == u';')) {
        AppendUnicodeEscape(out, unit);
    } else {
        out += static_cast<char>(unit);
    }
}

// The traits RTF has a word for, each with its "off" form.
struct Traits {
    bool bold = false;
    bool italic = false;
    int underline = 0;  // an index into kUnderlineWords
    bool strike = false;
    int script = 0;  // an index into kScriptWords
    bool smallCaps = false;
    bool allCaps = false;
    size_t font = 0;
    uint16_t size = kDefaultSize;
    size_t color = 0;
};

// The first of each is the "off" word.
const char* const kUnderlineWords[] = {"ulnone", "ul", "ulw", "uldb"};
const char* const kScriptWords[] = {"nosupersub", "super", "sub"};

Traits FaceTraits(uint16_t bits) {
    Traits traits;
    traits.bold = bits & face::kBold;
    traits.italic = bits & face::kItalic;
    if (bits & face::kDoubleUnderline) {
        traits.underline = 3;
    } else if (bits & face::kWordUnderline) {
        traits.underline = 2;
    } else if (bits & face::kUnderline) {
        traits.underline = 1;
    }
    traits.strike = bits & face::kStrikethrough;
    if (bits & face::kSuperscript) {
        traits.script = 1;
    } else if (bits & face::kSubscript) {
        traits.script = 2;
    }
    traits.smallCaps = bits & face::kSmallCaps;
    // Title case shares the upper-case bit and RTF has no form for it.
    traits.allCaps = (bits & face::kTitlecase) == face::kUppercase;
    return traits;
}

class Tables {
  public:
    Tables() { fonts_.emplace_back(kDefaultFont); }

    size_t fontOf(const std::u16string& name) {
        const std::u16string& wanted = name.empty() ? fonts_.front() : name;
        const auto found = std::find(fonts_.begin(), fonts_.end(), wanted);
        if (found != fonts_.end()) {
            return static_cast<size_t>(found - fonts_.begin());
        }
        fonts_.push_back(wanted);
        return fonts_.size() - 1;
    }

    // 0 is the table's "auto" entry.
    size_t colorOf(const RichFormat& format) {
        if (!format.hasColor) {
            return 0;
        }
        const uint32_t rgb = uint32_t{format.red} << 16 | uint32_t{format.green} << 8 | format.blue;
        const auto found = std::find(colors_.begin(), colors_.end(), rgb);
        if (found != colors_.end()) {
            return static_cast<size_t>(found - colors_.begin()) + 1;
        }
        colors_.push_back(rgb);
        return colors_.size();
    }

    std::string header() const {
        std::string out = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl";
        for (size_t index = 0; index < fonts_.size(); ++index) {
            out += "{\\f" + std::to_string(index) + "\\fnil\\fcharset0 ";
            for (const char16_t unit : fonts_[index]) {
                AppendCharacter(out, unit, true);
            }
            out += ";}";
        }
        out += "}\r\n";
        if (!colors_.empty()) {
            out += "{\\colortbl ;";
            for (const uint32_t rgb : colors_) {
                out += "\\red" + std::to_string(rgb >> 16) + "\\green" +
                       std::to_string(rgb >> 8 & 0xFF) + "\\blue" + std::to_string(rgb & 0xFF) +
                       ";";
            }
            out += "}\r\n";
        }
        return out;
    }

  private:
    std::vector<std::u16string> fonts_;
    std::vector<uint32_t> colors_;
};

void AppendWord(std::string& out, const char* word, bool on = true) {
    out += '\\';
    out += word;
    if (!on) {
        out += '0';
    }
}

// The words that turn `from` into `to` (faces first, as the control orders them), then the
// space that ends the last one.
void AppendChanges(std::string& out, const Traits& from, const Traits& to) {
    const size_t before = out.size();
    if (to.bold != from.bold) {
        AppendWord(out, "b", to.bold);
    }
    if (to.italic != from.italic) {
        AppendWord(out, "i", to.italic);
    }
    if (to.underline != from.underline) {
        AppendWord(out, kUnderlineWords[to.underline]);
    }
    if (to.strike != from.strike) {
        AppendWord(out, "strike", to.strike);
    }
    if (to.script != from.script) {
        AppendWord(out, kScriptWords[to.script]);
    }
    if (to.smallCaps != from.smallCaps) {
        AppendWord(out, "scaps", to.smallCaps);
    }
    if (to.allCaps != from.allCaps) {
        AppendWord(out, "caps", to.allCaps);
    }
    if (to.font != from.font) {
        out += "\\f" + std::to_string(to.font);
    }
    if (to.size != from.size) {
        out += "\\fs" + std::to_string(uint32_t{to.size} * 2);
    }
    if (to.color != from.color) {
        out += "\\cf" + std::to_string(to.color);
    }
    if (out.size() != before) {
        out += ' ';
    }
}

void AppendText(std::string& out, std::u16string_view text) {
    for (const char16_t unit : text) {
        if (unit == u'\r') {
            out += "\\par\r\n";
        } else if (unit == u'\t') {
            out += "\\tab ";
        } else {
            AppendCharacter(out, unit, false);
        }
    }
}

}  // namespace

std::string WriteRtf(const RichText& rich) {
    Tables tables;
    const std::u16string_view text = rich.text;
    std::string body = "\\uc1\\pard\\f0\\fs24 ";
    Traits current;  // what the opening words set
    const Traits plain;
    size_t at = 0;
    for (const RichRun& run : rich.runs) {
        const size_t start = std::clamp(run.start, at, text.size());
        const size_t end = std::clamp(run.end, start, text.size());
        if (start > at) {
            AppendChanges(body, current, plain);
            current = plain;
            AppendText(body, text.substr(at, start - at));
        }
        if (end == start) {
            continue;
        }
        Traits wanted = FaceTraits(run.format.face);
        wanted.font = tables.fontOf(run.format.font);
        wanted.size = run.format.size > 0 ? run.format.size : kDefaultSize;
        wanted.color = tables.colorOf(run.format);
        AppendChanges(body, current, wanted);
        current = wanted;
        AppendText(body, text.substr(start, end - start));
        at = end;
    }
    // The closing paragraph mark is plain, as the control writes it.
    AppendChanges(body, current, plain);
    if (at < text.size()) {
        AppendText(body, text.substr(at));
    }
    return tables.header() + body + "\\par\r\n}";
}

}  // namespace slib
