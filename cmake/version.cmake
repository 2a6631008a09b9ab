# The version block of the product, and the same numbers for the code. The texts of the block are in
# src/shared/branding.h.
configure_file(cmake/version.h.in generated/shared/version.h @ONLY)
string(REGEX REPLACE "\\.[Ee][Xx][Ee]$" "" internal_name "${brand_SWIFTPATCH_UPDATER_FILE}")
configure_file(cmake/version.rc.in generated/version.rc @ONLY)
