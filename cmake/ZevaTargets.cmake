# SPDX-License-Identifier: MIT
# Settings every target shares, and the functions that make the targets that come in many copies.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
# Installed libraries stand in one folder and find each other there.
set(CMAKE_INSTALL_RPATH "$ORIGIN")
if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

add_library(zeva_settings INTERFACE)
target_compile_options(zeva_settings INTERFACE -Wall -Wextra)
if(ZEVA_WARNINGS_AS_ERRORS)
    target_compile_options(zeva_settings INTERFACE -Werror)
endif()
if(ZEVA_SANITIZE)
    target_compile_options(zeva_settings INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(zeva_settings INTERFACE -fsanitize=address,undefined)
endif()

# Calls that Qt deprecated before the oldest version we build with do not compile.
add_library(zeva_qt_settings INTERFACE)
target_link_libraries(zeva_qt_settings INTERFACE zeva_settings)
target_compile_definitions(zeva_qt_settings INTERFACE
    QT_DISABLE_DEPRECATED_BEFORE=0x050e00 QT_NO_CAST_TO_ASCII QT_USE_QSTRINGBUILDER)

# zeva_precompile(TARGET HEADER...): precompiles the headers for the target, when asked to.
function(zeva_precompile target)
    if(ZEVA_PRECOMPILED_HEADERS)
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()

# zeva_hide_standard_library(TARGET): the library shows nothing that it instantiates of the standard library.
function(zeva_hide_standard_library target)
    set(map "${PROJECT_SOURCE_DIR}/cmake/hide-standard-library.map")
    target_link_options(${target} PRIVATE "LINKER:--version-script=${map}")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${map}")
endfunction()

# zeva_kernel_library(NAME SOURCES... ): one of the four libraries of the reference kernel.
# zvbase is offered as Zeva::base, zvdb as Zeva::db, zvcore as Zeva::core, zevautils as Zeva::utils.
function(zeva_kernel_library target export_name)
    add_library(${target} SHARED)
    add_library(Zeva::${export_name} ALIAS ${target})
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${export_name} VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    target_include_directories(${target} PUBLIC
        "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/kernel/inc>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/zeva>")
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:zeva_settings>)
    zeva_hide_standard_library(${target})
endfunction()
