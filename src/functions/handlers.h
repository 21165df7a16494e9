// The host-facing handlers of the nineteen functions, one file each (vfile_<name>.cpp). Each
// has the host's callback signature and runs its body in the call frame (shell/call_frame.h).
#pragma once

#include <cstdint>

#include "fmx_functions.h"

#define VF_DECLARE_HANDLER(name)                                                        \
    FmxErrcode name(int16_t functionId, const FmxExprEnv& env, const FmxDataVect& args, \
                    FmxData& result)

VF_DECLARE_HANDLER(VFile_Version);
VF_DECLARE_HANDLER(VFile_Register);
VF_DECLARE_HANDLER(VFile_New);
VF_DECLARE_HANDLER(VFile_Delete);
VF_DECLARE_HANDLER(VFile_Copy);
VF_DECLARE_HANDLER(VFile_Move);
VF_DECLARE_HANDLER(VFile_Choose);
VF_DECLARE_HANDLER(VFile_Read);
VF_DECLARE_HANDLER(VFile_Write);
VF_DECLARE_HANDLER(VFile_Get);
VF_DECLARE_HANDLER(VFile_Set);
VF_DECLARE_HANDLER(VFile_Mount);
VF_DECLARE_HANDLER(VFile_Unmount);
VF_DECLARE_HANDLER(VFile_Open);
VF_DECLARE_HANDLER(VFile_Convert);
VF_DECLARE_HANDLER(VFile_Reveal);
VF_DECLARE_HANDLER(VFile_Compress);
VF_DECLARE_HANDLER(VFile_DeCompress);
VF_DECLARE_HANDLER(VFile_Run);

#undef VF_DECLARE_HANDLER
