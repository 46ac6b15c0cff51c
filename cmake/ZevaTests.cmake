# SPDX-License-Identifier: MIT
find_package(GTest REQUIRED)
find_package(Qt5 5.14 REQUIRED COMPONENTS Test)
include(GoogleTest)

# Real drawings that tests open where the folder is present; such tests skip cleanly where it is not.
set(ZEVA_DRAWINGS_DIR "${PROJECT_SOURCE_DIR}/../shared/drawings" CACHE PATH "Folder with real drawings for the tests")

# zeva_kernel_test(NAME SOURCES s... LIBRARIES l...): a GoogleTest program for a kernel library that knows no Qt.
function(zeva_kernel_test name)
    cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(tst_${name} ${arg_SOURCES})
    target_link_libraries(tst_${name} PRIVATE ${arg_LIBRARIES} GTest::gtest GTest::gtest_main zeva_settings)
    target_compile_definitions(tst_${name} PRIVATE
        ZEVA_DRAWINGS_DIR="${ZEVA_DRAWINGS_DIR}" ZEVA_SAMPLES_DIR="${PROJECT_SOURCE_DIR}/samples")
    add_test(NAME ${name} COMMAND tst_${name})
endfunction()

# zeva_qt_test(NAME SOURCES s... LIBRARIES l...): a QtTest program on the offscreen platform.
function(zeva_qt_test name)
    cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(tst_${name} ${arg_SOURCES})
    set_target_properties(tst_${name} PROPERTIES AUTOMOC ON)
    target_link_libraries(tst_${name} PRIVATE ${arg_LIBRARIES} Qt5::Test Qt5::Widgets zeva_qt_settings)
    target_compile_definitions(tst_${name} PRIVATE
        ZEVA_DRAWINGS_DIR="${ZEVA_DRAWINGS_DIR}" ZEVA_SAMPLES_DIR="${PROJECT_SOURCE_DIR}/samples")
    add_test(NAME ${name} COMMAND tst_${name})
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()
