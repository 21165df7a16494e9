// NewerImport.fmx64: a plug-in that imports one export of extension version 59 by name, as ours
// once did, so the loader tests can see a host older than that refuse it.
#include <windows.h>

#include "fmx_functions.h"
#include "fmx_record.h"

extern "C" __declspec(dllexport) void FMExternCallProc(FmxExternCallRecord* record) {
    if (record->whichCall == 0) {
        record->result = 55;
    }
    if (record->whichCall == 200) {  // never sent: keeps the import without calling it
        FmxErr slot{};
        FM_FixPt_AssignInt64(nullptr, 0, slot);
    }
}
