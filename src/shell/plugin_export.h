// What the plug-in offers the host by name. Everything else stays inside: the Windows module
// exports only what its .def file lists, the ELF object is built with hidden visibility.
#pragma once

#if defined(_WIN32)
#define VF_PLUGIN_EXPORT __declspec(dllexport)
#else
#define VF_PLUGIN_EXPORT __attribute__((visibility("default")))
#endif
