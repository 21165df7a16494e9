#include "items_fixture.h"

namespace items_test {

std::u16string Quoted(const std::u16string& text) {
    std::u16string quoted = u"\"";
    for (const char16_t unit : text) {
        if (unit == u'"' || unit == u'\\') {
            quoted += u'\\';
        }
        quoted += unit;
    }
    return quoted + u"\"";
}

std::string Succeeded() {
    return "0 | No Error Message | No Error Message";
}

std::string Failed(int code, const std::string& message) {
    return std::to_string(code) + " | " + std::to_string(code) + " | " + message;
}

void ItemsTest::SetUp() {
    ScratchTest::SetUp();
    ASSERT_TRUE(host_.SetFile(kFmhostFileLocal, Wide(path(u"Solution.fmp12"))));
    ASSERT_TRUE(host_.LoadPlugin(Wide(BesideProgram(u"Vantafile.fmx64"))).Enabled());
}

std::string ItemsTest::evaluate(const std::u16string& calculation) {
    const fmhost::driver::Evaluation outcome = host_.Evaluate(calculation);
    return outcome.error == 0 ? outcome.text : "host error " + std::to_string(outcome.error);
}

std::string ItemsTest::call(const std::u16string& calculation) {
    const std::string cleared =
        evaluate(u"Let ( [ $$VFile_LastError = \"\" ; $$VFile_LastErrorMessage = \"\" ] ; 1 )");
    if (cleared != "1") {
        return "globals not cleared: " + cleared;
    }
    const std::string result = evaluate(calculation);
    return result + " | " + evaluate(u"VFile_Get( \"lastError\" )") + " | " +
           evaluate(u"VFile_Get( \"lastErrorMessage\" )");
}

}  // namespace items_test
