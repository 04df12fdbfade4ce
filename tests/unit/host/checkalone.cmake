# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# Compiles each of HEADERS (below host/, a list with commas) by itself, included twice, with COMPILER,
# INCLUDES and DEFINITIONS as a plug-in has them, and names those that cannot be.

cmake_minimum_required(VERSION 3.25)
string(REPLACE "," ";" HEADERS "${HEADERS}")
list(TRANSFORM INCLUDES PREPEND "-I")
list(TRANSFORM DEFINITIONS PREPEND "-D")
set(refused "")
foreach(header IN LISTS HEADERS)
    string(REGEX REPLACE "[/.]" "_" name ${header})
    set(source ${WORK_DIR}/${name}.cpp)
    file(WRITE ${source} "#include \"host/${header}\"\n#include \"host/${header}\"\n")
    execute_process(
        COMMAND ${COMPILER} -std=c++20 -fsyntax-only -fPIC -Wall -Wextra -Wpedantic -Werror
            ${DEFINITIONS} ${INCLUDES} ${source}
        ERROR_VARIABLE said RESULT_VARIABLE code)
    if(NOT code EQUAL 0)
        string(APPEND refused "host/${header} does not compile by itself:\n${said}\n")
    endif()
endforeach()
if(refused)
    message(FATAL_ERROR "${refused}")
endif()
list(LENGTH HEADERS count)
message(STATUS "${count} headers compile by themselves")
