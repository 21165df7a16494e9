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

# Gives `target` (a SHARED library) the plug-in's form: the pieces the plug-in links, one export,
# the version as soname, no search path, every symbol resolved, the C++ runtime inside (its glibc
# stand-ins come from VfLinuxRuntime.cmake).
function(vf_linux_plugin_form target)
    set(exports ${PROJECT_SOURCE_DIR}/src/shell/Vantafile.map)
    # The emulated host's libFMWrapper.so: its soname is the bare name the server's library has,
    # and it exports every FM_ function of the interface, so a full link proves each import exists.
    target_link_libraries(${target} PRIVATE vf_shell vf_functions vf_bridge vf_plugin_deps
                                            FMWrapper)
    set_target_properties(${target} PROPERTIES
        PREFIX ""
        LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin
        # The soname is the version text, not the file's name, and no build-tree search path goes
        # in.
        NO_SONAME ON
        SKIP_BUILD_RPATH ON
        LINK_DEPENDS ${exports})
    target_link_options(${target} PRIVATE
        -Wl,-soname,${VF_VERSION}
        -Wl,--version-script=${exports}
        -Wl,-z,defs)
    # The release form carries its C++ runtime. A sanitizer build uses the shared one the host has
    # loaded: the sanitizers then see the plug-in's operator new and delete, and the runtime's
    # emergency exception pool (72,704 bytes, allocated at load and never freed by GCC 12) stays
    # reachable instead of being reported as a leak once the host unloads the plug-in. GCC 12 has
    # no setting that turns the pool off, and after the unload no suppression can name its frames.
    if(NOT VF_SANITIZE)
        target_link_options(${target} PRIVATE -static-libstdc++ -static-libgcc)
    endif()
endfunction()

add_library(Vantafile SHARED)
vf_linux_plugin_form(Vantafile)
set_target_properties(Vantafile PROPERTIES SUFFIX ".fmx" OUTPUT_NAME Vantafile)
