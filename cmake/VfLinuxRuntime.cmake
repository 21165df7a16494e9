# The few glibc functions the Linux plug-in's static C++ runtime names beyond glibc 2.35 (Ubuntu
# 22.04), defined inside the plug-in so it needs no newer symbol version; the binary check
# (tests/elf_check) fails the plug-in when one is missing. And the `stderr` the static codec
# archives reach in a way only a definition inside the plug-in satisfies.
set(VF_LINUX_RUNTIME_SOURCES ${PROJECT_SOURCE_DIR}/src/linux_runtime/arc4random.cpp
                             ${PROJECT_SOURCE_DIR}/src/linux_runtime/stderr_stand_in.cpp)
if(NOT VF_WINDOWS AND TARGET Vantafile)
    target_sources(Vantafile PRIVATE ${VF_LINUX_RUNTIME_SOURCES})
endif()
