# GoogleTest from the sources that the distribution's package installs: so it is built with the
# same compiler and flags as the tests, for Windows too. SYSTEM keeps our warnings out of it.
set(SWIFTPATCH_GOOGLETEST /usr/src/googletest CACHE PATH "GoogleTest's sources")
set(INSTALL_GTEST OFF)
set(BUILD_GMOCK ON)
add_subdirectory(${SWIFTPATCH_GOOGLETEST} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
