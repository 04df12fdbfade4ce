# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# Refuses every call of the TOML parser in the library and the programs but the one behind the guard.

cmake_minimum_required(VERSION 3.25)
set(calls "")
set(seen 0)
foreach(folder input host client plugin wire console till simulator)
    file(GLOB_RECURSE sources ${SOURCE_DIR}/${folder}/*.h ${SOURCE_DIR}/${folder}/*.cpp)
    foreach(source IN LISTS sources)
        math(EXPR seen "${seen} + 1")
        file(STRINGS ${source} lines REGEX "toml::(parse|parse_file|parser)[ \t]*[({]|using namespace toml")
        foreach(line IN LISTS lines)
            file(RELATIVE_PATH name ${SOURCE_DIR} ${source})
            list(APPEND calls "${name}")
        endforeach()
    endforeach()
endforeach()
if(seen LESS 200)
    message(FATAL_ERROR "Only ${seen} sources found: wrong folder?")
endif()
if(NOT calls STREQUAL "input/tomlguard.cpp")
    message(FATAL_ERROR "The TOML parser is called, once each, in: ${calls}")
endif()
