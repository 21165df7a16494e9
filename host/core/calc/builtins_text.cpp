// Text functions. Positions are 1-based as in the language; results keep the source's styles.
#include <algorithm>

#include "core/calc/builtin_impls.h"
#include "core/case_mapping.h"

namespace fmhost::calc {
namespace {

constexpr int64_t kLimit = int64_t(1) << 40;

Value NumberValue(int64_t n) {
    return Value(Decimal(n));
}

}  // namespace

Text SubstituteText(const Text& source, const Text& search, const Text& replacement) {
    if (search.Empty())
        return source;
    Text out;
    uint32_t copied = 0;
    for (uint32_t found = source.Find(search, 0); found != Text::kNotFound;
         found = source.Find(search, found + search.Size())) {
        out.AppendText(source, copied, found - copied);
        out.AppendText(replacement);
        copied = found + search.Size();
    }
    out.AppendText(source, copied);
    return out;
}

ErrorCode Length(EvalContext&, const std::vector<Value>& args, Value& result) {
    result = NumberValue(args[0].AsText().Size());
    return kNoError;
}

ErrorCode Left(EvalContext&, const std::vector<Value>& args, Value& result) {
    const int64_t count = IntegerArgument(args[1], 0, kLimit);
    result = Value(
        args[0].AsText().Range(0, static_cast<uint32_t>(std::min<int64_t>(count, Text::kEnd))));
    return kNoError;
}

ErrorCode Right(EvalContext&, const std::vector<Value>& args, Value& result) {
    const Text text = args[0].AsText();
    const int64_t count = IntegerArgument(args[1], 0, text.Size());
    result = Value(text.Range(text.Size() - static_cast<uint32_t>(count)));
    return kNoError;
}

// The characters numbered start .. start + count - 1 that exist.
ErrorCode Middle(EvalContext&, const std::vector<Value>& args, Value& result) {
    const Text text = args[0].AsText();
    const int64_t start = IntegerArgument(args[1], -kLimit, kLimit);
    const int64_t count = IntegerArgument(args[2], 0, kLimit);
    const int64_t begin = std::clamp<int64_t>(start - 1, 0, text.Size());
    const int64_t end = std::clamp<int64_t>(start - 1 + count, begin, text.Size());
    result = Value(text.Range(static_cast<uint32_t>(begin), static_cast<uint32_t>(end - begin)));
    return kNoError;
}

// Case-insensitive; a negative occurrence searches backwards from `start`. 0 when not found.
ErrorCode Position(EvalContext&, const std::vector<Value>& args, Value& result) {
    const std::u16string text = ToLower(args[0].AsText().Chars());
    const std::u16string search = ToLower(args[1].AsText().Chars());
    const int64_t start = IntegerArgument(args[2], -kLimit, kLimit);
    int64_t occurrence = IntegerArgument(args[3], -kLimit, kLimit);
    const int64_t size = static_cast<int64_t>(text.size());
    size_t found = std::u16string::npos;
    if (search.empty() || occurrence == 0) {
        // not found
    } else if (occurrence > 0) {
        for (int64_t from = std::max<int64_t>(start, 1) - 1; from <= size; from = found + 1) {
            found = text.find(search, static_cast<size_t>(from));
            if (found == std::u16string::npos || --occurrence == 0)
                break;
        }
    } else {
        for (int64_t from = std::min<int64_t>(start, size) - 1; from >= 0;
             from = int64_t(found) - 1) {
            found = text.rfind(search, static_cast<size_t>(from));
            if (found == std::u16string::npos || ++occurrence == 0)
                break;
        }
    }
    result = NumberValue(occurrence == 0 && found != std::u16string::npos ? int64_t(found) + 1 : 0);
    return kNoError;
}

// Occurrences may overlap: "aa" occurs twice in "aaa".
ErrorCode PatternCount(EvalContext&, const std::vector<Value>& args, Value& result) {
    const std::u16string text = ToLower(args[0].AsText().Chars());
    const std::u16string search = ToLower(args[1].AsText().Chars());
    int64_t count = 0;
    if (!search.empty()) {
        for (size_t found = text.find(search); found != std::u16string::npos;
             found = text.find(search, found + 1)) {
            ++count;
        }
    }
    result = NumberValue(count);
    return kNoError;
}

ErrorCode Upper(EvalContext&, const std::vector<Value>& args, Value& result) {
    Text text = args[0].AsText();
    text.Uppercase();
    result = Value(std::move(text));
    return kNoError;
}

ErrorCode Lower(EvalContext&, const std::vector<Value>& args, Value& result) {
    Text text = args[0].AsText();
    text.Lowercase();
    result = Value(std::move(text));
    return kNoError;
}

// Leading and trailing blanks (U+0020) only.
ErrorCode Trim(EvalContext&, const std::vector<Value>& args, Value& result) {
    const Text text = args[0].AsText();
    const std::u16string& chars = text.Chars();
    const size_t begin = chars.find_first_not_of(u' ');
    if (begin == std::u16string::npos) {
        result = Value::FromText(u"");
        return kNoError;
    }
    const size_t end = chars.find_last_not_of(u' ') + 1;
    result = Value(text.Range(static_cast<uint32_t>(begin), static_cast<uint32_t>(end - begin)));
    return kNoError;
}

}  // namespace fmhost::calc
