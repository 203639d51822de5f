# What every target of the tree shares: language level, warnings, visibility, places of the results.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    # It keeps objects that were made with precompiled headers only when it is told that it may.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros
        ${CCACHE_PROGRAM})
endif()

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)

add_library(wainscot-build-options INTERFACE)
# The tests spend their time in the libraries, painting in software above all: these are optimised a little even
# for debugging, which halves that time.
set(WAINSCOT_LIBRARY_OPTIONS $<$<CONFIG:Debug>:-Og>)
target_include_directories(wainscot-build-options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(wainscot-build-options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -fno-semantic-interposition
    $<$<BOOL:${WAINSCOT_WERROR}>:-Werror>)
if(WAINSCOT_SANITIZE)
    target_compile_options(wainscot-build-options INTERFACE -fsanitize=${WAINSCOT_SANITIZE} -fno-omit-frame-pointer
        -fno-sanitize-recover=all)
    target_link_options(wainscot-build-options INTERFACE -fsanitize=${WAINSCOT_SANITIZE})
endif()
