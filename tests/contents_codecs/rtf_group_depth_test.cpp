// The nesting depth of RTF groups, measured without reading the document.
#include <gtest/gtest.h>

#include <string>

#include "foundation/rtf_group_depth.h"

namespace {

TEST(RtfGroupDepth, CountsOnlyRealGroups) {
    struct Row {
        std::string rtf;
        size_t depth;
    };
    for (const Row& row : {
             Row{"", 0}, Row{"{\\rtf1 a}", 1}, Row{"{\\rtf1 {\\b a}{\\i b}}", 2},
             Row{"{\\rtf1 \\{\\{\\{ \\\\{x}}", 2},    // escaped braces are text
             Row{"{\\rtf1 {\\pict\\bin4 {{{{}}", 2},  // so are \bin's bytes
             Row{"{\\rtf1 {\\pict\\bin999 {{{", 2},   // even past the end
             Row{"{\\rtf1 \\binary{{x}}}", 3},        // a longer word is no \bin
             Row{"{\\rtf1 \\bin-4{{x}}}", 3},         // nor one without a length
             Row{"}}}{", 1},                          // stray closing braces count nothing
             Row{"{{{", 3},                           // unclosed groups still count
             Row{"{\\rtf1 x\\", 1},                   // a lone backslash at the end
         }) {
        EXPECT_EQ(slib::RtfGroupDepth(row.rtf, 100), row.depth) << row.rtf;
    }
}

TEST(RtfGroupDepth, StopsJustPastTheLimit) {
    const std::string deep = std::string(100000, '{') + std::string(100000, '}');
    EXPECT_EQ(slib::RtfGroupDepth(deep, 512), 513u);
    EXPECT_EQ(slib::RtfGroupDepth(std::string(512, '{'), 512), 512u);
}

}  // namespace
