#include "foundation/rtf_reader.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "foundation/rtf_control_word.h"

namespace slib {

namespace {

constexpr uint32_t kFallbackCodePage = 1252;

int HexValue(char c) {
    if (IsRtfDigit(c)) {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

constexpr uint16_t kAllUnderlines =
    face::kUnderline | face::kWordUnderline | face::kDoubleUnderline;

enum class Destination : uint8_t { kText, kSkip, kFontTable, kColorTable };

// Everything a group restores when it closes.
struct GroupState {
    Destination destination = Destination::kText;
    long font = -1;  // -1: the document's default font
    long halfPoints = 24;
    long color = 0;
    uint16_t face = 0;
    long unicodeFallback = 1;
};

struct Rgb {
    uint8_t red, green, blue;
};

// Destinations whose contents are no part of the text.
bool IsSkippedDestination(std::string_view word) {
    static const std::string_view kSkipped[] = {
        "aftncn",
        "aftnsep",
        "aftnsepc",
        "annotation",
        "atnauthor",
        "atnid",
        "author",
        "bkmkend",
        "bkmkstart",
        "buptim",
        "colorschememapping",
        "comment",
        "company",
        "creatim",
        "datastore",
        "docvar",
        "doccomm",
        "fldinst",
        "filetbl",
        "footer",
        "footerf",
        "footerl",
        "footerr",
        "footnote",
        "ftncn",
        "ftnsep",
        "ftnsepc",
        "generator",
        "header",
        "headerf",
        "headerl",
        "headerr",
        "hlinkbase",
        "info",
        "keywords",
        "latentstyles",
        "listoverridetable",
        "listtable",
        "nonshppict",
        "object",
        "operator",
        "pgdsctbl",
        "pict",
        "printim",
        "revtbl",
        "revtim",
        "rsidtbl",
        "rxe",
        "shpinst",
        "sp",
        "stylesheet",
        "subject",
        "tc",
        "template",
        "themedata",
        "title",
        "txe",
        "userprops",
        "xe",
        "xmlnstbl",
    };
    return std::find(std::begin(kSkipped), std::end(kSkipped), word) != std::end(kSkipped);
}

// Control words that stand for one character of text.
std::optional<char16_t> CharacterOfWord(std::string_view word) {
    static const std::pair<std::string_view, char16_t> kCharacters[] = {
        {"par", u'\r'},           {"line", u'\r'},          {"sect", u'\r'},
        {"page", u'\r'},          {"row", u'\r'},           {"tab", u'\t'},
        {"cell", u'\t'},          {"emdash", u'\u2014'},    {"endash", u'\u2013'},
        {"bullet", u'\u2022'},    {"lquote", u'\u2018'},    {"rquote", u'\u2019'},
        {"ldblquote", u'\u201C'}, {"rdblquote", u'\u201D'}, {"emspace", u'\u2003'},
        {"enspace", u'\u2002'},   {"qmspace", u'\u2005'},   {"zwj", u'\u200D'},
        {"zwnj", u'\u200C'},      {"ltrmark", u'\u200E'},   {"rtlmark", u'\u200F'},
    };
    for (const auto& [name, unit] : kCharacters) {
        if (name == word) {
            return unit;
        }
    }
    return std::nullopt;
}

// Underline kinds the host lacks (dotted, dashed, wavy, thick) read as the single one.
std::optional<uint16_t> UnderlineOfWord(std::string_view word) {
    if (word == "ulw") {
        return face::kWordUnderline;
    }
    if (word == "uldb") {
        return face::kDoubleUnderline;
    }
    if (word == "ulnone") {
        return uint16_t{0};
    }
    if (word.size() > 2 && word.substr(0, 2) == "ul" && word != "ulc") {
        return face::kUnderline;
    }
    if (word == "ul") {
        return face::kUnderline;
    }
    return std::nullopt;
}

std::optional<uint16_t> ToggleOfWord(std::string_view word) {
    static const std::pair<std::string_view, uint16_t> kToggles[] = {
        {"b", face::kBold},
        {"i", face::kItalic},
        {"strike", face::kStrikethrough},
        {"striked", face::kStrikethrough},
        {"caps", face::kUppercase},
        {"scaps", face::kSmallCaps},
    };
    for (const auto& [name, bit] : kToggles) {
        if (name == word) {
            return bit;
        }
    }
    return std::nullopt;
}

class Reader {
  public:
    Reader(std::string_view rtf, const CodePageDecoder& decode) : rtf_(rtf), decode_(decode) {}

    RichText read() {
        while (at_ < rtf_.size() && !ended_) {
            const char c = rtf_[at_++];
            if (c == '{') {
                openGroup();
            } else if (c == '}') {
                closeGroup();
            } else if (c == '\\') {
                escape();
            } else if (c == '\r' || c == '\n') {
                continue;  // line breaks in RTF source are layout, not text
            } else {
                textByte(static_cast<uint8_t>(c));
            }
        }
        flushBytes();
        dropClosingParagraphMark();
        return std::move(result_);
    }

  private:
    void openGroup() {
        flushBytes();
        fallbackLeft_ = 0;
        if (stack_.size() >= kRtfMaxGroupDepth) {
            ++flattened_;
            return;
        }
        stack_.push_back(state_);
    }

    void closeGroup() {
        flushBytes();
        fallbackLeft_ = 0;
        starPending_ = false;
        if (flattened_ > 0) {
            --flattened_;
            return;
        }
        if (stack_.empty()) {
            ended_ = true;  // a stray closing brace outside any group
            return;
        }
        if (state_.destination == Destination::kFontTable) {
            commitFontEntry();
        }
        state_ = stack_.back();
        stack_.pop_back();
        ended_ = stack_.empty();
    }

    void escape() {
        if (at_ >= rtf_.size()) {
            return;
        }
        const char c = rtf_[at_];
        if (IsRtfLetter(c)) {
            controlWord();
            return;
        }
        ++at_;
        if (c == '\'') {
            hexByte();
            return;
        }
        if (c == '\\' || c == '{' || c == '}') {
            textByte(static_cast<uint8_t>(c));
            return;
        }
        if (c == '*') {
            starPending_ = true;
            return;
        }
        flushBytes();
        if (skipFallback()) {
            return;
        }
        if (c == '~') {
            appendUnit(u'\u00A0');
        } else if (c == '_') {
            appendUnit(u'\u2011');
        } else if (c == '\r' || c == '\n') {
            appendParagraphMark();
        }
        // "\-" (optional hyphen), "\:", "\|" and unknown symbols stand for nothing here.
    }

    void controlWord() {
        const RtfControlWord word = ReadRtfControlWord(rtf_, at_);
        at_ = word.end;
        flushBytes();
        if (word.name == "bin") {
            // Binary data is skipped whatever the destination.
            at_ = RtfWordDataEnd(rtf_, word);
            skipFallback();
            return;
        }
        apply(word.name, word.hasNumber, word.number);
    }

    void apply(std::string_view word, bool hasNumber, long number) {
        if (starPending_) {
            starPending_ = false;
            state_.destination = Destination::kSkip;
        }
        if (state_.destination == Destination::kSkip) {
            return;
        }
        if (word == "u" && hasNumber) {
            unicodeUnit(number);
            return;
        }
        if (skipFallback()) {
            return;
        }
        if (word == "uc") {
            state_.unicodeFallback = std::max(0L, number);
        } else if (IsSkippedDestination(word)) {
            state_.destination = Destination::kSkip;
        } else if (word == "fonttbl") {
            state_.destination = Destination::kFontTable;
        } else if (word == "colortbl") {
            state_.destination = Destination::kColorTable;
            colorStarted_ = false;
        } else if (state_.destination == Destination::kFontTable) {
            fontTableWord(word, number);
        } else if (state_.destination == Destination::kColorTable) {
            colorTableWord(word, number);
        } else {
            documentWord(word, hasNumber, number);
        }
    }

    void documentWord(std::string_view word, bool hasNumber, long number) {
        const bool on = !hasNumber || number != 0;
        if (const std::optional<char16_t> unit = CharacterOfWord(word)) {
            if (word == "par") {
                appendParagraphMark();
            } else {
                appendUnit(*unit);
            }
        } else if (const std::optional<uint16_t> bit = ToggleOfWord(word)) {
            state_.face = on ? (state_.face | *bit) : (state_.face & ~*bit);
        } else if (const std::optional<uint16_t> underline = UnderlineOfWord(word)) {
            state_.face &= ~kAllUnderlines;
            if (on) {
                state_.face |= *underline;
            }
        } else if (word == "super" || word == "sub") {
            const uint16_t bit = word == "super" ? face::kSuperscript : face::kSubscript;
            state_.face &= ~(face::kSuperscript | face::kSubscript);
            if (on) {
                state_.face |= bit;
            }
        } else if (word == "nosupersub") {
            state_.face &= ~(face::kSuperscript | face::kSubscript);
        } else if (word == "plain") {
            const Destination destination = state_.destination;
            const long fallback = state_.unicodeFallback;
            state_ = GroupState{};
            state_.destination = destination;
            state_.unicodeFallback = fallback;
        } else if (word == "f" && hasNumber) {
            state_.font = number;
        } else if (word == "fs" && hasNumber && number > 0) {
            state_.halfPoints = number;
        } else if (word == "cf" && hasNumber) {
            state_.color = number;
        } else if (word == "deff" && hasNumber) {
            defaultFont_ = number;
        } else if (word == "ansicpg" && hasNumber && number > 0) {
            documentCodePage_ = static_cast<uint32_t>(number);
        } else if (word == "ansi") {
            documentCodePage_ = 1252;
        } else if (word == "mac") {
            documentCodePage_ = 10000;
        } else if (word == "pc") {
            documentCodePage_ = 437;
        } else if (word == "pca") {
            documentCodePage_ = 850;
        }
    }

    void fontTableWord(std::string_view word, long number) {
        if (word == "f") {
            commitFontEntry();
            entry_ = FontEntry{number, {}, 0, false};
            entryOpen_ = true;
        } else if (word == "fcharset" && entryOpen_ && entry_.codePage == 0) {
            entry_.codePage = CodePageOfCharset(number);
        } else if (word == "cpg" && entryOpen_ && number > 0) {
            entry_.codePage = static_cast<uint32_t>(number);
        }
    }

    void colorTableWord(std::string_view word, long number) {
        const auto channel = static_cast<uint8_t>(std::clamp(number, 0L, 255L));
        if (word == "red") {
            color_.red = channel;
        } else if (word == "green") {
            color_.green = channel;
        } else if (word == "blue") {
            color_.blue = channel;
        } else {
            return;
        }
        colorStarted_ = true;
    }

    void hexByte() {
        int value = -1;
        if (at_ + 1 < rtf_.size()) {
            const int high = HexValue(rtf_[at_]);
            const int low = HexValue(rtf_[at_ + 1]);
            if (high >= 0 && low >= 0) {
                value = high << 4 | low;
                at_ += 2;
            }
        }
        if (value >= 0) {
            pushByte(static_cast<uint8_t>(value));
        }
    }

    void textByte(uint8_t byte) {
        if (state_.destination == Destination::kColorTable && byte == ';' && fallbackLeft_ == 0) {
            colors_.push_back(colorStarted_ ? std::optional<Rgb>(color_) : std::nullopt);
            formatValid_ = false;
            color_ = Rgb{0, 0, 0};
            colorStarted_ = false;
            return;
        }
        if (state_.destination == Destination::kFontTable && byte == ';' && fallbackLeft_ == 0) {
            flushBytes();
            entry_.named = true;
            return;
        }
        pushByte(byte);
    }

    void pushByte(uint8_t byte) {
        if (state_.destination == Destination::kSkip ||
            state_.destination == Destination::kColorTable) {
            return;
        }
        if (fallbackLeft_ > 0) {
            --fallbackLeft_;
            return;
        }
        pending_.push_back(static_cast<char>(byte));
    }

    // True when the token was one of the fallback characters after "\u", and is dropped.
    bool skipFallback() {
        if (fallbackLeft_ == 0) {
            return false;
        }
        --fallbackLeft_;
        return true;
    }

    void unicodeUnit(long number) {
        fallbackLeft_ = 0;
        const auto unit = static_cast<char16_t>(static_cast<unsigned long>(number) & 0xFFFF);
        if (state_.destination == Destination::kFontTable) {
            if (entryOpen_ && !entry_.named) {
                entry_.name.push_back(unit);
            }
        } else {
            appendUnit(unit);
        }
        fallbackLeft_ = state_.unicodeFallback;
    }

    uint32_t currentCodePage() const {
        if (state_.destination == Destination::kFontTable) {
            return entry_.codePage != 0 ? entry_.codePage : documentCodePage_;
        }
        const auto font = fonts_.find(state_.font >= 0 ? state_.font : defaultFont_);
        if (font != fonts_.end() && font->second.codePage != 0) {
            return font->second.codePage;
        }
        return documentCodePage_;
    }

    void flushBytes() {
        if (pending_.empty()) {
            return;
        }
        std::u16string units;
        const bool ascii = std::all_of(pending_.begin(), pending_.end(),
                                       [](char c) { return static_cast<uint8_t>(c) < 0x80; });
        if (ascii || !decode_) {
            units.assign(pending_.begin(), pending_.end());
            for (char16_t& unit : units) {
                unit = static_cast<uint8_t>(unit);
            }
        } else {
            const uint32_t page = currentCodePage();
            units = decode_(page != 0 ? page : kFallbackCodePage, pending_);
        }
        pending_.clear();
        if (state_.destination == Destination::kFontTable) {
            if (entryOpen_ && !entry_.named) {
                entry_.name += units;
            }
            return;
        }
        for (const char16_t unit : units) {
            appendUnit(unit);
        }
    }

    void appendParagraphMark() {
        if (appendUnit(u'\r')) {
            closingParagraphMark_ = true;
        }
    }

    // False when the destination holds no text.
    bool appendUnit(char16_t unit) {
        if (state_.destination != Destination::kText) {
            return false;
        }
        if (unit == u'\0') {
            return true;
        }
        closingParagraphMark_ = false;
        const RichFormat& format = currentFormat();
        const size_t at = result_.text.size();
        result_.text.push_back(unit);
        if (!result_.runs.empty() && result_.runs.back().end == at &&
            result_.runs.back().format == format) {
            result_.runs.back().end = at + 1;
        } else {
            result_.runs.push_back({at, at + 1, format});
        }
        return true;
    }

    // Formats change far less often than characters come: the last one is kept with what made it.
    const RichFormat& currentFormat() {
        const long font = state_.font >= 0 ? state_.font : defaultFont_;
        if (formatValid_ && formatFont_ == font && formatHalfPoints_ == state_.halfPoints &&
            formatColor_ == state_.color && format_.face == state_.face) {
            return format_;
        }
        format_ = RichFormat{};
        const auto stored = fonts_.find(font);
        if (stored != fonts_.end()) {
            format_.font = stored->second.name;
        }
        // Half points are cut to whole ones, as the Windows control does, but never to nothing.
        format_.size = static_cast<uint16_t>(std::clamp(state_.halfPoints / 2, 1L, 0xFFFFL));
        // Entry 0 is normally the table's empty "auto" entry.
        if (state_.color >= 0 && static_cast<size_t>(state_.color) < colors_.size() &&
            colors_[static_cast<size_t>(state_.color)]) {
            const Rgb& rgb = *colors_[static_cast<size_t>(state_.color)];
            format_.hasColor = true;
            format_.red = rgb.red;
            format_.green = rgb.green;
            format_.blue = rgb.blue;
        }
        format_.face = state_.face;
        formatFont_ = font;
        formatHalfPoints_ = state_.halfPoints;
        formatColor_ = state_.color;
        formatValid_ = true;
        return format_;
    }

    void commitFontEntry() {
        if (!entryOpen_) {
            return;
        }
        flushBytes();
        std::u16string name = std::move(entry_.name);
        const size_t first = name.find_first_not_of(u' ');
        const size_t last = name.find_last_not_of(u' ');
        name =
            first == std::u16string::npos ? std::u16string() : name.substr(first, last - first + 1);
        fonts_[entry_.number] = StoredFont{std::move(name), entry_.codePage};
        entryOpen_ = false;
        formatValid_ = false;
    }

    void dropClosingParagraphMark() {
        if (!closingParagraphMark_ || result_.text.empty()) {
            return;
        }
        result_.text.pop_back();
        RichRun& last = result_.runs.back();
        if (--last.end == last.start) {
            result_.runs.pop_back();
        }
    }

    struct FontEntry {
        long number = 0;
        std::u16string name;
        uint32_t codePage = 0;
        bool named = false;  // its ";" came: later text is no part of the name
    };
    struct StoredFont {
        std::u16string name;
        uint32_t codePage = 0;
    };

    std::string_view rtf_;
    const CodePageDecoder& decode_;
    size_t at_ = 0;
    bool ended_ = false;
    std::vector<GroupState> stack_;
    GroupState state_;
    size_t flattened_ = 0;  // groups opened beyond the depth limit and not yet closed
    bool starPending_ = false;
    long fallbackLeft_ = 0;
    std::string pending_;  // code-page bytes not yet decoded
    long defaultFont_ = 0;
    uint32_t documentCodePage_ = kFallbackCodePage;
    FontEntry entry_;
    bool entryOpen_ = false;
    std::map<long, StoredFont> fonts_;
    std::vector<std::optional<Rgb>> colors_;
    Rgb color_{0, 0, 0};
    bool colorStarted_ = false;
    bool closingParagraphMark_ = false;
    RichFormat format_;
    bool formatValid_ = false;
    long formatFont_ = 0;
    long formatHalfPoints_ = 0;
    long formatColor_ = 0;
    RichText result_;
};

}  // namespace

uint32_t CodePageOfCharset(long charset) {
    static const std::pair<long, uint32_t> kPages[] = {
        {0, 1252},   {77, 10000}, {78, 10001}, {79, 10003}, {80, 10008}, {81, 10002},
        {83, 10005}, {84, 10004}, {85, 10006}, {86, 10081}, {87, 10021}, {88, 10029},
        {89, 10007}, {128, 932},  {129, 949},  {130, 1361}, {134, 936},  {136, 950},
        {161, 1253}, {162, 1254}, {163, 1258}, {177, 1255}, {178, 1256}, {186, 1257},
        {204, 1251}, {222, 874},  {238, 1250}, {254, 437},  {255, 850},
    };
    for (const auto& [number, page] : kPages) {
        if (number == charset) {
            return page;
        }
    }
    return 0;
}

RichText ReadRtf(std::string_view rtf, const CodePageDecoder& decode) {
    return Reader(rtf, decode).read();
}

}  // namespace slib
