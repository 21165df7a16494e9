// String-table ids of the plug-in's resources; shared by the .rc file and the C++ code.
#pragma once

#define VF_STR_PLUGIN_NAME 1
#define VF_STR_DESCRIPTION 2
#define VF_STR_VERSION 3
// Function prototypes: id = VF_STR_PROTOTYPE_BASE + function id (1..19).
#define VF_STR_PROTOTYPE_BASE 100
