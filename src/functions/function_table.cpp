// The nineteen functions as the host sees them, and what a session leaves behind.
#include "bridge/staged_picture_options.h"
#include "functions/handlers.h"
#include "shell/function_entry.h"

namespace fmlib {

// Only Reveal and Run are bounded by the host. The others take any count, so a call with too
// few arguments reaches the handler and fails with the plug-in's own error and message.
const FunctionLayer& PluginFunctions() {
    static const FunctionLayer layer = {
        {
            {1, 0, -1, VFile_Version},  {2, 0, -1, VFile_Register},  {3, 0, -1, VFile_New},
            {4, 0, -1, VFile_Delete},   {5, 0, -1, VFile_Copy},      {6, 0, -1, VFile_Move},
            {7, 0, -1, VFile_Choose},   {8, 0, -1, VFile_Read},      {9, 0, -1, VFile_Write},
            {10, 0, -1, VFile_Get},     {11, 0, -1, VFile_Set},      {12, 0, -1, VFile_Mount},
            {13, 0, -1, VFile_Unmount}, {14, 0, -1, VFile_Open},     {15, 0, -1, VFile_Convert},
            {16, 1, 1, VFile_Reveal},   {17, 0, -1, VFile_Compress}, {18, 0, -1, VFile_DeCompress},
            {19, 1, 2, VFile_Run},
        },
        bridge::StagedPictureOptions::EndSession};
    return layer;
}

}  // namespace fmlib
