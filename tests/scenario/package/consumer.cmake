# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# The example of a till outside the tree is built with what is installed; it loads the installed
# plug-in, and the contract suite finds the one promise that it breaks.

include(${CMAKE_CURRENT_LIST_DIR}/installed.cmake)

file(COPY ${SOURCE_DIR}/docs/example-host DESTINATION ${WORK_DIR})
set(build ${WORK_DIR}/build)
configure(${WORK_DIR}/example-host ${build} code output
    -D "CMAKE_PREFIX_PATH=${PREFIX};${PREFIX_PATH}"
    -D "CMAKE_CXX_FLAGS=-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror")
if(NOT code EQUAL 0)
    message(FATAL_ERROR "The example cannot be configured:\n${output}")
endif()
run(${CMAKE_COMMAND} --build ${build} --parallel 2)

run(${build}/example-till)
expect("${printed}" CONTAINS "liborva.so: loyalty system 15 works")

# The same till under the loyalty system that watches, where the package says it is.
execute_process(COMMAND ${CMAKE_CTEST_COMMAND} --test-dir ${build} -R order --no-tests=error -V
    OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE code)
expect("${output}" CONTAINS "libposhost-watch.so: loyalty system 15 works")
expect("${output}" CONTAINS "poshost-watch: 2 calls watched, 0 findings")
if(NOT code EQUAL 0)
    message(FATAL_ERROR "exit code ${code}: ${output}")
endif()

execute_process(COMMAND ${build}/example-contract
    OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE code)
expect("${output}" CONTAINS " 1 FAILED TEST")
expect("${output}" CONTAINS
    "[  FAILED  ] PluginDataContract.KeepsEveryKindOfValueAcrossARestart")
expect("${output}" CONTAINS "contract/plugindatapromises.cpp:")
if(NOT code EQUAL 1)
    message(FATAL_ERROR "exit code ${code} instead of 1")
endif()

# A version that does not fit is not found.
file(WRITE ${WORK_DIR}/other/CMakeLists.txt
    "cmake_minimum_required(VERSION 3.25)\nproject(Other NONE)\nfind_package(PosHost 0.2 REQUIRED)\n")
configure(${WORK_DIR}/other ${WORK_DIR}/other/build code output
    -D PosHost_DIR=${PREFIX}/${LIBDIR}/cmake/PosHost)
if(code EQUAL 0)
    message(FATAL_ERROR "version 0.2 was found")
endif()
expect("${output}" CONTAINS "requested version \"0.2\"")
