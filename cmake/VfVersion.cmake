# Reads the plug-in's version from VERSION, the one place it is written: "major.minor.patch" on
# the first line, "build N" on the second (the fourth field of the file version and of
# VFile_Version( "autoupdate" ), which must grow with every release).
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/../VERSION _vf_version_lines)
list(GET _vf_version_lines 0 VF_VERSION)
list(GET _vf_version_lines 1 _vf_build_line)
if(NOT VF_VERSION MATCHES "^([0-9]+)\\.([0-9]+)\\.([0-9]+)$")
    message(FATAL_ERROR "VERSION: first line must be major.minor.patch, not '${VF_VERSION}'")
endif()
set(VF_VERSION_MAJOR ${CMAKE_MATCH_1})
set(VF_VERSION_MINOR ${CMAKE_MATCH_2})
set(VF_VERSION_PATCH ${CMAKE_MATCH_3})
if(NOT _vf_build_line MATCHES "^build ([0-9]+)$")
    message(FATAL_ERROR "VERSION: second line must be 'build N', not '${_vf_build_line}'")
endif()
set(VF_VERSION_BUILD ${CMAKE_MATCH_1})
# What VFile_Version answers: major.minor, with the patch only when it is not 0 ("3.0", "3.0.1").
if(VF_VERSION_PATCH EQUAL 0)
    set(VF_VERSION_SHORT ${VF_VERSION_MAJOR}.${VF_VERSION_MINOR})
else()
    set(VF_VERSION_SHORT ${VF_VERSION})
endif()
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/../VERSION)
