// The plug-in's one exported symbol. Every lifecycle message runs under the call mutex, so no
// message overlaps another or any function call.
#include "fmx_constants.h"
#include "fmx_record.h"
#include "foundation/error_boxes.h"
#include "shell/call_lock.h"
#include "shell/call_probe.h"
#include "shell/function_entry.h"
#include "shell/lifecycle.h"
#include "shell/plugin_export.h"
#include "shell/recheck_timer.h"
#include "shell/shell_state.h"

namespace {

void Dispatch(FmxExternCallRecord& record) {
    switch (record.whichCall) {
        case fmx::kMsgInit:
            fmlib::HandleInit(record, fmlib::PluginFunctions().functions);
            break;
        case fmx::kMsgShutdown:
            fmlib::HandleShutdown(fmlib::PluginFunctions().functions);
            break;
        case fmx::kMsgPreferences:
            fmlib::HandlePreferences();
            break;
        case fmx::kMsgGetString:
            fmlib::HandleGetString(record);
            break;
        case fmx::kMsgSessionShutdown:
            fmlib::PluginFunctions().endSession(record.parm2);
            break;
        default:
            // Idle, file shutdown, schema change and everything else: nothing to do, and the
            // result is not touched.
            break;
    }
}

}  // namespace

extern "C" VF_PLUGIN_EXPORT void FMExternCallProc(FmxExternCallRecord* record) {
    if (record == nullptr) {
        return;
    }
    // Nothing may leave toward the host as an exception. A host failure during initialisation
    // that got past the registration's own unwinding still refuses the load.
    try {
        fmlib::CallLock lock;
        fmlib::CallProbe probe;
        const slib::NoErrorBoxes noBoxes;
        fmlib::gCallRecord = record;
        try {
            Dispatch(*record);
        } catch (...) {
            if (record->whichCall == fmx::kMsgInit) {
                fmlib::StopRecheckTimer();
                record->result = static_cast<uint64_t>(fmx::kDoNotEnable);
            }
        }
    } catch (...) {
        // The lock was refused (re-entry on the same thread): the message is dropped.
    }
}
