// Host text: UTF-16 code units plus character styles over ranges. Positions and sizes count
// code units. Out-of-range positions never fail: they are clipped to the text. Copies share
// their characters until one of them changes (a value passes through many copies on its way
// to and from a plug-in, and may be hundreds of megabytes).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/character_style.h"

namespace fmhost {

// A style that applies from `start` up to the next run's start (or the end of the text).
struct StyleRun {
    uint32_t start = 0;
    CharacterStyle style;

    friend bool operator==(const StyleRun& a, const StyleRun& b) {
        return a.start == b.start && a.style == b.style;
    }
};

class Text {
  public:
    static constexpr uint32_t kEnd = 0xFFFFFFFF;       // "to the end" as a size
    static constexpr uint32_t kNotFound = 0xFFFFFFFF;  // result of a failed search

    Text() = default;
    explicit Text(std::u16string chars)
        : chars_(std::make_shared<std::u16string>(std::move(chars))) {}
    static Text FromUtf8(std::string_view utf8);

    uint32_t Size() const { return static_cast<uint32_t>(Chars().size()); }
    bool Empty() const { return Chars().empty(); }
    const std::u16string& Chars() const;
    std::string ToUtf8() const;

    // Replaces the contents with unstyled characters.
    void Assign(std::u16string chars);
    // A copy of [position, position + size), styles included.
    Text Range(uint32_t position, uint32_t size = kEnd) const;
    // This text becomes the given range of `other`.
    void SetText(const Text& other, uint32_t position = 0, uint32_t size = kEnd);
    void AppendText(const Text& other, uint32_t position = 0, uint32_t size = kEnd);
    void InsertText(const Text& other, uint32_t position);
    void DeleteText(uint32_t position, uint32_t size = kEnd);
    // Replaces [position, position + size) with all of `replacement` (its styles included).
    void Replace(uint32_t position, uint32_t size, const Text& replacement);

    // First occurrence at or after `position`; kNotFound when absent.
    uint32_t Find(const Text& needle, uint32_t position = 0) const;
    // Last occurrence starting at or before `position` (like std::u16string::rfind).
    uint32_t FindPrev(const Text& needle, uint32_t position = kEnd) const;
    uint32_t FindIgnoringCase(const Text& needle, uint32_t position = 0) const;
    uint32_t FindPrevIgnoringCase(const Text& needle, uint32_t position = kEnd) const;

    // In-place case mapping, one code unit for one, so styles stay where they are.
    void Uppercase();
    void Lowercase();

    // The style at `position` (all disabled when unstyled or out of range).
    CharacterStyle StyleAt(uint32_t position) const;
    // The style characters fall back to: every trait disabled.
    CharacterStyle DefaultStyle() const { return CharacterStyle(); }
    // Overwrites the style of a range.
    void SetStyle(const CharacterStyle& style, uint32_t position = 0, uint32_t size = kEnd);
    // Adds the enabled traits of `overlay` to every character of a range.
    void ApplyStyle(const CharacterStyle& overlay, uint32_t position = 0, uint32_t size = kEnd);
    // Disables, everywhere, the traits that match the enabled traits of `traits`.
    void RemoveStyle(const CharacterStyle& traits);
    void ResetAllStyles() { runs_.clear(); }

    bool HasStyles() const { return !runs_.empty(); }
    // Sorted, starting at 0, adjacent runs differ; empty when the text is unstyled.
    const std::vector<StyleRun>& Runs() const { return runs_; }

    // Comparisons look only at the code units, never at styles.
    friend bool operator==(const Text& a, const Text& b) { return a.Chars() == b.Chars(); }
    friend bool operator!=(const Text& a, const Text& b) { return a.Chars() != b.Chars(); }
    friend bool operator<(const Text& a, const Text& b) { return a.Chars() < b.Chars(); }
    friend bool operator<=(const Text& a, const Text& b) { return a.Chars() <= b.Chars(); }
    friend bool operator>(const Text& a, const Text& b) { return a.Chars() > b.Chars(); }
    friend bool operator>=(const Text& a, const Text& b) { return a.Chars() >= b.Chars(); }

  private:
    // Runs of [begin, end) rebased to 0; unstyled parts get an explicit all-disabled run.
    std::vector<StyleRun> RunsOf(uint32_t begin, uint32_t end) const;
    void Normalize();
    // The characters, unshared first.
    std::u16string& MutableChars();

    std::shared_ptr<std::u16string> chars_;  // null when empty
    std::vector<StyleRun> runs_;
};

}  // namespace fmhost
