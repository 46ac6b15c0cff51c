# SPDX-License-Identifier: MIT
# Two CMake packages: ZevaKernel, what the library is built on, and ZevaQt, the library. An application with a kernel of
# its own installs a ZevaKernel of its own, and ZevaQt finds that.
include(CMakePackageConfigHelpers)

# zeva_install_package(NAME TARGETS t...): the targets, and the package that offers them as Zeva::...
function(zeva_install_package name)
    cmake_parse_arguments(arg "" "" "TARGETS" ${ARGN})
    set(folder "${CMAKE_INSTALL_LIBDIR}/cmake/${name}")
    install(TARGETS ${arg_TARGETS} EXPORT ${name}Targets LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
    install(EXPORT ${name}Targets NAMESPACE Zeva:: DESTINATION "${folder}")
    configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/${name}Config.cmake.in"
        "${PROJECT_BINARY_DIR}/${name}Config.cmake" INSTALL_DESTINATION "${folder}" PATH_VARS CMAKE_INSTALL_DATADIR)
    write_basic_package_version_file("${PROJECT_BINARY_DIR}/${name}ConfigVersion.cmake"
        VERSION ${PROJECT_VERSION} COMPATIBILITY SameMinorVersion)
    install(FILES "${PROJECT_BINARY_DIR}/${name}Config.cmake" "${PROJECT_BINARY_DIR}/${name}ConfigVersion.cmake"
        DESTINATION "${folder}")
    string(TOLOWER "${name}" pc)
    file(RELATIVE_PATH prefix_from_pc "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
    configure_file("${PROJECT_SOURCE_DIR}/cmake/${pc}.pc.in" "${PROJECT_BINARY_DIR}/${pc}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/${pc}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endfunction()

if(NOT ZevaKernel_DIR)
    zeva_install_package(ZevaKernel TARGETS zvbase zvdb zvcore zevautils)
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/kernel/inc/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/zeva" FILES_MATCHING PATTERN "*.h")
endif()
zeva_install_package(ZevaQt TARGETS qtutils)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/inc/qt/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/zevaqt" FILES_MATCHING PATTERN "*.h")
# The pictures that dialogs and controls look for beside the application's executable.
install(DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/ico_zeva" DESTINATION "${CMAKE_INSTALL_DATADIR}/zevaqt")
