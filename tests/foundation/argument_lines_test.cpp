// VFile_Run's text to a program's arguments: the same split on every system.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foundation/argument_lines.h"

namespace {

struct LinesCase {
    const char16_t* text;
    std::vector<std::u16string> arguments;
};

TEST(ArgumentLines, SplitsAtCarriageReturnsOnly) {
    const LinesCase cases[] = {
        {u"", {}},
        {u"one", {u"one"}},
        {u"one\rtwo", {u"one", u"two"}},
        // An empty line is an empty argument, not none; a trailing return makes one more.
        {u"\r", {u"", u""}},
        {u"a\r\rb", {u"a", u"", u"b"}},
        {u"a\r", {u"a", u""}},
        // Spaces, quotes and line feeds belong to the argument they are in.
        {u"a b\r\"c\"\nd", {u"a b", u"\"c\"\nd"}},
    };
    for (const LinesCase& c : cases) {
        EXPECT_EQ(slib::SplitArgumentLines(c.text), c.arguments)
            << "text of " << std::u16string(c.text).size();
    }
}

}  // namespace
