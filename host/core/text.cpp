#include "core/text.h"

#include <algorithm>

#include "core/case_mapping.h"
#include "core/utf.h"

namespace fmhost {
namespace {

struct Span {
    uint32_t begin;
    uint32_t end;
};

Span Clip(uint32_t size, uint32_t position, uint32_t length) {
    const uint32_t begin = std::min(position, size);
    const uint32_t end = begin + std::min(length, size - begin);
    return {begin, end};
}

void AppendShifted(std::vector<StyleRun>& out, const std::vector<StyleRun>& runs, uint32_t offset) {
    for (const StyleRun& run : runs)
        out.push_back({run.start + offset, run.style});
}

uint32_t ToPosition(size_t found) {
    return found == std::u16string::npos ? Text::kNotFound : static_cast<uint32_t>(found);
}

size_t ToSearchStart(uint32_t position) {
    return position == Text::kEnd ? std::u16string::npos : position;
}

}  // namespace

const std::u16string& Text::Chars() const {
    static const std::u16string empty;
    return chars_ ? *chars_ : empty;
}

std::u16string& Text::MutableChars() {
    if (!chars_) {
        chars_ = std::make_shared<std::u16string>();
    } else if (chars_.use_count() > 1) {
        chars_ = std::make_shared<std::u16string>(*chars_);
    }
    return *chars_;
}

Text Text::FromUtf8(std::string_view utf8) {
    return Text(Utf8ToUtf16(utf8));
}

std::string Text::ToUtf8() const {
    return Utf16ToUtf8(Chars());
}

void Text::Assign(std::u16string chars) {
    chars_ = std::make_shared<std::u16string>(std::move(chars));
    runs_.clear();
}

Text Text::Range(uint32_t position, uint32_t size) const {
    const Span span = Clip(Size(), position, size);
    if (span.begin == 0 && span.end == Size()) {
        return *this;
    }
    Text out(Chars().substr(span.begin, span.end - span.begin));
    if (HasStyles()) {
        out.runs_ = RunsOf(span.begin, span.end);
        out.Normalize();
    }
    return out;
}

void Text::SetText(const Text& other, uint32_t position, uint32_t size) {
    *this = other.Range(position, size);
}

void Text::AppendText(const Text& other, uint32_t position, uint32_t size) {
    Replace(Size(), 0, other.Range(position, size));
}

void Text::InsertText(const Text& other, uint32_t position) {
    Replace(position, 0, other);
}

void Text::DeleteText(uint32_t position, uint32_t size) {
    Replace(position, size, Text());
}

void Text::Replace(uint32_t position, uint32_t size, const Text& replacement) {
    if (&replacement == this) {
        const Text copy = replacement;
        Replace(position, size, copy);
        return;
    }
    const Span span = Clip(Size(), position, size);
    const uint32_t inserted = replacement.Size();
    std::vector<StyleRun> runs;
    const bool styled = HasStyles() || replacement.HasStyles();
    if (styled) {
        runs = RunsOf(0, span.begin);
        AppendShifted(runs, replacement.RunsOf(0, inserted), span.begin);
        AppendShifted(runs, RunsOf(span.end, Size()), span.begin + inserted);
    }
    // In place, so that appending piece by piece stays linear.
    MutableChars().replace(span.begin, span.end - span.begin, replacement.Chars());
    if (styled) {
        runs_ = std::move(runs);
        Normalize();
    }
}

uint32_t Text::Find(const Text& needle, uint32_t position) const {
    return ToPosition(Chars().find(needle.Chars(), position));
}

uint32_t Text::FindPrev(const Text& needle, uint32_t position) const {
    return ToPosition(Chars().rfind(needle.Chars(), ToSearchStart(position)));
}

uint32_t Text::FindIgnoringCase(const Text& needle, uint32_t position) const {
    return ToPosition(ToLower(Chars()).find(ToLower(needle.Chars()), position));
}

uint32_t Text::FindPrevIgnoringCase(const Text& needle, uint32_t position) const {
    return ToPosition(ToLower(Chars()).rfind(ToLower(needle.Chars()), ToSearchStart(position)));
}

void Text::Uppercase() {
    for (char16_t& c : MutableChars())
        c = ToUpper(c);
}

void Text::Lowercase() {
    for (char16_t& c : MutableChars())
        c = ToLower(c);
}

CharacterStyle Text::StyleAt(uint32_t position) const {
    if (position >= Size() || runs_.empty())
        return CharacterStyle();
    auto after =
        std::upper_bound(runs_.begin(), runs_.end(), position,
                         [](uint32_t pos, const StyleRun& run) { return pos < run.start; });
    return std::prev(after)->style;
}

void Text::SetStyle(const CharacterStyle& style, uint32_t position, uint32_t size) {
    const Span span = Clip(Size(), position, size);
    if (span.begin == span.end)
        return;
    std::vector<StyleRun> runs = RunsOf(0, span.begin);
    runs.push_back({span.begin, style});
    AppendShifted(runs, RunsOf(span.end, Size()), span.end);
    runs_ = std::move(runs);
    Normalize();
}

void Text::ApplyStyle(const CharacterStyle& overlay, uint32_t position, uint32_t size) {
    const Span span = Clip(Size(), position, size);
    if (span.begin == span.end)
        return;
    std::vector<StyleRun> middle = RunsOf(span.begin, span.end);
    for (StyleRun& run : middle)
        run.style.Apply(overlay);
    std::vector<StyleRun> runs = RunsOf(0, span.begin);
    AppendShifted(runs, middle, span.begin);
    AppendShifted(runs, RunsOf(span.end, Size()), span.end);
    runs_ = std::move(runs);
    Normalize();
}

void Text::RemoveStyle(const CharacterStyle& traits) {
    for (StyleRun& run : runs_)
        run.style.RemoveMatching(traits);
    Normalize();
}

std::vector<StyleRun> Text::RunsOf(uint32_t begin, uint32_t end) const {
    std::vector<StyleRun> out;
    if (begin >= end)
        return out;
    if (runs_.empty()) {
        out.push_back({0, CharacterStyle()});
        return out;
    }
    for (size_t i = 0; i < runs_.size(); ++i) {
        const uint32_t runBegin = runs_[i].start;
        const uint32_t runEnd = i + 1 < runs_.size() ? runs_[i + 1].start : Size();
        if (runEnd <= begin || runBegin >= end)
            continue;
        out.push_back({std::max(runBegin, begin) - begin, runs_[i].style});
    }
    return out;
}

void Text::Normalize() {
    std::vector<StyleRun> merged;
    for (const StyleRun& run : runs_) {
        if (run.start >= Size())
            break;
        if (!merged.empty() && merged.back().start == run.start) {
            merged.back().style = run.style;  // an empty run: the later one wins
        } else if (merged.empty() || merged.back().style != run.style) {
            merged.push_back(run);
        }
        if (merged.size() >= 2 && merged[merged.size() - 2].style == merged.back().style) {
            merged.pop_back();
        }
    }
    if (merged.size() == 1 && merged.front().style.IsAllDisabled())
        merged.clear();
    runs_ = std::move(merged);
}

}  // namespace fmhost
