# The texts that belong to a deployment, not to the program. Left empty, the defaults of
# src/app/branding.h stand.
set(SWIFTPATCH_BRANDING
    SWIFTPATCH_DEFAULT_SERVER SWIFTPATCH_SLOGAN SWIFTPATCH_WEB_ADDRESS SWIFTPATCH_COPYRIGHT
    SWIFTPATCH_SUPPORT_LINE)
set(SWIFTPATCH_DEFAULT_SERVER "" CACHE STRING "Server folder used when the settings name none")
set(SWIFTPATCH_SLOGAN "" CACHE STRING "The maker's slogan on the splash window")
set(SWIFTPATCH_WEB_ADDRESS "" CACHE STRING "The maker's web address on the splash window")
set(SWIFTPATCH_COPYRIGHT "" CACHE STRING "The maker's copyright lines on the splash window")
set(SWIFTPATCH_SUPPORT_LINE "" CACHE STRING "The support line and its hours")

# Hands the texts that were set to the sources of one target, as string literals.
function(target_branding target)
    foreach(name IN LISTS SWIFTPATCH_BRANDING)
        if(NOT "${${name}}" STREQUAL "")
            target_compile_definitions(${target} PRIVATE "${name}=\"${${name}}\"")
        endif()
    endforeach()
endfunction()
