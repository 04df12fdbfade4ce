# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# What the tests of the build share. Each is run with
#   SOURCE_DIR, WORK_DIR, GENERATOR, CXX_COMPILER, LAUNCHER, PREFIX_PATH

cmake_minimum_required(VERSION 3.25)

# configure(SOURCE BUILD RESULT OUTPUT arguments...): sets the two variables to the exit code and to
# everything that was printed. What an earlier run has configured is forgotten, unless AGAIN is among
# the arguments: to find out what the compiler can takes most of the time.
function(configure source build result output)
    set(fresh --fresh)
    if("AGAIN" IN_LIST ARGN)
        list(REMOVE_ITEM ARGN AGAIN)
        set(fresh "")
    endif()
    execute_process(
        COMMAND ${CMAKE_COMMAND} ${fresh} -S ${source} -B ${build} -G ${GENERATOR}
            -D CMAKE_CXX_COMPILER=${CXX_COMPILER} -D CMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER} ${ARGN}
        OUTPUT_VARIABLE printed ERROR_VARIABLE printed RESULT_VARIABLE code)
    set(${result} "${code}" PARENT_SCOPE)
    set(${output} "${printed}" PARENT_SCOPE)
endfunction()

# run(COMMAND...): must succeed; sets "printed" to the standard output.
function(run)
    execute_process(COMMAND ${ARGN}
        OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE code)
    if(NOT code EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "${command}: exit code ${code}\n${output}\n${errors}")
    endif()
    set(printed "${output}" PARENT_SCOPE)
endfunction()

# expect(TEXT CONTAINS|LACKS part)
function(expect text how part)
    string(FIND "${text}" "${part}" found)
    if(how STREQUAL "CONTAINS" AND found EQUAL -1)
        message(FATAL_ERROR "Missing: ${part}\nin:\n${text}")
    elseif(how STREQUAL "LACKS" AND NOT found EQUAL -1)
        message(FATAL_ERROR "Should not be there: ${part}\nin:\n${text}")
    endif()
endfunction()
