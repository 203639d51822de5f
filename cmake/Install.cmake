# What `cmake --install` brings: the libraries, the public headers, the data, the gallery, and what other builds
# need to find them. The installed tree may be moved as a whole.

include(CMakePackageConfigHelpers)

set(WAINSCOT_INCLUDE_DIR ${CMAKE_INSTALL_INCLUDEDIR}/wainscot)
set(WAINSCOT_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/wainscot)
set(WAINSCOT_LIBRARIES wainscot-host wainscot wainscot-driver)
set(WAINSCOT_UNBUILT_HEADERS)
if(TARGET wainscot-window-bench)
    list(APPEND WAINSCOT_LIBRARIES wainscot-window-bench)
else()
    set(WAINSCOT_UNBUILT_HEADERS PATTERN "driver/windows" EXCLUDE)
endif()

# Headers. Those that end in _p.h are private, and so is the desktop module.
foreach(FOLDER host look foundation buttons containers text menus tables dialogs filebrowser toolkit driver)
    if(EXISTS ${PROJECT_SOURCE_DIR}/${FOLDER})
        install(DIRECTORY ${FOLDER} DESTINATION ${WAINSCOT_INCLUDE_DIR}
            FILES_MATCHING PATTERN "*.h" PATTERN "*_p.h" EXCLUDE PATTERN "backends/desktop" EXCLUDE
            ${WAINSCOT_UNBUILT_HEADERS})
    endif()
endforeach()

# Libraries and programs find each other by their places within the tree.
file(RELATIVE_PATH FROM_BIN_TO_LIB /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
foreach(LIBRARY IN LISTS WAINSCOT_LIBRARIES)
    string(REGEX REPLACE "^wainscot-" "" NAME ${LIBRARY})
    set_target_properties(${LIBRARY} PROPERTIES EXPORT_NAME ${NAME} INSTALL_RPATH "$ORIGIN")
    target_include_directories(${LIBRARY} INTERFACE $<INSTALL_INTERFACE:${WAINSCOT_INCLUDE_DIR}>)
    add_library(wainscot::${NAME} ALIAS ${LIBRARY})
endforeach()
install(TARGETS ${WAINSCOT_LIBRARIES} EXPORT wainscot-targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
set_target_properties(wainscot-gallery PROPERTIES INSTALL_RPATH "$ORIGIN/${FROM_BIN_TO_LIB}")
install(TARGETS wainscot-gallery RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
if(TARGET wainscot-desktop)
    # Where the host library looks for it.
    set_target_properties(wainscot-desktop PROPERTIES INSTALL_RPATH "$ORIGIN/..")
    install(TARGETS wainscot-desktop LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/wainscot)
endif()

install(DIRECTORY resources/ DESTINATION ${CMAKE_INSTALL_DATADIR}/wainscot)

# For CMake: find_package(wainscot) gives wainscot::host, wainscot::wainscot, wainscot::driver and
# wainscot::window-bench.
install(EXPORT wainscot-targets NAMESPACE wainscot:: DESTINATION ${WAINSCOT_PACKAGE_DIR})
configure_package_config_file(cmake/package/wainscot-config.cmake.in ${CMAKE_BINARY_DIR}/wainscot-config.cmake
    INSTALL_DESTINATION ${WAINSCOT_PACKAGE_DIR})
# Until version 1 every minor version may change the interface.
write_basic_package_version_file(${CMAKE_BINARY_DIR}/wainscot-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/wainscot-config.cmake ${CMAKE_BINARY_DIR}/wainscot-config-version.cmake
    DESTINATION ${WAINSCOT_PACKAGE_DIR})

# For pkg-config: the same names as those of the libraries.
file(RELATIVE_PATH FROM_PKGCONFIG_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
function(wainscot_pkgconfig LIBRARY DESCRIPTION REQUIRED)
    configure_file(cmake/package/library.pc.in ${CMAKE_BINARY_DIR}/${LIBRARY}.pc @ONLY)
    install(FILES ${CMAKE_BINARY_DIR}/${LIBRARY}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()
wainscot_pkgconfig(wainscot-host "Host framework of the Wainscot widget toolkit" "")
wainscot_pkgconfig(wainscot "Widget toolkit for media-editing applications" wainscot-host)
wainscot_pkgconfig(wainscot-driver "Drives a Wainscot user interface as a person would" wainscot-host)
if(TARGET wainscot-window-bench)
    wainscot_pkgconfig(wainscot-window-bench "A screen of its own for tests with real windows" wainscot-host)
endif()
