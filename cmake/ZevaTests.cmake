# SPDX-License-Identifier: MIT
find_package(GTest REQUIRED)
find_package(Qt5 5.14 REQUIRED COMPONENTS Test)
include(GoogleTest)
# The distribution's own interpreter comes first: that is where the packaged ezdxf lives.
find_program(ZEVA_PYTHON NAMES python3 PATHS /usr/bin NO_DEFAULT_PATH)
find_program(ZEVA_PYTHON NAMES python3 REQUIRED)

# Real drawings that tests open where the folder is present; such tests skip cleanly where it is not.
set(ZEVA_DRAWINGS_DIR "${PROJECT_SOURCE_DIR}/../shared/drawings" CACHE PATH "Folder with real drawings for the tests")

# What every test finds in its environment. Leaks of the system's own libraries are none of ours.
set(ZEVA_TEST_ENVIRONMENT "LC_ALL=C.UTF-8")
if(ZEVA_SANITIZE)
    list(APPEND ZEVA_TEST_ENVIRONMENT
        "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0"
        "UBSAN_OPTIONS=print_stacktrace=1")
endif()
# Qt is built without frame pointers: only the slow unwinder sees which library leaked. It costs by the frame, and
# sixteen of them reach the library that a leak is known by. And the keyboard library reads what the X server sends as
# strings without an end, which the strict check takes for a fault of ours.
set(ZEVA_QT_TEST_ENVIRONMENT "${ZEVA_TEST_ENVIRONMENT}")
if(ZEVA_SANITIZE)
    list(APPEND ZEVA_TEST_ENVIRONMENT "ASAN_OPTIONS=strict_string_checks=1:detect_stack_use_after_return=1")
    list(APPEND ZEVA_QT_TEST_ENVIRONMENT
        "ASAN_OPTIONS=fast_unwind_on_malloc=0:malloc_context_size=16:detect_stack_use_after_return=1")
endif()

# zeva_kernel_test(NAME SOURCES s... LIBRARIES l...): a GoogleTest program for a kernel library that knows no Qt.
function(zeva_kernel_test name)
    cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(tst_${name} ${arg_SOURCES})
    target_link_libraries(tst_${name} PRIVATE ${arg_LIBRARIES} GTest::gtest GTest::gtest_main zeva_settings)
    target_compile_definitions(tst_${name} PRIVATE
        ZEVA_DRAWINGS_DIR="${ZEVA_DRAWINGS_DIR}" ZEVA_SAMPLES_DIR="${PROJECT_SOURCE_DIR}/samples")
    add_test(NAME ${name} COMMAND tst_${name})
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "${ZEVA_TEST_ENVIRONMENT}")
endfunction()

# zeva_qt_program(NAME SOURCES s... LIBRARIES l...): the program behind the two kinds of test below.
function(zeva_qt_program name)
    cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(tst_${name} ${arg_SOURCES})
    set_target_properties(tst_${name} PROPERTIES AUTOMOC ON)
    target_link_libraries(tst_${name} PRIVATE ${arg_LIBRARIES} Qt5::Test Qt5::Widgets zeva_qt_settings)
    target_compile_definitions(tst_${name} PRIVATE
        ZEVA_DRAWINGS_DIR="${ZEVA_DRAWINGS_DIR}" ZEVA_SAMPLES_DIR="${PROJECT_SOURCE_DIR}/samples")
endfunction()

# zeva_qt_test(NAME SOURCES s... LIBRARIES l...): a QtTest program on the offscreen platform.
function(zeva_qt_test name)
    zeva_qt_program(${name} ${ARGN})
    add_test(NAME ${name} COMMAND tst_${name})
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "${ZEVA_QT_TEST_ENVIRONMENT};QT_QPA_PLATFORM=offscreen")
endfunction()

# zeva_qt_test_densities(NAME dpi...): the same program once more for each of these densities of the screen.
function(zeva_qt_test_densities name)
    foreach(dpi IN LISTS ARGN)
        add_test(NAME ${name}_${dpi}dpi COMMAND tst_${name})
        set_tests_properties(${name}_${dpi}dpi PROPERTIES
            ENVIRONMENT "${ZEVA_QT_TEST_ENVIRONMENT};QT_QPA_PLATFORM=offscreen;ZEVA_TEST_DPI=${dpi}")
    endforeach()
endfunction()

# zeva_x11_test(NAME SOURCES s... LIBRARIES l...): a QtTest program on an X server of its own with a window manager.
function(zeva_x11_test name)
    zeva_qt_program(${name} ${ARGN})
    add_test(NAME ${name} COMMAND "${PROJECT_SOURCE_DIR}/tests/support/virtual-display" $<TARGET_FILE:tst_${name}>)
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "${ZEVA_QT_TEST_ENVIRONMENT}" LABELS x11)
endfunction()
