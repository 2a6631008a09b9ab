# GoogleTest from the sources that the distribution's package installs: so it is built with the
# same compiler and flags as the tests, for Windows too. SYSTEM keeps our warnings out of it.
set(SWIFTPATCH_GOOGLETEST /usr/src/googletest CACHE PATH "GoogleTest's sources")
set(INSTALL_GTEST OFF)
set(BUILD_GMOCK ON)
add_subdirectory(${SWIFTPATCH_GOOGLETEST} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)

# It is not what is tested, and takes three times as long with the sanitizers and optimized.
foreach(target gtest gtest_main gmock)
    target_compile_options(${target} PRIVATE -O0 $<$<BOOL:${SWIFTPATCH_SANITIZE}>:-fno-sanitize=all>)
endforeach()

# Every test of a native program as one of ctest's, which asks the program for them when it runs.
include(GoogleTest)
function(discover_tests program)
    gtest_discover_tests(${program} DISCOVERY_MODE PRE_TEST TEST_PREFIX ${program}. ${ARGN})
endfunction()
