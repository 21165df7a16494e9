// Value lists (values separated by carriage returns), character codes and base64.
#include <cstdio>
#include <string>
#include <utility>

#include "core/base64.h"
#include "core/calc/builtin_impls.h"
#include "core/utf.h"

namespace fmhost::calc {
namespace {

// [begin, end) of each value; CR, LF and CR LF separate; a final separator ends the last value.
std::vector<std::pair<uint32_t, uint32_t>> SplitValues(const std::u16string& text) {
    std::vector<std::pair<uint32_t, uint32_t>> values;
    size_t begin = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u'\r' && text[i] != u'\n')
            continue;
        values.emplace_back(static_cast<uint32_t>(begin), static_cast<uint32_t>(i));
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
            ++i;
        begin = i + 1;
    }
    if (begin < text.size()) {
        values.emplace_back(static_cast<uint32_t>(begin), static_cast<uint32_t>(text.size()));
    }
    return values;
}

// The stream a file lives in: the one MAIN names, else FILE, else the first that is not FNAM
// or SIZE.
const Bytes* MainStream(const Container& container) {
    if (const Bytes* main = container.BytesOf(stream_type::kMain); main && main->size() >= 4) {
        const TypeCode named((*main)[0], (*main)[1], (*main)[2], (*main)[3]);
        if (const Bytes* bytes = container.BytesOf(named))
            return bytes;
    }
    if (const Bytes* file = container.BytesOf(stream_type::kFile))
        return file;
    for (int32_t i = 0; i < container.Count(); ++i) {
        const TypeCode type = container.TypeAt(i);
        if (type != stream_type::kFileName && type != stream_type::kPictureSize &&
            type != stream_type::kMain) {
            return container.StreamAt(i)->bytes.get();
        }
    }
    return nullptr;
}

}  // namespace

// Non-empty arguments joined with carriage returns.
ErrorCode List(EvalContext&, const std::vector<Value>& args, Value& result) {
    Text joined;
    for (const Value& arg : args) {
        const Text text = arg.AsText();
        if (text.Empty())
            continue;
        if (!joined.Empty())
            joined.AppendText(Text(u"\r"));
        joined.AppendText(text);
    }
    result = Value(std::move(joined));
    return kNoError;
}

ErrorCode ValueCount(EvalContext&, const std::vector<Value>& args, Value& result) {
    result = Value(Decimal(static_cast<int64_t>(SplitValues(args[0].AsText().Chars()).size())));
    return kNoError;
}

ErrorCode GetValue(EvalContext&, const std::vector<Value>& args, Value& result) {
    const Text text = args[0].AsText();
    const auto values = SplitValues(text.Chars());
    const int64_t n = IntegerArgument(args[1], 0, int64_t(values.size()) + 1);
    if (n < 1 || n > static_cast<int64_t>(values.size())) {
        result = Value::FromText(u"");
        return kNoError;
    }
    const auto [begin, end] = values[static_cast<size_t>(n - 1)];
    result = Value(text.Range(begin, end - begin));
    return kNoError;
}

// Five decimal digits per character, the first character in the lowest group:
// Char ( 6600065 ) is "AB".
ErrorCode Char(EvalContext&, const std::vector<Value>& args, Value& result) {
    const Decimal number = args[0].AsNumber().Truncated();
    std::u16string chars;
    if (number.IsValid() && !number.IsNegative()) {
        const std::string digits = number.ToString();
        for (size_t end = digits.size(); end > 0;) {
            const size_t begin = end >= 5 ? end - 5 : 0;
            const uint32_t codePoint =
                static_cast<uint32_t>(std::stoul(digits.substr(begin, end - begin)));
            end = begin;
            if (codePoint == 0 || (codePoint >= 0xD800 && codePoint < 0xE000))
                continue;
            if (codePoint >= 0x10000) {
                chars.push_back(static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
                chars.push_back(static_cast<char16_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF)));
            } else {
                chars.push_back(static_cast<char16_t>(codePoint));
            }
        }
    }
    result = Value::FromText(std::move(chars));
    return kNoError;
}

ErrorCode Code(EvalContext&, const std::vector<Value>& args, Value& result) {
    const std::u16string chars = args[0].AsText().Chars();
    std::vector<uint32_t> codePoints;
    for (size_t i = 0; i < chars.size(); ++i) {
        uint32_t cp = chars[i];
        if (cp >= 0xD800 && cp < 0xDC00 && i + 1 < chars.size() && chars[i + 1] >= 0xDC00 &&
            chars[i + 1] < 0xE000) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (chars[i + 1] - 0xDC00);
            ++i;
        }
        codePoints.push_back(cp);
    }
    if (codePoints.empty()) {
        result = Value::Empty(NativeType::kNumber);
        return kNoError;
    }
    std::string digits;
    for (size_t i = codePoints.size(); i-- > 0;) {
        char group[16];
        std::snprintf(group, sizeof group, digits.empty() ? "%u" : "%05u", codePoints[i]);
        digits += group;
    }
    result = Value(Decimal::Parse(digits).value_or(Decimal::Invalid()));
    return kNoError;
}

// Text is encoded as UTF-8; a container by the bytes of its file.
ErrorCode Base64Encode(EvalContext&, const std::vector<Value>& args, Value& result) {
    if (args[0].Type() == NativeType::kContainer) {
        const Bytes* bytes = MainStream(args[0].AsContainer());
        result = Value::FromText(bytes ? fmhost::Base64Encode(bytes->data(), bytes->size())
                                       : std::u16string());
        return kNoError;
    }
    const std::string utf8 = args[0].AsText().ToUtf8();
    result = Value::FromText(
        fmhost::Base64Encode(reinterpret_cast<const uint8_t*>(utf8.data()), utf8.size()));
    return kNoError;
}

// With a file name the result is a container holding that file as the host stores an inserted
// file (a picture stream for a picture, else FILE; FNAM); otherwise the bytes are read as UTF-8
// text. Text that is not base64 gives "?".
ErrorCode Base64Decode(EvalContext&, const std::vector<Value>& args, Value& result) {
    const std::optional<Bytes> bytes = fmhost::Base64Decode(args[0].AsText().Chars());
    if (!bytes) {
        result = Value::Unknown();
        return kNoError;
    }
    const Text fileName = args.size() > 1 ? args[1].AsText() : Text();
    if (fileName.Empty()) {
        result = Value(Text(Utf8ToUtf16(
            std::string_view(reinterpret_cast<const char*>(bytes->data()), bytes->size()))));
        return kNoError;
    }
    result = Value(Container::FromFile(fileName, bytes->data(), bytes->size()));
    return kNoError;
}

// A container stored as a reference only: no data stream, just the file-path list in FNAM (one
// "file:", "filewin:", "image:" ... path a line), as the host keeps a file it does not embed.
ErrorCode ContainerReference(EvalContext&, const std::vector<Value>& args, Value& result) {
    Container container;
    const Text pathList = args[0].AsText();
    if (!pathList.Empty()) {
        container.AddFileName(pathList);
    }
    result = Value(std::move(container));
    return kNoError;
}

}  // namespace fmhost::calc
