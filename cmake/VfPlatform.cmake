# Which system's bodies a build compiles: every folder keeps its portable sources at the top and
# each system's bodies in windows/ or posix/ beside them, and the build, not an #ifdef, chooses.
if(WIN32)
    set(VF_PLATFORM windows)
else()
    set(VF_PLATFORM posix)
endif()

# Sets VAR to dir/*.cpp plus dir/${VF_PLATFORM}/*.cpp.
function(vf_platform_sources var dir)
    file(GLOB _portable CONFIGURE_DEPENDS ${dir}/*.cpp)
    file(GLOB _platform CONFIGURE_DEPENDS ${dir}/${VF_PLATFORM}/*.cpp)
    set(${var} ${_portable} ${_platform} PARENT_SCOPE)
endfunction()
