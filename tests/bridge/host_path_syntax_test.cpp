// Host path syntax read by each system's rule, from one table: a row says what Windows and what
// Linux make of the same text.
#include <gtest/gtest.h>

#include <string>

#include "bridge/host_path_syntax.h"

namespace {

struct SyntaxCase {
    const char16_t* host;
    const char16_t* onWindows;
    const char16_t* onLinux;
};

const SyntaxCase kCases[] = {
    {u"filewin:/C:/Data/a.txt", u"C:\\Data\\a.txt", u"/C:/Data/a.txt"},
    {u"file:/C:/x", u"C:\\x", u"/C:/x"},
    // C: is no folder name on Windows, so a Linux path there stays as given.
    {u"filelinux:/opt/Data/a b.txt", u"filelinux:/opt/Data/a b.txt", u"/opt/Data/a b.txt"},
    {u"filelinux:/", u"filelinux:/", u"/"},
    {u"file:/r\u00e9sum\u00e9/x", u"file:/r\u00e9sum\u00e9/x", u"/r\u00e9sum\u00e9/x"},
    // Not host syntax: native and relative paths come back unchanged.
    {u"/opt/a", u"/opt/a", u"/opt/a"},
    {u"a/b/c", u"a/b/c", u"a/b/c"},
    {u"C:\\x", u"C:\\x", u"C:\\x"},
    {u"", u"", u""},
    // The prefix is letters and a colon, nothing else.
    {u"fm1:/opt/a", u"fm1:/opt/a", u"fm1:/opt/a"},
    {u":/opt/a", u":/opt/a", u":/opt/a"},
    {u"my file:/opt/a", u"my file:/opt/a", u"my file:/opt/a"},
    {u"file/:x", u"file/:x", u"file/:x"},
};

#if defined(_WIN32)
constexpr bool kWindows = true;
#else
constexpr bool kWindows = false;
#endif

TEST(HostSyntaxToNative, EachSystemReadsItsOwnSyntax) {
    for (const SyntaxCase& c : kCases) {
        const std::u16string expected = kWindows ? c.onWindows : c.onLinux;
        EXPECT_EQ(bridge::HostSyntaxToNative(c.host), expected)
            << std::string(c.host, c.host + std::u16string(c.host).size());
    }
}

}  // namespace
