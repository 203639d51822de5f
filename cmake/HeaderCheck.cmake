# Every header must compile alone: one tiny source a header, which includes it twice. A target of its own, which
# .ci/run builds.

find_package(GTest REQUIRED)

file(GLOB_RECURSE WAINSCOT_HEADERS CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}
    host/*.h look/*.h foundation/*.h buttons/*.h containers/*.h text/*.h menus/*.h tables/*.h dialogs/*.h filebrowser/*.h
    toolkit/*.h driver/*.h gallery/*.h tests/*.h)

set(HEADER_CHECK_SOURCES)
foreach(HEADER IN LISTS WAINSCOT_HEADERS)
    set(SOURCE ${CMAKE_BINARY_DIR}/header-check/${HEADER}.cpp)
    file(CONFIGURE OUTPUT ${SOURCE} CONTENT "#include \"@HEADER@\"\n#include \"@HEADER@\"\n" @ONLY)
    list(APPEND HEADER_CHECK_SOURCES ${SOURCE})
endforeach()

add_library(header-check OBJECT EXCLUDE_FROM_ALL ${HEADER_CHECK_SOURCES})
target_link_libraries(header-check PRIVATE wainscot-build-options PkgConfig::DRAWING GTest::gmock)
if(TARGET PkgConfig::DESKTOP)
    target_link_libraries(header-check PRIVATE PkgConfig::DESKTOP)
endif()
