# Install rules: the libraries with their sonames, the public headers under one include root,
# the input lab, a CMake package (window::window, window::host, window::vulkan when built) and
# pkg-config files.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(WINDOW_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/window)

set(installed_targets zenkbase window window_common_headers window_host)
set(installed_headers
    ${PROJECT_SOURCE_DIR}/include/window
    ${PROJECT_SOURCE_DIR}/zenkbase/include/zenkbase
    ${PROJECT_SOURCE_DIR}/common/include/common
    ${PROJECT_SOURCE_DIR}/host/include/host
    ${PROJECT_BINARY_DIR}/include/window)
if(TARGET window_vulkan)
    list(APPEND installed_targets window_vulkan)
    list(APPEND installed_headers ${PROJECT_SOURCE_DIR}/vulkan/include/window)
endif()
set(WINDOW_HAS_VULKAN ${WINDOW_BUILD_VULKAN})

install(TARGETS ${installed_targets}
    EXPORT windowTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${installed_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT windowTargets NAMESPACE window:: DESTINATION ${WINDOW_CMAKE_DIR})

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/windowConfig.cmake.in
    ${PROJECT_BINARY_DIR}/windowConfig.cmake INSTALL_DESTINATION ${WINDOW_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/windowConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/windowConfig.cmake ${PROJECT_BINARY_DIR}/windowConfigVersion.cmake
    DESTINATION ${WINDOW_CMAKE_DIR})

# The pkg-config files find the prefix from their own place, so an installed tree can move.
set(pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH WINDOW_PC_PREFIX /prefix/${pc_dir} /prefix)
string(REGEX REPLACE "/$" "" WINDOW_PC_PREFIX "${WINDOW_PC_PREFIX}")
foreach(pc window window-host)
    configure_file(${CMAKE_CURRENT_LIST_DIR}/${pc}.pc.in ${PROJECT_BINARY_DIR}/${pc}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${pc}.pc DESTINATION ${pc_dir})
endforeach()
