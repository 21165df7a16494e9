// Entry point the host calls for every lifecycle message. Skeleton: answers the get-string
// queries; initialisation, registration and shutdown arrive with the shell.
#include <windows.h>

#include <cstring>

#include "fmx_constants.h"
#include "fmx_record.h"
#include "resources/resource_ids.h"

namespace {

constexpr wchar_t kOptions[] = L"QrvF1YnYnnn";

void AnswerGetString(FmxExternCallRecord& record) {
    auto* buffer = reinterpret_cast<wchar_t*>(record.result);
    if (buffer == nullptr) {
        return;
    }
    const auto capacity = static_cast<int>(record.parm3);
    const auto instance = reinterpret_cast<HINSTANCE>(record.instanceID);
    switch (record.parm1) {
        case fmx::kStrName:
            LoadStringW(instance, VF_STR_PLUGIN_NAME, buffer, capacity);
            break;
        case fmx::kStrPreferences:
            LoadStringW(instance, VF_STR_DESCRIPTION, buffer, capacity);
            break;
        case fmx::kStrOptions:
            std::memcpy(buffer, kOptions, sizeof(kOptions));
            break;
        default:
            break;
    }
}

}  // namespace

extern "C" __declspec(dllexport) void FMExternCallProc(FmxExternCallRecord* record) {
    if (record == nullptr) {
        return;
    }
    switch (record->whichCall) {
        case fmx::kMsgInit:
            record->result = static_cast<uint64_t>(fmx::kCurrentExtnVersion);
            break;
        case fmx::kMsgGetString:
            AnswerGetString(*record);
            break;
        default:
            break;
    }
}
