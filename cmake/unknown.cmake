# A variable that nobody declares is a typing mistake. To be included last.
get_cmake_property(cached CACHE_VARIABLES)
foreach(variable IN LISTS cached)
    get_property(type CACHE ${variable} PROPERTY TYPE)
    if(variable MATCHES "^SWIFTPATCH_" AND type STREQUAL "UNINITIALIZED")
        message(FATAL_ERROR "${variable}: there is no such variable; docs/deploying.md has them")
    endif()
endforeach()
