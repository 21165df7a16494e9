#include "bridge_fixture.h"

#include "bridge/anchor.h"
#include "bridge/resolve_path.h"
#include "fmhost/host_objects.h"
#include "foundation/exception.h"
#include "foundation/utf16_string.h"

namespace bridge_test {

std::string Narrow(const std::u16string& text) {
    return slib::String(text).toUtf8();
}

std::u16string FromWide(const std::wstring& text) {
    return std::u16string(text.begin(), text.end());
}

std::string FailureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const slib::Exception& exception) {
        return std::to_string(exception.error()->code()) + " " + exception.what();
    }
    return "";
}

slib::Path Anchor() {
    fmhost::driver::ExprEnvPtr env(
        fmhost::driver::Checked([](FmxErr& err) { return FM_ExprEnv_Constructor1(err); }));
    return bridge::ResolveAnchor(*env);
}

std::u16string Resolve(const slib::Path& anchor, const std::u16string& hostPath, int style) {
    const fmhost::driver::TextPtr text = fmhost::driver::MakeText(hostPath);
    return bridge::ResolvePath(anchor, *text, style)->units();
}

}  // namespace bridge_test
