#include "bridge_fixture.h"

#include "bridge/anchor.h"
#include "bridge/resolve_path.h"
#include "fmhost/host_objects.h"

namespace bridge_test {

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
