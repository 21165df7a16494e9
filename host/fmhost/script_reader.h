// fmhost's script files: calculations separated by blank lines. The lines of one calculation
// are joined with carriage returns, the host's own line break, so a text literal spanning
// lines keeps its line breaks as the host would store them.
#pragma once

#include <string>
#include <vector>

namespace fmhost::cli {

struct ScriptBlock {
    int firstLine = 0;  // 1-based line of the file where the calculation starts
    std::u16string calculation;
};

// `content` is UTF-8 (a byte-order mark is skipped); line ends may be LF or CR LF.
std::vector<ScriptBlock> SplitScript(const std::string& content);

}  // namespace fmhost::cli
