# vf_libdeflate: libdeflate for whole-buffer deflate, inflate and CRC-32.
# Windows: compiled here from Debian's source package (scripts/fetch-libdeflate.sh puts it in
# .cache/libdeflate/source) and linked statically, since the plug-in may import no codec DLL.
# Native: Debian's libdeflate-dev, its static archive (the Linux plug-in needs no codec .so).
if(VF_WINDOWS)
    set(VF_LIBDEFLATE_SOURCE ${PROJECT_SOURCE_DIR}/.cache/libdeflate/source
        CACHE PATH "libdeflate source tree (Debian's source package)")
    if(NOT EXISTS ${VF_LIBDEFLATE_SOURCE}/libdeflate.h)
        message(FATAL_ERROR "No libdeflate source in ${VF_LIBDEFLATE_SOURCE}: run scripts/fetch-libdeflate.sh")
    endif()
    file(GLOB _vf_libdeflate_sources ${VF_LIBDEFLATE_SOURCE}/lib/*.c
         ${VF_LIBDEFLATE_SOURCE}/lib/x86/*.c)
    add_library(vf_libdeflate STATIC ${_vf_libdeflate_sources})
    # Its own build uses -O2 and no warnings of ours; the library is theirs, not ours to lint.
    target_compile_options(vf_libdeflate PRIVATE -O2 -w)
    target_include_directories(vf_libdeflate SYSTEM PUBLIC ${VF_LIBDEFLATE_SOURCE})
else()
    find_path(VF_LIBDEFLATE_INCLUDE libdeflate.h REQUIRED)
    find_library(VF_LIBDEFLATE_LIBRARY NAMES libdeflate.a REQUIRED)
    add_library(vf_libdeflate INTERFACE)
    target_include_directories(vf_libdeflate SYSTEM INTERFACE ${VF_LIBDEFLATE_INCLUDE})
    target_link_libraries(vf_libdeflate INTERFACE ${VF_LIBDEFLATE_LIBRARY})
endif()
