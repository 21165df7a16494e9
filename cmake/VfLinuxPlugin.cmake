# Vantafile.fmx, the plug-in for FileMaker Server on Linux: one ELF object exporting
# FMExternCallProc alone, needing libFMWrapper.so by its bare name (the host has it loaded
# already), with the C++ runtime and every third-party library inside and no glibc symbol
# version newer than Ubuntu 22.04's. The server shows its soname as the plug-in's version.

# Nothing of ours is seen from outside unless it says so (the entry point does).
foreach(_vf_part slib vf_archive vf_picture vf_bridge vf_shell vf_functions)
    get_target_property(_vf_kind ${_vf_part} TYPE)
    if(NOT _vf_kind STREQUAL "INTERFACE_LIBRARY")
        set_target_properties(${_vf_part} PROPERTIES CXX_VISIBILITY_PRESET hidden
                              VISIBILITY_INLINES_HIDDEN ON)
    endif()
endforeach()

option(VF_LINUX_PLUGIN "Link Vantafile.fmx (every file-manager body for POSIX must be there)" ON)
if(NOT VF_LINUX_PLUGIN)
    return()
endif()

set(VF_PLUGIN_EXPORTS ${PROJECT_SOURCE_DIR}/src/shell/Vantafile.map)
add_library(Vantafile SHARED)
# The emulated host's libFMWrapper.so: its soname is the bare name the server's library has, and
# it exports every FM_ function of the interface, so a full link proves each import exists.
target_link_libraries(Vantafile PRIVATE vf_shell vf_functions vf_bridge vf_plugin_deps FMWrapper)
set_target_properties(Vantafile PROPERTIES
    PREFIX "" SUFFIX ".fmx" OUTPUT_NAME Vantafile
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin
    # The soname is the version text, not the file's name, and no build-tree search path goes in.
    NO_SONAME ON
    SKIP_BUILD_RPATH ON
    LINK_DEPENDS ${VF_PLUGIN_EXPORTS})
target_link_options(Vantafile PRIVATE
    -Wl,-soname,${VF_VERSION}
    -Wl,--version-script=${VF_PLUGIN_EXPORTS}
    -Wl,-z,defs
    # Debian 12's static libstdc++ reaches arc4random (GLIBC_2.36) from std::random_device, which
    # the plug-in never uses: dropping unused sections drops that need too.
    -Wl,--gc-sections)
# The release form carries the C++ runtime. The sanitizer form shares the test process's: a copy
# inside leaks its exception pool at every unload, and the end-to-end suites load it per test.
if(NOT VF_SANITIZE)
    target_link_options(Vantafile PRIVATE -static-libstdc++ -static-libgcc)
endif()
