// Every code-page keyword's bytes against Python's codecs, under whichever system code page the
// suite was started with (it runs under 1252, 65001 and 932): "default" and "dos" follow the
// system's ANSI and OEM code pages, and must never lose a byte whatever those are.
#include <windows.h>

#include <cstdlib>
#include <string>

#include "contents_fixture.h"

namespace contents_test {
namespace {

struct Expectation {
    const char* keyword;
    UINT systemCodePage;  // 0: the same under every system code page
    const char* text;     // UTF-8
    std::string bytes;
};

const Expectation kExpectations[] = {
#include "code_page_expectations.inc"
};

// No known table differences for these texts: Python has no Mac Japanese, Korean, Chinese or
// Hebrew codec, but for these characters Shift-JIS, EUC-KR, Big5, GB2312 and ISO 8859-8 give the
// bytes Windows' tables give (code pages 10001, 10003, 10002, 10008 and 10005).

class CodePages : public ContentsTest {};

TEST_F(CodePages, TheSuiteRunsUnderTheSystemCodePageItWasStartedFor) {
    const char* expected = std::getenv("VF_EXPECTED_ACP");
    if (expected == nullptr) {
        GTEST_SKIP() << "started without VF_EXPECTED_ACP: the system code page is " << GetACP();
    }
    EXPECT_EQ(GetACP(), std::stoul(expected));
}

TEST_F(CodePages, EveryKeywordWritesTheBytesOfPythonsCodecs) {
    int systemRows = 0;
    for (const Expectation& row : kExpectations) {
        if (row.systemCodePage != 0 && row.systemCodePage != GetACP()) {
            continue;
        }
        systemRows += row.systemCodePage != 0;
        const std::u16string keyword = Quoted(Utf16(row.keyword));
        EXPECT_EQ(write(u"page.txt", Quoted(Utf16(row.text)), keyword), Succeeded()) << row.keyword;
        EXPECT_EQ(bytesOf(u"page.txt"), row.bytes) << row.keyword << " at " << GetACP();
        EXPECT_EQ(read(u"page.txt", keyword), row.text) << row.keyword;
    }
    if (std::getenv("VF_EXPECTED_ACP") != nullptr) {
        EXPECT_EQ(systemRows, 2) << "no expectations for \"default\" and \"dos\" at " << GetACP();
    }
}

}  // namespace
}  // namespace contents_test
