#include "export_versions.h"

#include <cstring>

namespace fmwrapper {

namespace {

struct ExportVersion {
    const char* name;
    int16_t version;
};

// Every export the interface marks as newer than the first versions; all others are older.
constexpr ExportVersion kNewerExports[] = {
    {"FM_BinaryData_AddFNAMData", 51},
    {"FM_BinaryData_AddSIZEData", 51},
    {"FM_BinaryData_GetFNAMData", 51},
    {"FM_BinaryData_GetSIZEData", 51},
    {"FM_BinaryData_Constructor3", 54},
    {"FM_ExprEnv_ExecuteFileSQLTextResult", 54},
    {"FM_BinaryData_AddAppend", 55},
    {"FM_BinaryData_AddBegin", 55},
    {"FM_BinaryData_AddFinish", 55},
    {"FM_BinaryData_Constructor4", 55},
    {"FM_Data_GetPostscriptFontID", 55},
    {"FM_Data_GetPostscriptFontInfo", 55},
    {"FM_ExprEnv_FileID", 56},
    {"FM_ExprEnv_RegisterExternalFunctionEx", 56},
    {"FM_ExprEnv_SessionID", 56},
    {"FM_ExprEnv_RegisterScriptStep", 57},
    {"FM_ExprEnv_UnRegisterScriptStep", 57},
    {"FM_Text_GetBytesEx", 57},
    {"FM_FixPt_AsLong64", 59},
    {"FM_FixPt_AssignInt64", 59},
    {"FM_FixPt_Decrement64", 59},
    {"FM_FixPt_Increment64", 59},
    {"FM_ExprEnv_EvaluateGetFunction", 60},
    {"FM_ExprEnv_EvaluateConvertFromFileMakerPath", 62},
    {"FM_ExprEnv_EvaluateConvertToFileMakerPath", 62},
};

}  // namespace

int16_t ExportIntroducedIn(const std::string& name) {
    for (const ExportVersion& entry : kNewerExports) {
        if (name == entry.name) {
            return entry.version;
        }
    }
    return 0;
}

}  // namespace fmwrapper
