# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# One helper for each kind of target, so that warnings, visibility and the Qt definitions stand in
# one place.

# Files within programs bear no times: rcc takes them from whoever happens to compile, unless the format
# has none.
set(ORVA_RESOURCE_OPTIONS --format-version 1)

# Where "host/…", "client/…" and so on are found.
set(ORVA_INCLUDE_ROOT ${PROJECT_SOURCE_DIR})

# What arithmetic yields is the same on every machine: the registers of old 32-bit processors hold more
# digits than a double has.
set(ORVA_ARITHMETIC_OPTIONS "")
if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "86|AMD64")
    set(ORVA_ARITHMETIC_OPTIONS -msse2 -mfpmath=sse)
endif()

function(_orva_settings target)
    target_compile_features(${target} PRIVATE cxx_std_20)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wconversion -Wshadow
        # Points are spread over the lines in doubles: a fused multiply-add would round elsewhere.
        -ffp-contract=off
        ${ORVA_ARITHMETIC_OPTIONS}
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
        VISIBILITY_INLINES_HIDDEN ON)
    # once all its folders have named their sources
    cmake_language(EVAL CODE "cmake_language(DEFER DIRECTORY [==[${PROJECT_SOURCE_DIR}]==]
        CALL _orva_moc_where_needed ${target})")
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

# _orva_moc_where_needed(TARGET): Qt's generator for those who have work for it, unless the target says
# otherwise. Looking for that, and compiling that there is nothing, takes longer at each build than many
# a source. The build file is written anew where a source gets its first such line ("cmake build/release");
# until then the linker misses what would be generated.
function(_orva_moc_where_needed target)
    get_property(decided TARGET ${target} PROPERTY AUTOMOC SET)
    if(decided)
        return()
    endif()
    get_target_property(sources ${target} SOURCES)
    get_target_property(folder ${target} SOURCE_DIR)
    set(needed OFF)
    foreach(source IN LISTS sources)
        if(source MATCHES "\\$<")
            continue()
        endif()
        cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${folder})
        string(REGEX REPLACE "\\.cpp$" ".h" header "${source}")
        foreach(file IN ITEMS ${source} ${header})
            if(EXISTS ${file})
                file(STRINGS ${file} found LIMIT_COUNT 1
                    REGEX "^[ \t]*Q_(OBJECT|GADGET|NAMESPACE|PLUGIN_METADATA)")
                if(found)
                    set(needed ON)
                endif()
            endif()
        endforeach()
    endforeach()
    set_target_properties(${target} PROPERTIES AUTOMOC ${needed})
endfunction()

# For what is shipped: Debian's hardening, all of it, and nothing of the folder or the hour of the build in
# what comes out. The tests are not optimised, which the checks of the C library's functions need.
function(_orva_shipped target)
    if(ORVA_SANITIZE OR ORVA_COVERAGE OR ORVA_FUZZ)
        return()
    endif()
    set(control_flow "")
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "86|AMD64")
        set(control_flow -fcf-protection)
    endif()
    target_compile_options(${target} PRIVATE
        $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>
        -fstack-protector-strong -fstack-clash-protection ${control_flow}
        -Wformat -Werror=format-security -Werror=date-time
        -ffile-prefix-map=${PROJECT_SOURCE_DIR}/= -ffile-prefix-map=${PROJECT_BINARY_DIR}=build)
    get_target_property(type ${target} TYPE)
    if(NOT type MATCHES "STATIC_LIBRARY|OBJECT_LIBRARY")
        # An identifier would be computed of what strip takes away too, where compilers do not agree with
        # themselves from one run to the next. The search path for trying has a length like any other text.
        target_link_options(${target} PRIVATE -Wl,-z,relro -Wl,-z,now -Wl,--build-id=none)
        set_target_properties(${target} PROPERTIES BUILD_RPATH_USE_ORIGIN ON)
    endif()
    if(type STREQUAL "EXECUTABLE")
        target_link_options(${target} PRIVATE -fPIE -pie)
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

# orva_precompiled_headers(NAME [TESTS] LIBRARIES libraries... HEADERS headers...)
function(orva_precompiled_headers target)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "TESTS" "" "LIBRARIES;HEADERS")
    add_library(${target} STATIC ${PROJECT_SOURCE_DIR}/cmake/precompiled.cpp)
    _orva_settings(${target})
    if(NOT ARG_TESTS)
        _orva_shipped(${target})
        # A compiler takes them without what only debuggers read where they are made with it, and never
        # the other way round.
        target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-g>)
    endif()
    target_link_libraries(${target} PRIVATE ${ARG_LIBRARIES})
    if(ORVA_PRECOMPILE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
        target_precompile_headers(${target} PRIVATE ${ARG_HEADERS})
    endif()
endfunction()

# orva_library(NAME [SHARED|STATIC] sources...)
function(orva_library target kind)
    add_library(${target} ${kind} ${ARGN})
    _orva_settings(${target})
    _orva_shipped(${target})
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
    _orva_shipped(${target})
    _orva_reuse_headers(${target} orva-precompiled)
endfunction()

# orva_program(NAME sources...): built into <build>/bin
function(orva_program target)
    add_executable(${target} ${ARGN})
    _orva_settings(${target})
    _orva_shipped(${target})
    _orva_reuse_headers(${target} orva-precompiled)
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
endfunction()
