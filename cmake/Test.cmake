find_package(GTest REQUIRED)
include(GoogleTest)

# The build's compiler, or another that is faster: where it is that of the build with the sanitizers,
# a compiler cache has to compile tests once.
if(TAMBO_TEST_COMPILER)
    find_program(TAMBO_TEST_COMPILER_PATH ${TAMBO_TEST_COMPILER} REQUIRED)
    set(TAMBO_TEST_LAUNCHER ${PROJECT_SOURCE_DIR}/cmake/compile-with ${CMAKE_CXX_COMPILER_LAUNCHER}
                            ${TAMBO_TEST_COMPILER_PATH} --)
    # As clang, and the build with the sanitizers, has it.
    set(CMAKE_PCH_EXTENSION .pch)
    set(CMAKE_PCH_PROLOGUE "#pragma clang system_header")
    set(CMAKE_CXX_COMPILE_OPTIONS_CREATE_PCH
        -Xclang -emit-pch -Xclang -include -Xclang <PCH_HEADER> -x c++-header)
    set(CMAKE_CXX_COMPILE_OPTIONS_USE_PCH -Xclang -include-pch -Xclang <PCH_FILE>)
endif()
# The compiler that tests are compiled with, as a compiler cache is to know their common headers.
set(test_compiler "${CMAKE_CXX_COMPILER_ID}")
if(TAMBO_TEST_COMPILER)
    set(test_compiler Clang)
endif()

# The target's sources are those of a test.
function(tambo_compile_as_test target)
    target_link_libraries(${target} PRIVATE Tambo::test_flags)
    if(TAMBO_TEST_COMPILER)
        set_target_properties(${target} PROPERTIES
            BY_TEST_COMPILER ON CXX_COMPILER_LAUNCHER "${TAMBO_TEST_LAUNCHER}")
    endif()
endfunction()

if(TAMBO_COMMON_HEADERS)
    set(test_headers ${plain_headers} <filesystem> <fstream> <random> <sstream> <gmock/gmock.h> <gtest/gtest.h>)
    tambo_common_headers(test_plain_headers KIND program FLAGS Tambo::test_flags COMPILER ${test_compiler} LIBRARIES GTest::gmock
        HEADERS ${test_headers})
    tambo_common_headers(test_toolkit_headers KIND program FLAGS Tambo::test_flags COMPILER ${test_compiler}
        LIBRARIES GTest::gmock Qt6::Widgets HEADERS ${test_headers} <QtWidgets>)
    if(TAMBO_TEST_COMPILER)
        # Not by the cache, since they name the folder that they were made in.
        set_target_properties(test_plain_headers test_toolkit_headers PROPERTIES
            BY_TEST_COMPILER ON
            CXX_COMPILER_LAUNCHER "${PROJECT_SOURCE_DIR}/cmake/compile-with;${TAMBO_TEST_COMPILER_PATH};--")
    endif()
endif()

# What every test runs with. The sanitizers' reports name the line; a leak counts as a failure, but
# for those of libraries that are listed with their reason.
set(TAMBO_TEST_ENVIRONMENT QT_QPA_PLATFORM=offscreen)
if(TAMBO_SANITIZE)
    list(APPEND TAMBO_TEST_ENVIRONMENT
        TAMBO_SHORT_TESTS=1
        # The sanitizers guess where C libraries as new as this one keep the variables of threads that
        # come with a plug-in; a wrong guess ends the search for leaks.
        ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:intercept_tls_get_addr=0
        UBSAN_OPTIONS=print_stacktrace=1
        LSAN_OPTIONS=print_suppressions=0:suppressions=${PROJECT_SOURCE_DIR}/tests/support/leaks.supp)
endif()

# tambo_test(name SOURCES ... LIBRARIES ... [QT] [LABEL unit|window|plugin|slow] [PROGRAMS ...])
# One test program; every case is a CTest test of its own. Where all are to be run (without
# TAMBO_TEST_EACH, and under the sanitizers) the program is one test, since starting a process costs more
# than a case; it leaves a list of its cases in the build's folder "cases". Those on screens stay apart.
# With QT it runs under an application object on the offscreen platform, and fails on any message that
# the case did not announce. The programs are built before it and stand in BUILD_DIR/bin; window tests
# know that place as well.
# One that uses the toolkit without QT has DISABLE_PRECOMPILE_HEADERS set, since it is compiled otherwise
# than those that do not know the toolkit.
function(tambo_test name)
    cmake_parse_arguments(arg "QT" "LABEL" "SOURCES;LIBRARIES;PROGRAMS" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests ${CMAKE_CURRENT_SOURCE_DIR})
    target_compile_definitions(${name} PRIVATE
        TEST_DATA_DIR="${PROJECT_SOURCE_DIR}/tests/data"
        SOURCE_DIR="${PROJECT_SOURCE_DIR}")
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gmock)
    tambo_compile_as_test(${name})
    if(arg_QT)
        target_link_libraries(${name} PRIVATE test_support)
        tambo_take_common_headers(${name} test_toolkit_headers)
        # Qt would name the build folder on the command line, which keeps a compiler cache from
        # finding what another build has compiled.
        set_target_properties(${name} PROPERTIES QT_TESTCASE_BUILDDIR ${PROJECT_SOURCE_DIR})
    else()
        target_link_libraries(${name} PRIVATE GTest::gtest_main)
        tambo_take_common_headers(${name} test_plain_headers)
    endif()
    if(arg_PROGRAMS OR arg_LABEL STREQUAL window)
        target_compile_definitions(${name} PRIVATE BUILD_DIR="${PROJECT_BINARY_DIR}")
    endif()
    if(arg_PROGRAMS)
        add_dependencies(${name} ${arg_PROGRAMS})
    endif()
    if(NOT arg_LABEL)
        set(arg_LABEL unit)
    endif()
    if(TAMBO_SANITIZE OR NOT (TAMBO_TEST_EACH OR arg_LABEL STREQUAL window))
        add_test(NAME ${name} COMMAND ${name} --gtest_output=xml:${PROJECT_BINARY_DIR}/cases/)
        set_tests_properties(${name} PROPERTIES
            LABELS "${arg_LABEL}" ENVIRONMENT "${TAMBO_TEST_ENVIRONMENT}")
    else()
        gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60
            PROPERTIES LABELS "${arg_LABEL}" ENVIRONMENT "${TAMBO_TEST_ENVIRONMENT}")
    endif()
endfunction()
