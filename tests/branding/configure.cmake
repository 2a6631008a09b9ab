# The values of a branding as the build takes them, without a build: cmake -D... -P configure.cmake
cmake_minimum_required(VERSION 3.25)
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH PROJECT_SOURCE_DIR)
cmake_path(GET PROJECT_SOURCE_DIR PARENT_PATH PROJECT_SOURCE_DIR)
include(${PROJECT_SOURCE_DIR}/cmake/branding.cmake)
