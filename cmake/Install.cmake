# SPDX-License-Identifier: Zlib
# Install rules: the libraries with their sonames, every header under one folder of the project's
# own (include/window-<major>/), the input lab, the documents a user reads, a CMake package with
# components and pkg-config files.
#
# The CMake package has one export set per component, so that each brings only its own
# dependencies: the library itself (window::window, with window::zenkbase and window::common),
# the host kit (COMPONENTS host: window::host) and the surface helper when it was built
# (COMPONENTS vulkan: window::vulkan).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(WINDOW_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/window)
set(destinations
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})

install(TARGETS zenkbase window window_common_headers window_configuration EXPORT windowTargets
        ${destinations})
install(EXPORT windowTargets NAMESPACE window:: DESTINATION ${WINDOW_CMAKE_DIR})
install(DIRECTORY
        ${PROJECT_SOURCE_DIR}/include/window
        ${PROJECT_SOURCE_DIR}/zenkbase/include/zenkbase
        ${PROJECT_SOURCE_DIR}/common/include/common
        ${PROJECT_BINARY_DIR}/include/window
    DESTINATION ${WINDOW_INSTALL_INCLUDEDIR})

install(TARGETS window_host EXPORT windowHostTargets ${destinations})
install(EXPORT windowHostTargets NAMESPACE window:: DESTINATION ${WINDOW_CMAKE_DIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/host/include/host DESTINATION ${WINDOW_INSTALL_INCLUDEDIR})
set(pkgconfig_files window window-host)

set(WINDOW_COMPONENTS host)
if(TARGET window_vulkan)
    install(TARGETS window_vulkan EXPORT windowVulkanTargets ${destinations})
    install(EXPORT windowVulkanTargets NAMESPACE window:: DESTINATION ${WINDOW_CMAKE_DIR})
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/vulkan/include/window
            DESTINATION ${WINDOW_INSTALL_INCLUDEDIR})
    list(APPEND WINDOW_COMPONENTS vulkan)
    list(APPEND pkgconfig_files window-vulkan)
endif()

# What a user reads, beside the licence that lets them use it; the API reference when it was
# built (./dev docs) before the install.
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
              ${PROJECT_SOURCE_DIR}/LICENSE
        DESTINATION ${CMAKE_INSTALL_DOCDIR})
set(WINDOW_API_REFERENCE ${PROJECT_SOURCE_DIR}/build/docs/html CACHE PATH
    "The API reference that the install copies to the doc folder, when it is there")
install(DIRECTORY ${WINDOW_API_REFERENCE}/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/html OPTIONAL)

# The host kit on Windows uses spdlog and toml++ as headers only (see host/CMakeLists.txt): its
# package then needs neither.
if(WIN32)
    set(WINDOW_HOST_NEEDS_SERVICES_PACKAGES FALSE)
else()
    set(WINDOW_HOST_NEEDS_SERVICES_PACKAGES TRUE)
endif()
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
foreach(pc ${pkgconfig_files})
    configure_file(${CMAKE_CURRENT_LIST_DIR}/${pc}.pc.in ${PROJECT_BINARY_DIR}/${pc}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${pc}.pc DESTINATION ${pc_dir})
endforeach()
