# What belongs to a deployment, not to the program. The texts that are set here are written into a
# header of the build; where one is not set, the default of src/shared/branding.h stands. What could
# never work stops the configuration.
set(branding_defaults ${PROJECT_SOURCE_DIR}/src/shared/branding.h)
set(branding "#pragma once\n\n// Made from what was set when the build was configured.\n")

# A text as it stands between the quotes of a string literal: "\n" breaks a line, as it does there.
# Other letters than those of ASCII would look different on each system, since the program's texts
# are in the system's own code page; quotes mean different things to the compilers of code and of
# resources.
function(branding_literal variable text result)
    string(REPLACE "\\r\\n" "\\n" text "${text}")
    string(REPLACE "\\n" "" plain "${text}")
    if(plain MATCHES "^ *$")
        message(FATAL_ERROR "${variable} is empty: write its text, or take it away "
            "(-U ${variable}) for the default")
    endif()
    if(NOT plain MATCHES "^[]!#-[^-~ ]*$")
        message(FATAL_ERROR "${variable}: \"${text}\": write ASCII letters without double quotes; "
            "\\n, and nothing else with a backslash, breaks the line")
    endif()
    string(REPLACE "\\n" "\\r\\n" text "${text}")
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

# A text of `lines` lines at most. Where it is not set, it is `derived`, or the default if that is
# empty.
function(branding_text variable lines derived help)
    # In the folder of an earlier build an empty one can be what stood for "not set" there; what is
    # given on the command line has no type yet.
    get_property(type CACHE ${variable} PROPERTY TYPE)
    if("${${variable}}" STREQUAL "" AND type STREQUAL "STRING")
        unset(${variable} CACHE)
    endif()
    set(text "${derived}")
    if(DEFINED ${variable})
        set(text "${${variable}}")
    endif()
    if(DEFINED ${variable} OR NOT text STREQUAL "")
        branding_literal(${variable} "${text}" literal)
        string(APPEND branding "#define ${variable} \"${literal}\"\n")
    else()
        file(STRINGS ${branding_defaults} literal REGEX "^#define ${variable} ")
        string(REGEX REPLACE "^[^\"]*\"(.*)\"$" "\\1" literal "${literal}")
    endif()
    if(DEFINED ${variable})
        set(${variable} "${text}" CACHE STRING "${help}")
    endif()
    string(REGEX MATCHALL "\\\\r\\\\n" breaks "${literal}")
    list(LENGTH breaks count)
    if(count GREATER_EQUAL lines)
        message(FATAL_ERROR "${variable}: \"${text}\": there is room for ${lines} line(s) only")
    endif()
    set(branding "${branding}" PARENT_SCOPE)
    set(branding_names ${branding_names} ${variable} PARENT_SCOPE)
    set(brand_${variable} "${literal}" PARENT_SCOPE)
endfunction()

function(branding_stop variable why)
    message(FATAL_ERROR "${variable}: \"${brand_${variable}}\": ${why}")
endfunction()

# The main program's file and its name are enough: whatever carries them is made from these two, and
# can be set on its own all the same.
set(stem "")
set(staged "")
set(data "")
set(instance "")
set(word "")
set(name "")
if(DEFINED SWIFTPATCH_PROGRAM)
    string(REGEX REPLACE "\\.[Ee][Xx][Ee]$" "" stem "${SWIFTPATCH_PROGRAM}")
    string(REPLACE " " "-" staged "${stem}-new.exe")  # It stands in an address.
    set(data "${stem}.dta.txt")
    set(instance "SwiftPatch.${stem}")
    string(REGEX REPLACE "[^A-Za-z0-9]" "" word "${stem}")
    set(name "${stem}")
endif()
if(DEFINED SWIFTPATCH_PROGRAM_NAME)
    set(SWIFTPATCH_PROGRAM_NAME "${SWIFTPATCH_PROGRAM_NAME}" CACHE STRING
        "What the main program is called")
    set(name "${SWIFTPATCH_PROGRAM_NAME}")
endif()
set(branding_names SWIFTPATCH_PROGRAM_NAME)

# Files.
branding_text(SWIFTPATCH_PROGRAM 1 "" "The main program's file")
branding_text(SWIFTPATCH_STAGED_PROGRAM 1 "${staged}" "A new build, on the server and at home")
branding_text(SWIFTPATCH_DATA_FILE 1 "${data}" "The file with the settings")
branding_text(SWIFTPATCH_BACKUP_STEM 1 "${stem}" "What the names of backups begin with")
branding_text(SWIFTPATCH_LICENCE_FILE 1 "" "The text that shows that a server is there")
branding_text(SWIFTPATCH_ANIMATION_FILE 1 "" "What moves while the updater is busy")
branding_text(SWIFTPATCH_UPDATER_FILE 1 "" "The updater's own file")
set(unattended "")
if(DEFINED SWIFTPATCH_UPDATER_FILE)
    string(REGEX REPLACE "(\\.[Ee][Xx][Ee])$" "-unattended\\1" unattended
        "${SWIFTPATCH_UPDATER_FILE}")
endif()
branding_text(SWIFTPATCH_UNATTENDED_FILE 1 "${unattended}" "The updater without a window")

# The main program in texts, and what it is found by while it runs.
branding_text(SWIFTPATCH_NAME 1 "${name}" "The main program's name")
branding_text(SWIFTPATCH_NAME_IN_TEXT 1 "${name}" "Its name amid a sentence")
branding_text(SWIFTPATCH_SHORT_NAME 1 "${name}" "Its short name")
branding_text(SWIFTPATCH_SHORT_NAME_IN_TEXT 1 "${name}" "Its short name amid a sentence")
branding_text(SWIFTPATCH_NAME_IN_CODE 1 "${word}" "Its name in the names of controls")
branding_text(SWIFTPATCH_RUN_NAME 1 "${name}" "What can be run on exit")
branding_text(SWIFTPATCH_RUNNING_NAME 1 "${name}" "What has to be closed")
branding_text(SWIFTPATCH_WINDOW_CLASS 1 "${name}" "The class of its windows")
branding_text(SWIFTPATCH_WINDOW_TITLE 1 "${name}" "A part of its windows' titles")
branding_text(SWIFTPATCH_SETTINGS_NAME 1 "${name}" "Where it leaves its window's handle")

# The updater.
set(in_text "")
if(DEFINED SWIFTPATCH_UPDATER_NAME)
    set(in_text "${SWIFTPATCH_UPDATER_NAME}")
endif()
branding_text(SWIFTPATCH_UPDATER_NAME 1 "" "The updater's name in its windows")
branding_text(SWIFTPATCH_UPDATER_NAME_IN_TEXT 1 "${in_text}" "Its name amid a sentence")
branding_text(SWIFTPATCH_UPDATER_TITLE 1 "" "Its name in boxes and requests")
branding_text(SWIFTPATCH_INSTANCE_NAME 1 "${instance}" "What keeps a second one from starting")

# The maker.
set(maker "")
set(updater "")
set(rights "")
set(file_rights "")
if(NOT name STREQUAL "")
    set(maker "The maker of ${name}")
    set(updater "Updater for ${name}")
    set(rights "Copyright (c) ${maker}.\\nAll rights reserved.")
    set(file_rights "Copyright (c) ${maker}. All rights reserved.")
endif()
branding_text(SWIFTPATCH_DEFAULT_SERVER 1 "" "Server folder used when the data file names none")
branding_text(SWIFTPATCH_SIGNING_KEYS 1 "" "Keys of which one has to have signed a build")
branding_text(SWIFTPATCH_SLOGAN 2 "" "The slogan on the splash window")
branding_text(SWIFTPATCH_WEB_ADDRESS 1 "" "The web address on the splash window")
branding_text(SWIFTPATCH_COPYRIGHT 2 "${rights}" "The copyright on the splash window")
branding_text(SWIFTPATCH_SUPPORT_LINE 1 "" "The support line and its hours, shown after a failure")
branding_text(SWIFTPATCH_COMPANY 1 "${maker}" "The maker in the version block")
branding_text(SWIFTPATCH_FILE_DESCRIPTION 1 "${updater}" "The description in the version block")
branding_text(SWIFTPATCH_FILE_COPYRIGHT 1 "${file_rights}" "The copyright in the version block")

file(CONFIGURE OUTPUT generated/shared/branding_values.h CONTENT "@branding@" @ONLY)

# Names of files: what each system and each web server takes, and none twice.
set(taken "")
foreach(variable SWIFTPATCH_PROGRAM SWIFTPATCH_STAGED_PROGRAM SWIFTPATCH_DATA_FILE
        SWIFTPATCH_BACKUP_STEM SWIFTPATCH_LICENCE_FILE SWIFTPATCH_ANIMATION_FILE
        SWIFTPATCH_UPDATER_FILE SWIFTPATCH_UNATTENDED_FILE)
    set(file "${brand_${variable}}")
    if(NOT file MATCHES "^[A-Za-z0-9_]([-A-Za-z0-9_. ]*[A-Za-z0-9_])?$")
        branding_stop(${variable} "write the name of a file: letters, digits, \"_\", \"-\", \".\"")
    endif()
    if(variable MATCHES "_(STAGED_PROGRAM|LICENCE_FILE|ANIMATION_FILE)$" AND file MATCHES " ")
        branding_stop(${variable} "it stands in an address: write it without blanks")
    endif()
    if(variable MATCHES "_(PROGRAM|UPDATER_FILE|UNATTENDED_FILE)$" AND NOT file MATCHES "\\.[Ee][Xx][Ee]$")
        branding_stop(${variable} "write the name of a program: it ends in .exe")
    endif()
    string(TOLOWER "${file}" file)
    if(file IN_LIST taken)
        branding_stop(${variable} "another file has this name")
    endif()
    list(APPEND taken "${file}")
endforeach()

# A caption takes "&" for the mark of a letter to be pressed.
foreach(variable SWIFTPATCH_NAME SWIFTPATCH_NAME_IN_TEXT SWIFTPATCH_SHORT_NAME
        SWIFTPATCH_SHORT_NAME_IN_TEXT SWIFTPATCH_RUN_NAME SWIFTPATCH_RUNNING_NAME
        SWIFTPATCH_UPDATER_NAME)
    if(brand_${variable} MATCHES "&")
        branding_stop(${variable} "write it without \"&\"")
    endif()
endforeach()

# It would take its own windows for those of the main program, and close itself.
foreach(variable SWIFTPATCH_UPDATER_NAME SWIFTPATCH_UPDATER_TITLE)
    string(FIND "${brand_${variable}}" "${brand_SWIFTPATCH_WINDOW_TITLE}" found)
    if(NOT found EQUAL -1)
        branding_stop(SWIFTPATCH_WINDOW_TITLE "the updater's own windows have it in their title, "
            "\"${brand_${variable}}\": name a part of the main program's titles that they have not")
    endif()
endforeach()

if(brand_SWIFTPATCH_SETTINGS_NAME MATCHES "\\\\")
    branding_stop(SWIFTPATCH_SETTINGS_NAME "write one name, not a path")
endif()

string(REGEX REPLACE "^[Hh][Tt][Tt][Pp][Ss]?://" "" server "${brand_SWIFTPATCH_DEFAULT_SERVER}")
if(NOT server MATCHES "^[^/ ]+/[^ ]+$" OR server MATCHES "^[^/]*://" OR server MATCHES "^[^/]*@")
    branding_stop(SWIFTPATCH_DEFAULT_SERVER "write host and folder, such as "
        "updates.example.com/download/, with http:// or https:// before it or nothing")
endif()

# With a key that cannot be read the program would refuse every build.
string(REPLACE " " ";" keys "${brand_SWIFTPATCH_SIGNING_KEYS}")
list(LENGTH keys count)
foreach(key IN LISTS keys)
    string(LENGTH "${key}" length)
    if(NOT key MATCHES "^RW[A-Za-z0-9+/]+$" OR NOT length EQUAL 56 OR count GREATER 4)
        branding_stop(SWIFTPATCH_SIGNING_KEYS "write the second lines of one to four files "
            "minisign.pub, with one blank between two of them")
    endif()
endforeach()

# Pictures. What their files begin with: ISO/IEC 10918-1 annex B (SOI and the next marker), and the
# header of an icon file (reserved, type 1).
set(SWIFTPATCH_ICON "${PROJECT_SOURCE_DIR}/resources/swiftpatch.ico"
    CACHE FILEPATH "The program's icon, an .ico file")
set(SWIFTPATCH_SPLASH_PICTURE "${PROJECT_SOURCE_DIR}/resources/splash.jpg"
    CACHE FILEPATH "The picture on the splash window, a square JPEG file")
function(branding_picture variable beginning kind)
    if(NOT EXISTS "${${variable}}")
        message(FATAL_ERROR "${variable}: there is no file ${${variable}}")
    endif()
    file(READ "${${variable}}" bytes LIMIT 4 HEX)
    if(NOT bytes MATCHES "^${beginning}")
        message(FATAL_ERROR "${variable}: ${${variable}} is no ${kind}")
    endif()
endfunction()
branding_picture(SWIFTPATCH_ICON 00000100 "icon file")
branding_picture(SWIFTPATCH_SPLASH_PICTURE ffd8ff "JPEG file")
configure_file(${PROJECT_SOURCE_DIR}/cmake/pictures.rc.in generated/pictures.rc @ONLY)
