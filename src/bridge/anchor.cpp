#include "bridge/anchor.h"

#include "bridge/host_path.h"
#include "foundation/exception.h"
#include "shell/host_data.h"
#include "shell/host_env.h"
#include "shell/host_objects.h"
#include "shell/host_text.h"

namespace bridge {

namespace {

// Evaluates a Get() calculation into `text` and returns the host's error (text untouched then).
FmxErrcode EvaluateText(const FmxExprEnv& env, const char* calculation, std::u16string& text) {
    fmlib::TextPtr expression = fmlib::MakeNativeText(calculation);
    fmlib::DataPtr value = fmlib::NewData();
    const FmxErrcode error = fmlib::ExprEnvEvaluate(env, *expression, *value);
    if (error == 0) {
        text = fmlib::TextUnits(fmlib::DataGetAsText(*value));
    }
    return error;
}

[[noreturn]] void ThrowHostError(FmxErrcode error) {
    slib::Throw(error, "Unexpected FileMaker Error");
}

slib::Path AnchorOfHostText(const std::u16string& anchorText) {
    try {
        return slib::Path(HostPathToNative(anchorText));
    } catch (const slib::Exception&) {
        // A folder the host gives in a form we cannot use leaves the anchor where a fresh one
        // stands: the current directory.
        return slib::Path();
    }
}

}  // namespace

std::u16string AnchorTextOfFilePath(const std::u16string& filePath) {
    const size_t slash = filePath.rfind(u'/');
    if (slash == std::u16string::npos) {
        return slib::Path::kDefaultAnchor;
    }
    return filePath.substr(0, slash + 1);
}

slib::Path ResolveAnchor(const FmxExprEnv& env) {
    std::u16string filePath;
    const FmxErrcode error = EvaluateText(env, "Get(filePath)", filePath);
    if (error == kNoDatabaseFile) {
        return slib::Path();
    }
    if (error != 0) {
        ThrowHostError(error);
    }
    if (filePath.compare(0, 6, u"fmnet:") != 0) {
        return AnchorOfHostText(AnchorTextOfFilePath(filePath));
    }
    // A database served by another machine has no folder here: use the application's own.
    std::u16string applicationFolder;
    if (const FmxErrcode fallbackError =
            EvaluateText(env, "Get(FileMakerPath)", applicationFolder)) {
        ThrowHostError(fallbackError);
    }
    return AnchorOfHostText(applicationFolder.empty() ? std::u16string(slib::Path::kDefaultAnchor)
                                                      : applicationFolder);
}

}  // namespace bridge
