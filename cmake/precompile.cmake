# The headers that most sources of a target include are parsed once for all of them: for the sources of
# the product this is half of the compilation. A source includes what it needs all the same;
# clang-tidy reads each without these.
set(standard_headers <algorithm> <chrono> <functional> <map> <memory> <optional> <string> <vector>)

function(precompile target)
    if(TARGET ${target})
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

precompile(runtime ${standard_headers})
precompile(swiftpatch_components ${standard_headers})
precompile(program ${standard_headers})
precompile(runtime_headless ${standard_headers})
precompile(unattended ${standard_headers})
precompile(publish_check ${standard_headers})
precompile(publish_check_in_memory ${standard_headers})
precompile(runtime_win32 ${standard_headers} ${PROJECT_SOURCE_DIR}/src/runtime/win32/win32.h)
precompile(runtime_console ${standard_headers} ${PROJECT_SOURCE_DIR}/src/runtime/win32/win32.h)
precompile(unit_tests ${standard_headers} <gmock/gmock.h> <gtest/gtest.h>)
precompile(publish_check_tests ${standard_headers} <gmock/gmock.h> <gtest/gtest.h>)
precompile(driver ${standard_headers} <filesystem> ${PROJECT_SOURCE_DIR}/tests/e2e/win32.h)
precompile(e2e_tests ${standard_headers} <filesystem> <gtest/gtest.h>
    ${PROJECT_SOURCE_DIR}/tests/e2e/win32.h)
