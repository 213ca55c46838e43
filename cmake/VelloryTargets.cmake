# SPDX-License-Identifier: Apache-2.0
# What every target of the project is compiled with, said once.

add_library(vellory_options INTERFACE)
target_compile_options(vellory_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                       -Wcast-qual -Woverloaded-virtual)
# Qt's words `slots`, `signals` and `emit` stay free for the program's own names.
target_compile_definitions(vellory_options INTERFACE QT_NO_KEYWORDS)
if(VELLORY_WERROR)
    target_compile_options(vellory_options INTERFACE -Werror)
endif()
if(VELLORY_SANITIZE)
    target_compile_options(vellory_options INTERFACE -fsanitize=${VELLORY_SANITIZE}
                           -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(vellory_options INTERFACE -fsanitize=${VELLORY_SANITIZE})
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # g++ 12 reports overlapping copies inside std::string's operator+ at -O3 (GCC bug 105651).
    # It also reports "maybe uninitialized" inside std::variant and std::expected at -O3 and with
    # sanitizers.
    target_compile_options(vellory_options INTERFACE -Wno-restrict -Wno-maybe-uninitialized)
endif()
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    # libstdc++ 12 itself uses what it deprecates (std::get_temporary_buffer in std::stable_sort),
    # and clang reports that where the template is used.
    target_compile_options(vellory_options INTERFACE -Wno-deprecated-declarations)
endif()
if(CMAKE_UNITY_BUILD)
    # Sources that are compiled as one see each other's private names.
    target_compile_options(vellory_options INTERFACE -Wno-shadow)
endif()

# vellory_library(NAME [sources...]): a static library of the project.
function(vellory_library name)
    add_library(${name} STATIC ${ARGN})
    target_link_libraries(${name} PRIVATE vellory_options)
endfunction()

# vellory_tests(PROGRAM LABEL): tells CTest of the tests in a program that need no process of their
# own: each by its name, or all in one process where the sanitizers make its start take longer than
# most tests.
function(vellory_tests program label)
    if(VELLORY_SANITIZE)
        add_test(NAME ${program} COMMAND ${program})
        set_tests_properties(${program} PROPERTIES LABELS ${label} TIMEOUT 600)
    else()
        gtest_discover_tests(${program} DISCOVERY_TIMEOUT 60 PROPERTIES LABELS ${label})
    endif()
endfunction()
