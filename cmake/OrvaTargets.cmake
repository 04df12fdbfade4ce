# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# One helper for each kind of target, so that warnings, visibility and the Qt definitions stand in
# one place.

# Where "host/…", "client/…" and so on are found.
set(ORVA_INCLUDE_ROOT ${PROJECT_SOURCE_DIR})

function(_orva_settings target)
    target_compile_features(${target} PRIVATE cxx_std_20)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wconversion -Wshadow
        # Points are spread over the lines in doubles: a fused multiply-add would round elsewhere.
        -ffp-contract=off
        # GCC 12 reports these for lists of shared pointers and for strings put together, where
        # nothing is uninitialised or overlaps, once it optimises.
        $<$<AND:$<CXX_COMPILER_ID:GNU>,$<NOT:$<CONFIG:Debug>>>:-Wno-maybe-uninitialized>
        $<$<AND:$<CXX_COMPILER_ID:GNU>,$<NOT:$<CONFIG:Debug>>>:-Wno-restrict>)
    target_compile_definitions(${target} PRIVATE
        QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY
        QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_FOREACH
        QT_NO_KEYWORDS QT_STRICT_ITERATORS)
    target_include_directories(${target} PRIVATE ${ORVA_INCLUDE_ROOT} ${PROJECT_BINARY_DIR})
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        POSITION_INDEPENDENT_CODE ON
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        AUTOMOC ON)
    if(ORVA_COVERAGE)
        target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic)
        target_link_options(${target} PRIVATE --coverage)
    endif()
    if(ORVA_FUZZ)
        target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
    if(ORVA_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${ORVA_SANITIZE} -fno-sanitize-recover=all
            -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${ORVA_SANITIZE})
    endif()
endfunction()

# Compiles the headers that nearly every file includes once for all targets. A compiler cache works
# better without.
function(_orva_reuse_headers target from)
    if(ORVA_PRECOMPILE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
        target_precompile_headers(${target} REUSE_FROM ${from})
        # The headers are compiled as for a library. Qt up to 6.4 asks for that in programs too.
        target_compile_options(${target} PRIVATE
            $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-fPIC>)
    endif()
endfunction()

# orva_precompiled_headers(NAME LIBRARIES libraries... HEADERS headers...)
function(orva_precompiled_headers target)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "LIBRARIES;HEADERS")
    add_library(${target} STATIC ${PROJECT_SOURCE_DIR}/cmake/precompiled.cpp)
    _orva_settings(${target})
    target_link_libraries(${target} PRIVATE ${ARG_LIBRARIES})
    if(ORVA_PRECOMPILE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
        target_precompile_headers(${target} PRIVATE ${ARG_HEADERS})
    endif()
endfunction()

# orva_library(NAME [SHARED|STATIC] sources...)
function(orva_library target kind)
    add_library(${target} ${kind} ${ARGN})
    _orva_settings(${target})
    _orva_reuse_headers(${target} orva-precompiled)
endfunction()

# orva_few_units(TARGET): compiles several sources of a large library as one where the tests or the
# fuzzers are built so (ORVA_UNITY), which takes less than half as long. Not for client/ and plugin/, where
# a change is to be tried in seconds, but in the fuzzers. Builds without tests and for mutants compile each
# source by itself.
function(orva_few_units target)
    if(ORVA_UNITY AND (ORVA_BUILD_TESTS OR ORVA_FUZZ))
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
    endif()
endfunction()

# orva_reads_arguments(SOURCES...): sources of the current folder that read a command line. The library
# for that is all templates, which nobody waits for: optimised less they compile in two thirds of the
# time.
function(orva_reads_arguments)
    set_property(SOURCE ${ARGN} APPEND PROPERTY COMPILE_OPTIONS $<$<CONFIG:Release>:-O1>)
    set_property(SOURCE ${ARGN} PROPERTY SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# orva_plugin(NAME sources...): a module that is loaded, never linked
function(orva_plugin target)
    add_library(${target} MODULE ${ARGN})
    _orva_settings(${target})
    _orva_reuse_headers(${target} orva-precompiled)
endfunction()

# orva_program(NAME sources...): built into <build>/bin
function(orva_program target)
    add_executable(${target} ${ARGN})
    _orva_settings(${target})
    _orva_reuse_headers(${target} orva-precompiled)
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
endfunction()
