# Linked by every target of ours, and by nothing that comes from elsewhere. A preset makes the
# warnings errors (CMAKE_COMPILE_WARNING_AS_ERROR); a newer compiler's news must not stop others.
add_library(swiftpatch_warnings INTERFACE)
target_compile_options(swiftpatch_warnings INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
        -Wcast-function-type -Wnon-virtual-dtor -Woverloaded-virtual -Wformat=2>
    $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wduplicated-cond -Wlogical-op>)
