# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# Runs the contract suite on the host that is broken in NAME: it must end with 1, and the tests that
# fail must be those in PROMISES (separated by commas) and no others.

cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${PROGRAM} --broken ${NAME}
    OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE code)
# the program's list of failures at the end; above it every failed test is named once as well, with
# its time
string(REGEX MATCHALL "\\[  FAILED  \\] [A-Za-z0-9]+[./][A-Za-z0-9_./]+" lines "${output}")
list(TRANSFORM lines REPLACE "\\[  FAILED  \\] " "")
list(REMOVE_DUPLICATES lines)
list(SORT lines)
string(REPLACE "," ";" expected "${PROMISES}")
list(SORT expected)
if(NOT code EQUAL 1)
    message(FATAL_ERROR "exit code ${code} instead of 1\n${output}${errors}")
endif()
if(NOT lines STREQUAL expected)
    message(FATAL_ERROR "broken promises found: ${lines}\nbut expected: ${expected}\n${output}")
endif()
