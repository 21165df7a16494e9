# Cross toolchain: Debian's aarch64 GCC, for FileMaker Server on arm64 Linux. Headers and
# libraries come from the arm64 multiarch packages (libc6-dev:arm64, zlib1g-dev:arm64,
# libdeflate-dev:arm64), never from the build machine's own x86_64 ones.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(VF_TRIPLE aarch64-linux-gnu)
set(CMAKE_C_COMPILER ${VF_TRIPLE}-gcc)
set(CMAKE_CXX_COMPILER ${VF_TRIPLE}-g++)
set(CMAKE_AR ${VF_TRIPLE}-gcc-ar CACHE FILEPATH "")
set(CMAKE_RANLIB ${VF_TRIPLE}-gcc-ranlib CACHE FILEPATH "")
set(CMAKE_LIBRARY_ARCHITECTURE ${VF_TRIPLE})
# The multiarch root: /usr/lib/aarch64-linux-gnu and /usr/include/aarch64-linux-gnu hold the
# arm64 packages; /usr/include's portable headers are shared by every architecture.
set(CMAKE_FIND_ROOT_PATH /usr/${VF_TRIPLE} /)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# Every test executable runs through qemu with the arm64 loader and libraries.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/qemu-arm64.sh)
