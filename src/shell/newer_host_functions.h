// Host functions newer than the oldest host we accept. Windows refuses to load a library whose
// import the host's FMWrapper.dll lacks, before our own version check could run, and a Linux
// loader binding at once does the same with libFMWrapper.so, so these are never imported: each is
// looked up by name when called, and only on a host whose extension version has it. Callers fall
// back to what the older host offers.
#pragma once

#include <cstdint>

namespace fmlib {

// Extension versions that brought the functions we use (each function's own entry says which).
constexpr int16_t kFileNameStreamsVersion = 51;  // FM_BinaryData_{Get,Add}{FNAM,SIZE}Data
constexpr int16_t kPostscriptFontsVersion = 55;  // FM_Data_GetPostscriptFont{ID,Info}
constexpr int16_t kSessionsVersion = 56;         // FM_ExprEnv_SessionID
constexpr int16_t kInt64NumbersVersion = 59;     // FM_FixPt_AssignInt64

// Kept from the initialise message for the life of the library.
void RememberHostExtensionVersion(int16_t version);

// The host's export `name`, or null when the host is older than `since` or does not export it.
void* FindNewerHostFunction(const char* name, int16_t since);

template <typename Function>
Function NewerHostFunction(const char* name, int16_t since) {
    return reinterpret_cast<Function>(FindNewerHostFunction(name, since));
}

}  // namespace fmlib
