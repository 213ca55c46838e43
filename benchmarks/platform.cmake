# SPDX-License-Identifier: Apache-2.0
# Benchmarks of the platform ports; included where the benchmark library has been found.
if(VELLORY_APP AND TARGET vellory_platform_linux)
    add_executable(bench_catalogue catalogue.cpp)
    target_link_libraries(bench_catalogue PRIVATE vellory_platform_linux vellory_options
                          benchmark::benchmark)
endif()
