// VFile_Version( { versionFormat } ): the plug-in's version in one of four forms.
#include <cstdio>
#include <string>

#include "functions/handlers.h"
#include "resources/resource_ids.h"
#include "resources/version.h"
#include "shell/call_frame.h"
#include "shell/host_data.h"
#include "shell/keyword_lookup.h"
#include "shell/resource_text.h"
#include "shell/result.h"
#include "shell/system_name.h"

namespace {

const char* const kVersionFormats[] = {"short", "long", "platform", "autoupdate"};
enum VersionFormat { kShort = 0, kLong = 1, kPlatform = 2, kAutoUpdate = 3 };

constexpr char16_t kVersion[] = u"" VF_VERSION_SHORT_TEXT;
constexpr size_t kNameCapacity = 256;

std::u16string AutoUpdateVersion() {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%02d%02d%02d%02d", VF_VERSION_MAJOR, VF_VERSION_MINOR,
                  VF_VERSION_PATCH, VF_VERSION_BUILD);
    return std::u16string(digits, digits + std::char_traits<char>::length(digits));
}

std::u16string VersionText(int32_t format) {
    switch (format) {
        case kLong:
            return fmlib::LoadResourceString(VF_STR_PLUGIN_NAME, kNameCapacity) + u" " + kVersion;
        case kPlatform:
            return fmlib::SystemName();
        case kAutoUpdate:
            return AutoUpdateVersion();
        default:  // "short", no argument, and any unknown keyword
            return kVersion;
    }
}

}  // namespace

FmxErrcode VFile_Version(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args,
                         FmxData& result) {
    return fmlib::RunInBareFrame(
        {functionId, env, args, result}, [](const fmlib::FunctionCall& call) {
            int32_t format = kShort;
            if (fmlib::DataVectSize(call.args) >= 1) {
                format =
                    fmlib::LookupKeyword(fmlib::DataVectAtAsText(call.args, 0), kVersionFormats);
            }
            fmlib::SetResultText(call.result, VersionText(format));
        });
}
