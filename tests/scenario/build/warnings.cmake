# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# A warning is an error in every build of a preset, and in none that is configured without one.

include(${CMAKE_CURRENT_LIST_DIR}/steps.cmake)

# every_command(BUILD CONTAINS|LACKS part): what the compiler is called with, file by file
function(every_command build how part)
    file(STRINGS ${build}/compile_commands.json commands REGEX "^  \"command\": ")
    list(LENGTH commands count)
    if(count LESS 50)
        message(FATAL_ERROR "Only ${count} files are compiled in ${build}.")
    endif()
    foreach(command IN LISTS commands)
        if(command MATCHES " -Wall ") # Qt's own generated sources are compiled without
            expect("${command} " ${how} " ${part} ")
            set(seen TRUE)
        endif()
    endforeach()
    if(NOT seen)
        message(FATAL_ERROR "No file is compiled with warnings in ${build}.")
    endif()
endfunction()

configure(${SOURCE_DIR} ${WORK_DIR}/plain code output
    -D "CMAKE_PREFIX_PATH=${PREFIX_PATH}" -D ORVA_BUILD_TESTS=OFF)
if(NOT code EQUAL 0)
    message(FATAL_ERROR "Configuring failed:\n${output}")
endif()
every_command(${WORK_DIR}/plain LACKS "-Werror")

file(READ ${SOURCE_DIR}/CMakePresets.json presets)
string(JSON count LENGTH "${presets}" configurePresets)
math(EXPR last "${count} - 1")
foreach(index RANGE ${last})
    string(JSON name GET "${presets}" configurePresets ${index} name)
    string(JSON hidden ERROR_VARIABLE none GET "${presets}" configurePresets ${index} hidden)
    if(hidden STREQUAL "ON")
        continue()
    endif()
    list(APPEND names ${name})
    # -N: only says what the preset sets
    run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/preset --preset ${name} -N)
    expect("${printed}" CONTAINS "CMAKE_COMPILE_WARNING_AS_ERROR:BOOL=\"ON\"")
endforeach()
expect(";${names};" CONTAINS ";release;")

# and what the setting does
configure(${SOURCE_DIR} ${WORK_DIR}/plain code output AGAIN --preset release
    -D "CMAKE_PREFIX_PATH=${PREFIX_PATH}" -D ORVA_BUILD_TESTS=OFF)
if(NOT code EQUAL 0)
    message(FATAL_ERROR "Configuring failed:\n${output}")
endif()
every_command(${WORK_DIR}/plain CONTAINS "-Werror")
