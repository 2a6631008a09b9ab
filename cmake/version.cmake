# The version block of the product, and the same numbers for the code.
set(SWIFTPATCH_COMPANY "SwiftPatch" CACHE STRING "The maker's name in the version block")
set(SWIFTPATCH_FILE_COPYRIGHT "Copyright the SwiftPatch authors"
    CACHE STRING "The copyright in the version block")

configure_file(cmake/version.h.in generated/app/version.h @ONLY)
configure_file(cmake/version.rc.in generated/version.rc @ONLY)
