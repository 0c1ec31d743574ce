# Warnings and definitions for all of our targets.
add_library(kelvara_options INTERFACE)
target_compile_options(kelvara_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
# False positives of GCC 12 in its own string and variant headers when optimising; the sanitizer
# build catches real ones.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(kelvara_options INTERFACE
        -Wno-maybe-uninitialized -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow)
endif()
target_compile_definitions(kelvara_options INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_ASCII QT_DISABLE_DEPRECATED_BEFORE=0x060400
    SQLITE_HAS_CODEC KELVARA_VERSION="${PROJECT_VERSION}")
target_include_directories(kelvara_options INTERFACE
    ${CMAKE_SOURCE_DIR}/src ${CMAKE_BINARY_DIR}/generated)

option(KELVARA_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
if(KELVARA_SANITIZE)
    target_compile_options(kelvara_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(kelvara_options INTERFACE -fsanitize=address,undefined)
endif()

# add_module(NAME RULES a.cpp ... [FORMS frmx.cpp ...] [NEEDS other ...] [FORMS_NEED other ...]
#            [SIGNALS])
#
# One subsystem: the library NAME holds its rules and cannot see widgets; NAME_forms holds its
# forms. A rule that includes a widget's header does not compile. What nearly all include is compiled
# once: rules take it from store, forms from ui, tests from test_main. SIGNALS: one of the rules has
# signals; forms always may.
function(add_module name)
    cmake_parse_arguments(M "SIGNALS" "" "RULES;FORMS;NEEDS;FORMS_NEED" ${ARGN})
    add_library(${name} STATIC ${M_RULES})
    target_link_libraries(${name} PUBLIC kelvara_options Qt6::Core ${M_NEEDS})
    if(name STREQUAL "store")
        target_precompile_headers(store PRIVATE ${CMAKE_SOURCE_DIR}/cmake/rules_pch.h)
    else()
        target_precompile_headers(${name} REUSE_FROM store)
    endif()
    if(M_SIGNALS)
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
    endif()
    if(M_FORMS)
        add_library(${name}_forms STATIC ${M_FORMS})
        set_target_properties(${name}_forms PROPERTIES AUTOMOC ON)
        target_link_libraries(${name}_forms PUBLIC ${name} ui Qt6::Widgets ${M_FORMS_NEED})
        target_precompile_headers(${name}_forms REUSE_FROM ui)
    endif()
endfunction()

# The code under test is optimised; the tests themselves only need to compile quickly.
set(KELVARA_TEST_OPTIONS $<$<CONFIG:RelWithDebInfo>:-O0>)

# add_kelvara_test(NAME SOURCES a_test.cpp ... LINKS lib ...): one test program, run headless.
function(add_kelvara_test name)
    cmake_parse_arguments(T "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${T_SOURCES})
    set_target_properties(${name} PROPERTIES UNITY_BUILD OFF) # fixtures of one name live side by side
    target_link_libraries(${name} PRIVATE ${T_LINKS} kelvara_options GTest::gtest)
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_compile_options(${name} PRIVATE ${KELVARA_TEST_OPTIONS})
    target_precompile_headers(${name} REUSE_FROM test_main)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8" TIMEOUT 900)
    # All tests also run on the server engine, see tests/support/server_engine.h, except those of
    # the program, which chooses its own engine.
    if("test_clinic" IN_LIST T_LINKS AND NOT name MATCHES "program")
        add_test(NAME ${name}_on_server COMMAND ${name})
        set_tests_properties(${name}_on_server PROPERTIES
            ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;KELVARA_TEST_SERVER=1" TIMEOUT 900)
    endif()
endfunction()
