// The RTF reader on untrusted bytes, and the writer on what it read. Invariants: the runs cover
// the text exactly, in order, each non-empty and different from the one before; no NUL comes
// through; the writer's RTF is plain ASCII and reads back as the same text with the same runs
// (unset fonts becoming the writer's Arial). The group-depth scan that guards the Windows control
// stops just past its limit, and finds the writer's groups no deeper than its tables.
// fuzz-sources: src/foundation/rtf_[rwgc]*.cpp src/foundation/rich_text.cpp
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "foundation/rtf_group_depth.h"
#include "foundation/rtf_reader.h"
#include "foundation/rtf_writer.h"

namespace {

// A stand-in for the host's conversion: single bytes, except that 932 joins lead bytes with
// the byte after them, so multi-byte grouping is exercised.
std::u16string Decode(uint32_t page, std::string_view bytes) {
    std::u16string out;
    for (size_t index = 0; index < bytes.size(); ++index) {
        const auto byte = static_cast<uint8_t>(bytes[index]);
        if (page == 932 && byte >= 0x81 && byte <= 0x9F && index + 1 < bytes.size()) {
            out += static_cast<char16_t>(byte << 8 | static_cast<uint8_t>(bytes[++index]));
        } else {
            out += static_cast<char16_t>(page == 1252 ? byte : byte + 0x100);
        }
    }
    return out;
}

void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

void CheckShape(const slib::RichText& rich) {
    Require(rich.text.find(u'\0') == std::u16string::npos);
    size_t at = 0;
    for (size_t index = 0; index < rich.runs.size(); ++index) {
        const slib::RichRun& run = rich.runs[index];
        Require(run.start == at && run.end > run.start);
        Require(index == 0 || rich.runs[index - 1].format != run.format);
        Require(run.format.size > 0);
        at = run.end;
    }
    Require(at == rich.text.size());
}

// The writer's reading of unset fonts, with runs that became alike joined.
slib::RichText AsWritten(const slib::RichText& rich) {
    slib::RichText out{rich.text, {}};
    for (slib::RichRun run : rich.runs) {
        if (run.format.font.empty()) {
            run.format.font = u"Arial";
        }
        if (!out.runs.empty() && out.runs.back().format == run.format) {
            out.runs.back().end = run.end;
        } else {
            out.runs.push_back(run);
        }
    }
    return out;
}

bool SameRuns(const slib::RichText& a, const slib::RichText& b) {
    if (a.text != b.text || a.runs.size() != b.runs.size()) {
        return false;
    }
    for (size_t index = 0; index < a.runs.size(); ++index) {
        if (a.runs[index].start != b.runs[index].start || a.runs[index].end != b.runs[index].end ||
            a.runs[index].format != b.runs[index].format) {
            return false;
        }
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    Require(slib::RtfGroupDepth(input, slib::kRtfMaxGroupDepth) <= slib::kRtfMaxGroupDepth + 1);
    const slib::RichText first = slib::ReadRtf(input, Decode);
    CheckShape(first);
    const std::string written = slib::WriteRtf(first);
    for (const char c : written) {
        Require((static_cast<uint8_t>(c) & 0x80) == 0);
    }
    Require(written.compare(0, 6, "{\\rtf1") == 0 && written.back() == '}');
    Require(slib::RtfGroupDepth(written, slib::kRtfMaxGroupDepth) == 3);
    const slib::RichText second = slib::ReadRtf(written, Decode);
    CheckShape(second);
    Require(SameRuns(second, AsWritten(first)));
    return 0;
}
