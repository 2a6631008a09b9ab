# What is handed to a maker: the programs and what has to be known to use it. "cmake --install" lays
# the files out, CPack packs them; all of them lie beside the main program once unpacked.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# A person on an old system opens it with an editor that knows no other line ends.
cmake_path(GET brand_SWIFTPATCH_DATA_FILE STEM LAST_ONLY sample)
cmake_path(GET brand_SWIFTPATCH_DATA_FILE EXTENSION LAST_ONLY extension)
string(APPEND sample ".sample${extension}")
configure_file(resources/data_file.sample.txt "generated/${sample}" @ONLY NEWLINE_STYLE DOS)

install(PROGRAMS $<TARGET_FILE:swiftpatch> DESTINATION . RENAME "${brand_SWIFTPATCH_UPDATER_FILE}")
install(PROGRAMS $<TARGET_FILE:swiftpatch-unattended> DESTINATION .
    RENAME "${brand_SWIFTPATCH_UNATTENDED_FILE}")
install(FILES resources/filecopy.avi DESTINATION . RENAME "${brand_SWIFTPATCH_ANIMATION_FILE}")
install(FILES "${PROJECT_BINARY_DIR}/generated/${sample}" LICENSE DESTINATION .)
install(FILES docs/deploying.md docs/publishing.md DESTINATION docs)
install(TARGETS publish publish-check RUNTIME DESTINATION tools)

# In the form that sha256sum --check reads.
install(CODE [[
    set(folder "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}")
    file(GLOB_RECURSE names RELATIVE "${folder}" "${folder}/*")
    list(REMOVE_ITEM names SHA256SUMS)
    set(sums "")
    foreach(name IN LISTS names)
        file(SHA256 "${folder}/${name}" sum)
        string(APPEND sums "${sum}  ${name}\n")
    endforeach()
    file(WRITE "${folder}/SHA256SUMS" "${sums}")
    file(CHMOD "${folder}/SHA256SUMS" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
]])

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME swiftpatch-${PROJECT_VERSION}-win32)
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/same_package.cmake)
include(CPack)
