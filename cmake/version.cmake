# The version block of the product, and the same numbers for the code. The texts of the block are in
# src/app/branding.h.
configure_file(cmake/version.h.in generated/app/version.h @ONLY)
configure_file(cmake/version.rc.in generated/version.rc @ONLY)
