# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# The helpers for tests: programs of GoogleTest, libraries of what tests share, and what ctest knows of
# them.

# Binutils' second linker takes a third of the time of the first one. What is shipped is linked by the
# compiler's own choice.
find_program(ORVA_QUICK_LINKER ld.gold)
set(ORVA_QUICK_LINK "")
if(ORVA_QUICK_LINKER AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT ORVA_SANITIZE AND NOT ORVA_COVERAGE)
    set(ORVA_QUICK_LINK -fuse-ld=gold)
endif()

# Clang compiles what is not optimised in half of GCC's time. What is shipped, and what computes for long, is
# compiled by the compiler that was chosen, and so are builds by which that is tried otherwise.
find_program(ORVA_QUICK_COMPILER clang++-14)
set(ORVA_QUICK_LAUNCHER "")
if(ORVA_QUICK_COMPILER AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_BUILD_TYPE STREQUAL "Release"
        AND NOT ORVA_SANITIZE AND NOT ORVA_COVERAGE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(ORVA_QUICK_LAUNCHER ${PROJECT_BINARY_DIR}/quickcompiler)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/quickcompiler.in ${ORVA_QUICK_LAUNCHER} @ONLY
        FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
endif()

# _orva_compile_quickly(TARGET): for a target that is not optimised
function(_orva_compile_quickly target)
    if(ORVA_QUICK_LAUNCHER)
        set_target_properties(${target} PROPERTIES RULE_LAUNCH_COMPILE ${ORVA_QUICK_LAUNCHER})
    endif()
endfunction()

# _orva_test_settings(TARGET [OPTIMIZED]): for whatever stands in tests/ or contract/. What a test does
# once need not be fast, so it is not optimised; OPTIMIZED is for what computes for long. Several sources
# are compiled as one (ORVA_UNITY), since each of them reads the same headers again: what stands in the
# unnamed namespaces of a target's files has different names.
function(_orva_test_settings target)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "OPTIMIZED" "" "")
    _orva_settings(${target})
    target_link_options(${target} PRIVATE ${ORVA_QUICK_LINK})
    target_link_libraries(${target} PRIVATE Qt6::Core Qt6::Xml GTest::gmock)
    if(NOT ARG_OPTIMIZED)
        target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O0>)
        _orva_compile_quickly(${target})
        _orva_reuse_headers(${target} orva-test-precompiled)
    endif()
    # The printers of Qt's types: among the precompiled headers, or included where these are not.
    get_target_property(precompiled ${target} PRECOMPILE_HEADERS_REUSE_FROM)
    if(NOT precompiled)
        target_compile_options(${target} PRIVATE
            "SHELL:-include ${PROJECT_SOURCE_DIR}/contract/printers.h")
    endif()
    if(ORVA_UNITY)
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
        # A name of one file may hide one of another there, and a fixture in an unnamed namespace is
        # no longer in the compiler's main file; nothing is wrong with either.
        target_compile_options(${target} PRIVATE -Wno-shadow
            $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local> $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
    endif()
endfunction()

# orva_test_library(NAME [OPTIMIZED] sources...): what several test programs share
function(orva_test_library target)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "OPTIMIZED" "" "")
    add_library(${target} STATIC ${ARG_UNPARSED_ARGUMENTS})
    set(optimized "")
    if(ARG_OPTIMIZED)
        set(optimized OPTIMIZED)
    endif()
    _orva_test_settings(${target} ${optimized})
    target_link_libraries(${target} PUBLIC Qt6::Core Qt6::Xml GTest::gmock)
endfunction()

# orva_test(NAME SOURCES ... [LIBRARIES ...] [DEFINITIONS ...] [TIMEOUT seconds] [SERIAL] [WAITS]
#     [OPTIMIZED] [ONE_LOCALE pattern] [LONG pattern])
# A GoogleTest program. Every test in it runs twice: under the C locale and under a Russian one,
# whose decimal comma must change nothing. TIMEOUT is for one test. SERIAL: it measures time-outs, so
# ctest runs nothing beside one of its tests; WAITS: it mostly waits for others and leaves its core to
# them. ONE_LOCALE names tests (as --gtest_filter does) that wait or compute for long about something
# that no locale changes: where whole programs run, the Russian run leaves them to a program of its own,
# which is long (orva_long_tests). LONG names tests that are long in the first locale too and wait for the
# second in vain.
function(orva_test target)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "SERIAL;WAITS;OPTIMIZED" "TIMEOUT;ONE_LOCALE;LONG"
        "SOURCES;LIBRARIES;DEFINITIONS")
    add_executable(${target} ${ARG_SOURCES})
    set(optimized "")
    if(ARG_OPTIMIZED)
        set(optimized OPTIMIZED)
    endif()
    _orva_test_settings(${target} ${optimized})
    target_link_libraries(${target} PRIVATE orva-testmain GTest::gmock ${ARG_LIBRARIES})
    target_compile_definitions(${target} PRIVATE ${ARG_DEFINITIONS}
        ORVA_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data")
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 60)
    endif()
    if(ORVA_SANITIZE) # without optimisation and watched, the long ones take several times as long
        math(EXPR ARG_TIMEOUT "10 * ${ARG_TIMEOUT}")
    endif()
    set(serial "")
    if(ARG_SERIAL)
        set(serial RUN_SERIAL TRUE)
    endif()

    get_property(entries DIRECTORY PROPERTY TEST_INCLUDE_FILES)
    set_property(DIRECTORY PROPERTY TEST_INCLUDE_FILES "")
    gtest_discover_tests(${target} TEST_PREFIX "${target}." DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        PROPERTIES TIMEOUT ${ARG_TIMEOUT} ENVIRONMENT "LC_ALL=C.UTF-8" ${serial})
    gtest_discover_tests(${target} TEST_PREFIX "ru.${target}." DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60 TEST_LIST ${target}_RU
        PROPERTIES TIMEOUT ${ARG_TIMEOUT}
            ENVIRONMENT "LC_ALL=ru_RU.UTF-8;ORVA_EXPECT_DECIMAL_COMMA=1" ${serial})
    get_property(each_test DIRECTORY PROPERTY TEST_INCLUDE_FILES)
    set(choice ${CMAKE_CURRENT_BINARY_DIR}/${target}_entries.cmake)
    _orva_write_entries(${choice} ${target} ${ARG_TIMEOUT} "${serial}" "${ARG_WAITS}" "${each_test}"
        "${ARG_ONE_LOCALE}" "${ARG_LONG}")
    set_property(DIRECTORY PROPERTY TEST_INCLUDE_FILES ${entries} ${choice})
endfunction()

# What ctest reads: one entry for each test, or, where ORVA_TESTS is "programs", one for the whole
# program in each locale. To start a process takes longer than most tests. What measures time-outs has
# others beside it then: it sleeps, and who wakes up goes before who computes. What waits takes one of
# six places a core and begins first, what computes takes three.
function(_orva_write_entries file target timeout serial waits each_test one_locale long)
    set(places 3)
    set(cost "")
    if(waits OR serial)
        set(places 1)
        set(cost " COST 50")
    endif()
    # what waits in one test after the other is the longest of all
    if(waits AND serial)
        set(cost " COST 100")
    endif()
    set(includes "")
    foreach(include IN LISTS each_test)
        string(APPEND includes "    include([==[${include}]==])\n")
    endforeach()
    set(whole "")
    set(russian "LC_ALL=ru_RU.UTF-8;ORVA_EXPECT_DECIMAL_COMMA=1")
    set(names ${target})
    set(filter_of_${target} "")
    if(NOT one_locale STREQUAL "*")
        list(APPEND names ru.${target})
        set(filter_of_ru.${target} "")
    endif()
    if(long)
        set(filter_of_${target} " [==[--gtest_filter=-${long}]==]")
        list(APPEND names long.${target})
        set(filter_of_long.${target} " [==[--gtest_filter=${long}]==]")
    endif()
    if(one_locale)
        list(APPEND names long.ru.${target})
        set(filter_of_long.ru.${target} " [==[--gtest_filter=${one_locale}]==]")
    endif()
    if(one_locale OR long)
        string(JOIN ":" elsewhere ${one_locale} ${long})
        set(filter_of_ru.${target} " [==[--gtest_filter=-${elsewhere}]==]")
    endif()
    foreach(name IN LISTS names)
        set(environment "LC_ALL=C.UTF-8")
        if(name MATCHES "^(long\\.)?ru\\.")
            set(environment "${russian}")
        endif()
        set(labels "")
        if(name MATCHES "^long\\.")
            set(labels " LABELS long")
        endif()
        string(APPEND whole
            "    add_test([==[${name}]==] [==[$<TARGET_FILE:${target}>]==]${filter_of_${name}})\n"
            "    set_tests_properties([==[${name}]==] PROPERTIES TIMEOUT 1800\n"
            "        PROCESSORS ${places}${cost}${labels}\n"
            "        ENVIRONMENT [==[${environment};ORVA_CASE_SECONDS=${timeout}]==])\n")
    endforeach()
    file(GENERATE OUTPUT ${file} CONTENT
        "if(\"\$ENV{ORVA_TESTS}\" STREQUAL \"programs\")\n${whole}else()\n${includes}endif()\n")
endfunction()

# orva_long_tests(NAMES...): ./test leaves these out when it runs everything, since they take more of its
# time than what they find is likely to break; "scripts/prove rest" runs them.
function(orva_long_tests)
    set_property(TEST ${ARGN} APPEND PROPERTY LABELS long)
endfunction()
