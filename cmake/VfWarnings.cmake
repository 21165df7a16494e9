# Project-wide compile settings; every target of ours calls vf_target_defaults().
add_compile_options(-Wall -Wextra -Werror)

if(VF_WINDOWS)
    # Unicode Win32 API, no min/max macros, Windows 7 API level or later.
    add_compile_definitions(UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601)
    # The shipped DLL and every exe carry their own runtime: no libstdc++/libgcc/winpthread DLLs.
    add_link_options(-static -static-libgcc -static-libstdc++)
endif()

option(VF_SANITIZE "Build the native code with AddressSanitizer and UBSan" ON)
if(NOT VF_WINDOWS AND VF_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=address,undefined)
endif()

function(vf_target_defaults target)
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
endfunction()

# vf_component(name KIND sources...): a library of the plug-in whose folder may still be empty
# (the zip code has not landed); an empty one becomes an interface library so links stay valid.
function(vf_component name kind)
    if(ARGN)
        add_library(${name} ${kind} ${ARGN})
        vf_target_defaults(${name})
    else()
        add_library(${name} INTERFACE)
        target_include_directories(${name} INTERFACE ${PROJECT_SOURCE_DIR}/src)
    endif()
endfunction()
