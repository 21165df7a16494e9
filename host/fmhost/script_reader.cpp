#include "script_reader.h"

#include "value_format.h"

namespace fmhost::cli {
namespace {

bool IsBlank(const std::string& line) {
    return line.find_first_not_of(" \t\r") == std::string::npos;
}

}  // namespace

std::vector<ScriptBlock> SplitScript(const std::string& content) {
    std::string text = content;
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0)
        text.erase(0, 3);
    std::vector<ScriptBlock> blocks;
    std::string current;
    int currentStart = 0;
    int lineNumber = 0;
    size_t start = 0;
    auto flush = [&] {
        if (!current.empty())
            blocks.push_back({currentStart, driver::FromUtf8(current)});
        current.clear();
    };
    while (start <= text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        std::string line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        ++lineNumber;
        if (IsBlank(line)) {
            flush();
        } else {
            if (current.empty()) {
                currentStart = lineNumber;
            } else {
                current += '\r';
            }
            current += line;
        }
        start = end + 1;
    }
    flush();
    return blocks;
}

}  // namespace fmhost::cli
