// The host's answers to the Get() functions that depend on the machine and the database.
#include "fault_injection.h"
#include "host_runtime.h"
#include "host_system.h"

namespace fmwrapper {
namespace {

using fmhost::Value;

Value FolderValue(const std::u16string& native) {
    return Value(fmhost::Text(HostFolderPath(native)));
}

}  // namespace

fmhost::Session& HostContext::GetSession() {
    return HostRuntime::Instance().CurrentSession();
}

const fmhost::FunctionRegistry* HostContext::Functions() const {
    return &HostRuntime::Instance().Registry();
}

fmhost::ErrorCode HostContext::GetValue(fmhost::GetFunction function, Value& result) {
    using fmhost::GetFunction;
    const HostSettings settings = HostRuntime::Instance().Settings();
    switch (function) {
        case GetFunction::kApplicationVersion:
            result = Value(fmhost::Text(settings.applicationVersion));
            return fmhost::kNoError;
        case GetFunction::kSystemPlatform:
            result = Value(fmhost::Decimal(SystemPlatform()));
            return fmhost::kNoError;
        case GetFunction::kFilePath:
            if (const int16_t injected = faults::FilePathFault())
                return injected;
            if (settings.fileMode == FileMode::kNone)
                return fmhost::kErrNoDatabase;
            result = Value(fmhost::Text(settings.filePath));
            return fmhost::kNoError;
        case GetFunction::kFileMakerPath:
            result = FolderValue(ExecutableFolder());
            return fmhost::kNoError;
        case GetFunction::kDocumentsPath:
            result = FolderValue(DocumentsFolder());
            return fmhost::kNoError;
        case GetFunction::kDesktopPath:
            result = FolderValue(DesktopFolder());
            return fmhost::kNoError;
        case GetFunction::kTemporaryPath:
            result = FolderValue(TemporaryFolder());
            return fmhost::kNoError;
    }
    return fmhost::kErrBadGetParameter;
}

}  // namespace fmwrapper
