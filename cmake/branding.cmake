# What belongs to a deployment, not to the program. The texts that are set here are written into a
# header of the build; where one is empty, the default of src/shared/branding.h stands.
set(SWIFTPATCH_DEFAULT_SERVER "" CACHE STRING "Server folder used when the data file names none")
set(SWIFTPATCH_SIGNING_KEYS "" CACHE STRING "Keys of which one has to have signed a build")
set(SWIFTPATCH_SLOGAN "" CACHE STRING "The maker's slogan on the splash window")
set(SWIFTPATCH_WEB_ADDRESS "" CACHE STRING "The maker's web address on the splash window")
set(SWIFTPATCH_COPYRIGHT "" CACHE STRING "The maker's copyright lines on the splash window")
set(SWIFTPATCH_SUPPORT_LINE "" CACHE STRING "The support line and its hours, shown after a failure")
set(SWIFTPATCH_COMPANY "" CACHE STRING "The maker's name in the version block")
set(SWIFTPATCH_FILE_DESCRIPTION "" CACHE STRING "The program's description in the version block")
set(SWIFTPATCH_FILE_COPYRIGHT "" CACHE STRING "The copyright in the version block")
set(SWIFTPATCH_ICON "${PROJECT_SOURCE_DIR}/resources/swiftpatch.ico"
    CACHE FILEPATH "The program's icon, an .ico file")
set(SWIFTPATCH_SPLASH_PICTURE "${PROJECT_SOURCE_DIR}/resources/splash.jpg"
    CACHE FILEPATH "The picture on the splash window, a square JPEG file")

# A text as it stands between the quotes of a string literal: "\n" breaks a line, as it does there.
# Other letters than those of ASCII would look different on each system, since the program's texts
# are in the system's own code page; quotes mean different things to the compilers of code and of
# resources.
function(branding_literal name text result)
    string(REPLACE "\\r\\n" "\\n" text "${text}")
    string(REPLACE "\\n" "" plain "${text}")
    if(NOT plain MATCHES "^[]!#-[^-~ ]*$")
        message(FATAL_ERROR "${name}: \"${text}\": write ASCII letters without double quotes; "
            "\\n, and nothing else with a backslash, breaks the line")
    endif()
    string(REPLACE "\\n" "\\r\\n" text "${text}")
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

# With a key that cannot be read the program would refuse every build.
string(REPLACE " " ";" keys "${SWIFTPATCH_SIGNING_KEYS}")
list(LENGTH keys count)
foreach(key IN LISTS keys)
    string(LENGTH "${key}" length)
    if(NOT key MATCHES "^RW[A-Za-z0-9+/]+$" OR NOT length EQUAL 56 OR count GREATER 4)
        message(FATAL_ERROR "SWIFTPATCH_SIGNING_KEYS: \"${SWIFTPATCH_SIGNING_KEYS}\": write the "
            "second lines of one to four files minisign.pub, with one blank between two of them")
    endif()
endforeach()

set(branding "#pragma once\n\n// Made from what was set when the build was configured.\n")
foreach(name
        SWIFTPATCH_DEFAULT_SERVER SWIFTPATCH_SIGNING_KEYS SWIFTPATCH_SLOGAN SWIFTPATCH_WEB_ADDRESS SWIFTPATCH_COPYRIGHT
        SWIFTPATCH_SUPPORT_LINE SWIFTPATCH_COMPANY SWIFTPATCH_FILE_DESCRIPTION
        SWIFTPATCH_FILE_COPYRIGHT)
    if(NOT "${${name}}" STREQUAL "")
        branding_literal(${name} "${${name}}" literal)
        string(APPEND branding "#define ${name} \"${literal}\"\n")
    endif()
endforeach()
file(CONFIGURE OUTPUT generated/shared/branding_values.h CONTENT "@branding@" @ONLY)

foreach(name SWIFTPATCH_ICON SWIFTPATCH_SPLASH_PICTURE)
    if(NOT EXISTS "${${name}}")
        message(FATAL_ERROR "${name}: there is no file ${${name}}")
    endif()
endforeach()
configure_file(cmake/pictures.rc.in generated/pictures.rc @ONLY)
