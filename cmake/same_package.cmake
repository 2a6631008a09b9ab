# Run by CPack when a package is written: gives the files in it the time of the commit. Without a
# commit they get the first day that a zip file knows.
set(time "$ENV{SOURCE_DATE_EPOCH}")
if(time STREQUAL "")
    execute_process(COMMAND git -C ${CMAKE_CURRENT_LIST_DIR} log -1 --format=%ct
        OUTPUT_VARIABLE time OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
if(NOT time MATCHES "^[0-9]+$")
    set(time 315532800)
endif()
find_program(SWIFTPATCH_PYTHON python3 REQUIRED)
execute_process(COMMAND_ERROR_IS_FATAL ANY
    COMMAND ${SWIFTPATCH_PYTHON} ${CMAKE_CURRENT_LIST_DIR}/same-zip ${time} ${CPACK_PACKAGE_FILES})
