# Settings that hold for every target of this project, and for no target of a project that includes it.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(PROJECT_IS_TOP_LEVEL)
    set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
    if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
        set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
    endif()
    find_program(QUARN_CCACHE ccache)
    if(QUARN_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
        set(CMAKE_CXX_COMPILER_LAUNCHER "${QUARN_CCACHE}")
    endif()
endif()

option(QUARN_ASSERTIONS "Abort if a precondition of the library is violated" OFF)

# Warnings, and sanitizers if a preset requires them.
function(quarn_target_settings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
    # g++ 12 sees overlaps in the concatenation of strings where there are none (GCC bug 105651).
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
    if(QUARN_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(QUARN_ASSERTIONS)
        target_compile_definitions(${target} PRIVATE QUARN_ASSERTIONS)
    endif()
    if(QUARN_SANITIZERS)
        target_compile_options(${target} PRIVATE -fsanitize=${QUARN_SANITIZERS} -fno-omit-frame-pointer
                                                 -fno-sanitize-recover=all)
        target_link_options(${target} PRIVATE -fsanitize=${QUARN_SANITIZERS})
    endif()
endfunction()
