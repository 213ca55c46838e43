# SPDX-License-Identifier: Apache-2.0
# What every target of the project is compiled with, said once.

add_library(vellory_options INTERFACE)
target_compile_options(vellory_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                       -Wcast-qual -Woverloaded-virtual)
if(VELLORY_WERROR)
    target_compile_options(vellory_options INTERFACE -Werror)
endif()
if(VELLORY_SANITIZE)
    target_compile_options(vellory_options INTERFACE -fsanitize=${VELLORY_SANITIZE}
                           -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(vellory_options INTERFACE -fsanitize=${VELLORY_SANITIZE})
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND VELLORY_SANITIZE)
    # g++ 12 reports "maybe uninitialized" inside std::variant and std::expected once sanitizers
    # are on; the plain build, which warns correctly, has the warning enabled.
    target_compile_options(vellory_options INTERFACE -Wno-maybe-uninitialized)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # g++ 12 takes `"literal" + string` at -O2 and above for overlapping memory.
    target_compile_options(vellory_options INTERFACE -Wno-restrict)
endif()
if(VELLORY_FUZZ)
    target_compile_options(vellory_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# vellory_library(NAME [sources...]): a static library of the project.
function(vellory_library name)
    add_library(${name} STATIC ${ARGN})
    target_link_libraries(${name} PRIVATE vellory_options)
endfunction()
