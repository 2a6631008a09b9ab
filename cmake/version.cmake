# The version blocks of the two programs, and the same numbers for the code. The texts of the blocks
# are in src/shared/branding.h.
configure_file(cmake/version.h.in generated/shared/version.h @ONLY)

function(version_block file name)
    set(file_name "${name}")
    string(REGEX REPLACE "\\.[Ee][Xx][Ee]$" "" internal_name "${brand_${name}}")
    configure_file(cmake/version.rc.in "generated/${file}" @ONLY)
endfunction()
version_block(version.rc SWIFTPATCH_UPDATER_FILE)
version_block(unattended_version.rc SWIFTPATCH_UNATTENDED_FILE)
