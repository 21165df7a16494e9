#include "items_fixture.h"

namespace items_test {

std::wstring HostText(const std::u16string& text) {
    std::wstring wide;
    for (size_t i = 0; i < text.size(); ++i) {
        char32_t unit = text[i];
        const bool pairs = sizeof(wchar_t) == 4 && unit >= 0xD800 && unit < 0xDC00 &&
                           i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
        if (pairs) {
            unit = 0x10000 + ((unit - 0xD800) << 10) + (text[++i] - 0xDC00);
        }
        wide += static_cast<wchar_t>(unit);
    }
    return wide;
}

std::u16string BuiltPlugin() {
    const std::string name = VF_PLUGIN_FILE_NAME;
    return BesideProgram(std::u16string(name.begin(), name.end()));
}

std::u16string FileForm(const std::u16string& path) {
    std::u16string form = path[0] == u'/' ? u"file:" : u"file:/";
    for (const char16_t unit : path) {
        form += unit == u'\\' ? u'/' : unit;
    }
    return form;
}

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
    ASSERT_TRUE(host_.SetFile(kFmhostFileLocal, HostText(path(u"Solution.fmp12"))));
    ASSERT_TRUE(host_.LoadPlugin(HostText(BuiltPlugin())).Enabled());
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
