# GoogleTest from Debian's source package, built with whatever compiler this build uses.
set(VF_GTEST_SOURCE /usr/src/googletest CACHE PATH "GoogleTest source tree")
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(BUILD_GMOCK ON CACHE BOOL "" FORCE)
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
if(VF_WINDOWS)
    # Wine runs each test through the build's own prefix (see wine-run.sh).
    set(VF_WINEPREFIX ${CMAKE_BINARY_DIR}/wineprefix)
    configure_file(${CMAKE_CURRENT_LIST_DIR}/wine-run.sh.in ${CMAKE_BINARY_DIR}/wine-run.sh @ONLY
                   FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                    WORLD_READ WORLD_EXECUTE)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_BINARY_DIR}/wine-run.sh)
endif()
# googletest's own code does not build warning-free under -Werror with every compiler.
set(_vf_saved_options "${CMAKE_CXX_FLAGS}")
add_subdirectory(${VF_GTEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
foreach(t gtest gtest_main gmock gmock_main)
    if(TARGET ${t})
        target_compile_options(${t} PRIVATE -Wno-error)
    endif()
endforeach()

# vf_pass_test_emulator(test...): a test that starts a program this build made (fmhost, a loader)
# puts VF_TEST_EMULATOR before it: the cross build's emulator (scripts/qemu-arm64.sh for arm64),
# empty natively, so a value in the caller's environment cannot leak in. Wine starts a Windows
# test's Windows children itself: the Windows tree passes none. A test's own variables go in with
# set_property(TEST ... APPEND PROPERTY ENVIRONMENT ...): set_tests_properties would drop this one.
if(NOT VF_WINDOWS)
    list(LENGTH CMAKE_CROSSCOMPILING_EMULATOR _vf_emulator_words)
    if(_vf_emulator_words GREATER 1)
        message(FATAL_ERROR "VF_TEST_EMULATOR is one program: put the emulator's options in a "
                            "script, as scripts/qemu-arm64.sh does")
    endif()
endif()
function(vf_pass_test_emulator)
    if(NOT VF_WINDOWS)
        set_property(TEST ${ARGN} APPEND
                     PROPERTY ENVIRONMENT "VF_TEST_EMULATOR=${CMAKE_CROSSCOMPILING_EMULATOR}")
    endif()
endfunction()

# Natively, the end-to-end suites (those on the in-process host fixture or the soak) carry the
# label native-e2e: scripts/native-e2e.sh runs them as an unprivileged user, where mode bits
# refuse as they do on a server.
function(vf_label_native_e2e name libs)
    if(NOT VF_WINDOWS AND ("vf_items_fixture" IN_LIST libs OR "vf_soak" IN_LIST libs))
        set_property(TEST ${name} APPEND PROPERTY LABELS native-e2e)
    endif()
endfunction()

# vf_add_test(name SOURCES a.cpp b.cpp LIBS lib1 lib2 [LABELS l]): one executable, one CTest entry.
function(vf_add_test name)
    cmake_parse_arguments(T "" "" "SOURCES;LIBS;LABELS" ${ARGN})
    add_executable(${name} ${T_SOURCES})
    target_link_libraries(${name} PRIVATE ${T_LIBS} GTest::gmock GTest::gtest_main)
    vf_target_defaults(${name})
    add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
    # A safety net, not a speed check: a Wine process that keeps the output pipe open must fail
    # the run rather than hold it until CI's own limit.
    set_tests_properties(${name} PROPERTIES TIMEOUT 600)
    vf_pass_test_emulator(${name})
    if(T_LABELS)
        set_tests_properties(${name} PROPERTIES LABELS "${T_LABELS}")
    endif()
    vf_label_native_e2e(${name} "${T_LIBS}")
endfunction()
