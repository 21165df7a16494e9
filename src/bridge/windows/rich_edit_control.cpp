#include "bridge/windows/rich_edit_control.h"

#include <windows.h>

#include <richedit.h>

#include <cstring>

#include "fmx_constants.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/rtf_escape.h"
#include "foundation/windows/rich_edit_library.h"

namespace bridge {

namespace {

// Every trait we map; a selection is of one format when the control reports all of them as
// uniform across it.
constexpr DWORD kMappedTraits = CFM_BOLD | CFM_ITALIC | CFM_UNDERLINE | CFM_UNDERLINETYPE |
                                CFM_STRIKEOUT | CFM_SUPERSCRIPT | CFM_SMALLCAPS | CFM_ALLCAPS |
                                CFM_SIZE | CFM_COLOR | CFM_FACE;

[[noreturn]] void ThrowCannotConvert(DWORD error) {
    slib::ThrowLastError("Cannot convert rich text", error);
}

struct Effect {
    DWORD effect;
    uint16_t face;
};
const Effect kEffects[] = {
    {CFE_BOLD, fmx::kFaceBold},
    {CFE_ITALIC, fmx::kFaceItalic},
    {CFE_STRIKEOUT, fmx::kFaceStrikethrough},
    {CFE_SUPERSCRIPT, fmx::kFaceSuperscript},
    {CFE_SUBSCRIPT, fmx::kFaceSubscript},
    {CFE_SMALLCAPS, fmx::kFaceSmallCaps},
    {CFE_ALLCAPS, fmx::kFaceUppercase},
};

// The host's three underline kinds and the control's underline types.
struct Underline {
    BYTE type;
    uint16_t face;
};
const Underline kUnderlines[] = {
    {CFU_UNDERLINE, fmx::kFaceUnderline},
    {CFU_UNDERLINEWORD, fmx::kFaceWordUnderline},
    {CFU_UNDERLINEDOUBLE, fmx::kFaceDoubleUnderline},
};

CHARFORMAT2W ToCharFormat(const RichFormat& format) {
    CHARFORMAT2W cf{};
    cf.cbSize = sizeof(cf);
    cf.dwMask = CFM_BOLD | CFM_ITALIC | CFM_STRIKEOUT | CFM_SUPERSCRIPT | CFM_SMALLCAPS |
                CFM_ALLCAPS | CFM_UNDERLINE | CFM_UNDERLINETYPE;
    for (const Effect& effect : kEffects) {
        if ((format.face & effect.face) == effect.face) {
            cf.dwEffects |= effect.effect;
        }
    }
    if ((format.face & fmx::kFaceTitlecase) == fmx::kFaceTitlecase) {
        cf.dwEffects &= ~CFE_ALLCAPS;  // title case shares the upper-case bit; RTF has no form
    }
    for (const Underline& underline : kUnderlines) {
        if (format.face & underline.face) {
            cf.dwEffects |= CFE_UNDERLINE;
            cf.bUnderlineType = underline.type;
        }
    }
    if (!format.font.empty()) {
        cf.dwMask |= CFM_FACE;
        const size_t length = std::min<size_t>(format.font.size(), LF_FACESIZE - 1);
        std::memcpy(cf.szFaceName, format.font.data(), length * sizeof(char16_t));
    }
    if (format.size > 0) {
        cf.dwMask |= CFM_SIZE;
        cf.yHeight = static_cast<LONG>(format.size) * 20;
    }
    cf.dwMask |= CFM_COLOR;
    if (format.hasColor) {
        cf.crTextColor = RGB(format.red, format.green, format.blue);
    } else {
        cf.dwEffects |= CFE_AUTOCOLOR;
    }
    return cf;
}

RichFormat FromCharFormat(const CHARFORMAT2W& cf) {
    RichFormat format;
    for (const Effect& effect : kEffects) {
        if (cf.dwEffects & effect.effect) {
            format.face |= effect.face;
        }
    }
    if (cf.dwEffects & CFE_UNDERLINE) {
        format.face |= fmx::kFaceUnderline;
        for (const Underline& underline : kUnderlines) {
            if (cf.bUnderlineType == underline.type) {
                format.face = (format.face & ~fmx::kFaceUnderline) | underline.face;
            }
        }
    }
    format.font = reinterpret_cast<const char16_t*>(cf.szFaceName);
    format.size = static_cast<uint16_t>(cf.yHeight / 20);
    if (!(cf.dwEffects & CFE_AUTOCOLOR)) {
        format.hasColor = true;
        format.red = GetRValue(cf.crTextColor);
        format.green = GetGValue(cf.crTextColor);
        format.blue = GetBValue(cf.crTextColor);
    }
    return format;
}

DWORD CALLBACK CollectOutput(DWORD_PTR cookie, LPBYTE bytes, LONG count, LONG* done) {
    reinterpret_cast<std::string*>(cookie)->append(reinterpret_cast<const char*>(bytes),
                                                   static_cast<size_t>(count));
    *done = count;
    return 0;
}

struct Input {
    const uint8_t* bytes;
    size_t left;
};

DWORD CALLBACK SupplyInput(DWORD_PTR cookie, LPBYTE bytes, LONG count, LONG* done) {
    Input& input = *reinterpret_cast<Input*>(cookie);
    const size_t chunk = std::min(input.left, static_cast<size_t>(count));
    std::memcpy(bytes, input.bytes, chunk);
    input.bytes += chunk;
    input.left -= chunk;
    *done = static_cast<LONG>(chunk);
    return 0;
}

}  // namespace

RichEditControl::RichEditControl() {
    if (!slib::LoadRichEditLibrary()) {
        ThrowCannotConvert(GetLastError());
    }
    // A message-only window: no display, no message loop needed for the calls below.
    window_.reset(CreateWindowExW(0, MSFTEDIT_CLASS, L"", ES_MULTILINE, 0, 0, 0, 0, HWND_MESSAGE,
                                  nullptr, nullptr, nullptr));
    if (!window_.valid()) {
        ThrowCannotConvert(GetLastError());
    }
    SendMessageW(window_.get(), EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
    // The control starts in bold "System": without a plain default every unstyled run would be
    // written bold.
    const CHARFORMAT2W plain = ToCharFormat(RichFormat{u"Arial", 12});
    SendMessageW(window_.get(), EM_SETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&plain));
    SendMessageW(window_.get(), EM_SETCHARFORMAT, SCF_ALL, reinterpret_cast<LPARAM>(&plain));
}

void RichEditControl::setText(const std::u16string& text) {
    SETTEXTEX how{ST_DEFAULT, 1200};  // UTF-16
    SendMessageW(window_.get(), EM_SETTEXTEX, reinterpret_cast<WPARAM>(&how),
                 reinterpret_cast<LPARAM>(text.c_str()));
}

void RichEditControl::format(size_t start, size_t end, const RichFormat& format) {
    SendMessageW(window_.get(), EM_SETSEL, start, end);
    const CHARFORMAT2W cf = ToCharFormat(format);
    SendMessageW(window_.get(), EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&cf));
}

std::string RichEditControl::rtf() const {
    std::string out;
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&out), 0, CollectOutput};
    // In the UTF-8 code page nothing is lost; in any other, characters outside it would be.
    SendMessageW(window_.get(), EM_STREAMOUT, (CP_UTF8 << 16) | SF_USECODEPAGE | SF_RTF,
                 reinterpret_cast<LPARAM>(&stream));
    if (stream.dwError != 0) {
        ThrowCannotConvert(stream.dwError);
    }
    // Some controls end the stream with a terminating zero, which is no part of the document.
    while (!out.empty() && out.back() == '\0') {
        out.pop_back();
    }
    return slib::StandardRtfOpening(slib::EscapeRtfNonAscii(out));
}

void RichEditControl::loadRtf(const uint8_t* bytes, size_t size) {
    Input input{bytes, size};
    EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&input), 0, SupplyInput};
    SendMessageW(window_.get(), EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
    if (stream.dwError != 0) {
        ThrowCannotConvert(stream.dwError);
    }
}

std::u16string RichEditControl::text() const {
    GETTEXTLENGTHEX measure{GTL_NUMCHARS | GTL_PRECISE, 1200};
    const LRESULT length =
        SendMessageW(window_.get(), EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&measure), 0);
    if (length <= 0) {
        return {};
    }
    std::u16string text(static_cast<size_t>(length) + 1, u'\0');
    GETTEXTEX how{};
    how.cb = static_cast<DWORD>(text.size() * sizeof(char16_t));
    how.flags = GT_DEFAULT;
    how.codepage = 1200;
    const LRESULT copied = SendMessageW(window_.get(), EM_GETTEXTEX, reinterpret_cast<WPARAM>(&how),
                                        reinterpret_cast<LPARAM>(&text[0]));
    text.resize(static_cast<size_t>(std::max<LRESULT>(copied, 0)));
    return text;
}

RichFormat RichEditControl::formatOf(size_t start, size_t end, bool& uniform) const {
    SendMessageW(window_.get(), EM_SETSEL, start, end);
    CHARFORMAT2W cf{};
    cf.cbSize = sizeof(cf);
    const DWORD mask = static_cast<DWORD>(SendMessageW(
        window_.get(), EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&cf)));
    uniform = (mask & kMappedTraits) == kMappedTraits;
    return FromCharFormat(cf);
}

std::vector<RichEditControl::Run> RichEditControl::runs() const {
    const size_t length = text().size();
    std::vector<Run> runs;
    size_t start = 0;
    while (start < length) {
        // Galloping: double the step while the stretch stays uniform, then halve it to the end.
        size_t end = start + 1;
        size_t step = 1;
        bool growing = true;
        while (step > 0) {
            bool uniform = false;
            if (end + step <= length) {
                formatOf(start, end + step, uniform);
            }
            if (uniform) {
                end += step;
                step = growing ? step * 2 : step / 2;
            } else {
                growing = false;
                step /= 2;
            }
        }
        bool uniform = false;
        runs.push_back({start, end, formatOf(start, end, uniform)});
        start = end;
    }
    return runs;
}

}  // namespace bridge
