# vf_picture_libs: the picture codec libraries of the Linux plug-in (libjpeg-turbo, libpng, giflib,
# libtiff and what libtiff.a needs), from Debian's static archives: the plug-in needs no codec .so
# on the server (Debian's and Ubuntu's sonames differ, e.g. libjpeg.so.62 and libjpeg.so.8). The
# arm64 build finds the :arm64 archives through its toolchain's find root. Windows keeps GDI+.
find_path(VF_TIFF_INCLUDE tiffio.h REQUIRED)
find_path(VF_JPEG_INCLUDE jpeglib.h REQUIRED)
find_path(VF_PNG_INCLUDE png.h REQUIRED)
find_path(VF_GIF_INCLUDE gif_lib.h REQUIRED)

add_library(vf_picture_libs INTERFACE)
target_include_directories(vf_picture_libs SYSTEM INTERFACE ${VF_TIFF_INCLUDE} ${VF_JPEG_INCLUDE}
                                                            ${VF_PNG_INCLUDE} ${VF_GIF_INCLUDE})
if(VF_SANITIZE)
    # The sanitizer build's plug-in uses the shared C++ runtime, against which libLerc.a's
    # references to the runtime's type information cannot be linked into a shared object: it
    # takes the same libraries' shared builds (it is never shipped).
    target_link_libraries(vf_picture_libs INTERFACE tiff jpeg png16 gif m)
    return()
endif()

# In link order: each archive before the ones it uses. libLerc is C++: the plug-in's own static
# C++ runtime serves it. The archives reach glibc's stderr in a way a shared object must satisfy
# itself (src/linux_runtime/stderr_stand_in.cpp). libjbig (JBIG-KIT, GPL) stays out: a stand-in
# for libtiff's JBIG codec goes into every program that links these archives, as an object file
# ahead of libtiff.a (from an archive it would come too late to keep libtiff's own member out).
add_library(vf_no_jbig_codec OBJECT ${PROJECT_SOURCE_DIR}/src/linux_runtime/no_jbig_codec.cpp)
target_include_directories(vf_no_jbig_codec SYSTEM PRIVATE ${VF_TIFF_INCLUDE})
vf_target_defaults(vf_no_jbig_codec)
set(_vf_picture_archives tiff webp zstd lzma Lerc jpeg png16 gif deflate z)
set(VF_PICTURE_ARCHIVES)
foreach(_vf_lib ${_vf_picture_archives})
    find_library(VF_${_vf_lib}_STATIC NAMES lib${_vf_lib}.a REQUIRED)
    list(APPEND VF_PICTURE_ARCHIVES ${VF_${_vf_lib}_STATIC})
endforeach()
target_link_libraries(vf_picture_libs INTERFACE $<TARGET_OBJECTS:vf_no_jbig_codec>
                                               ${VF_PICTURE_ARCHIVES} m)
