option(SWIFTPATCH_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
option(SWIFTPATCH_LIBFUZZER "Build the fuzz targets for libFuzzer (clang only)" OFF)
option(SWIFTPATCH_WINDOWS_TESTS "Build the programs that test the product on Windows" OFF)

if(SWIFTPATCH_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
    add_link_options(-fsanitize=address,undefined)
endif()

if(SWIFTPATCH_LIBFUZZER)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

if(WIN32)
    # A build in another folder, or of another day, gives the same bytes. (Not of the native tests:
    # what measures their coverage could not find the sources.)
    add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>)
    # Declarations up to Windows XP only: a newer function is then a compile error where it is
    # used, not a program that does not start on an old system.
    set(SWIFTPATCH_WINDOWS_DEFINITIONS
        WINVER=0x0501 _WIN32_WINNT=0x0501 _WIN32_IE=0x0600 WIN32_LEAN_AND_MEAN NOMINMAX STRICT)
    # From GCC 13 on, the library's headers do not compile without the type of a condition variable,
    # which they leave out below Windows Vista. To declare it is enough: nothing here uses one.
    if(CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 13)
        list(APPEND SWIFTPATCH_WINDOWS_DEFINITIONS __GTHREAD_HAS_COND=1)
    endif()
    if(NOT SWIFTPATCH_WINDOWS_TESTS)
        # A function's static variable is first met on the one thread that is the program's. What
        # the compiler does for several threads waits with such a condition variable.
        add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-fno-threadsafe-statics>)
    endif()
    add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-ffunction-sections>
        $<$<COMPILE_LANGUAGE:CXX>:-fdata-sections>)
    # Nothing of the compiler's may have to lie beside the program. The versions in the file's
    # header are what an old system's loader compares with its own before it starts the program.
    add_link_options(-static -Wl,--gc-sections -Wl,--dynamicbase -Wl,--nxcompat
        -Wl,--no-insert-timestamp -Wl,--major-os-version=4 -Wl,--minor-os-version=0
        -Wl,--major-subsystem-version=4 -Wl,--minor-subsystem-version=0
        $<$<CONFIG:MinSizeRel>:-s>)
endif()
