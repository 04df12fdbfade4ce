# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# No installed file names a folder of the build or of the sources; what lies below /usr carries no
# search path for libraries either.

include(${CMAKE_CURRENT_LIST_DIR}/installed.cmake)

function(expect_nothing_of_the_build prefix)
    file(GLOB_RECURSE files LIST_DIRECTORIES false ${prefix}/*)
    list(LENGTH files count)
    if(count LESS 60)
        message(FATAL_ERROR "Only ${count} files are installed below ${prefix}: ${files}")
    endif()
    # exit code 1: none of them does
    execute_process(COMMAND grep --recursive --files-with-matches --text --fixed-strings
            -e ${SOURCE_DIR}/ -e ${BUILD_DIR}/ ${prefix}
        OUTPUT_VARIABLE naming ERROR_VARIABLE errors RESULT_VARIABLE code)
    if(NOT code EQUAL 1)
        message(SEND_ERROR "These name ${SOURCE_DIR} or ${BUILD_DIR}:\n${naming}${errors}")
    endif()
endfunction()

expect_nothing_of_the_build(${PREFIX})

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --config "${CONFIG}" --prefix ${WORK_DIR}/root/usr)
expect_nothing_of_the_build(${WORK_DIR}/root/usr)
foreach(file bin/orva-till bin/orva-simulator ${LIBDIR}/libposhost.so
        ${LIBDIR}/poshost/plugins/liborva.so ${LIBDIR}/poshost/watch/libposhost-watch.so)
    file(READ_ELF ${WORK_DIR}/root/usr/${file} RUNPATH path RPATH older CAPTURE_ERROR error)
    if(path OR older OR error)
        message(SEND_ERROR "${file} looks for libraries in ${path}${older} ${error}")
    endif()
endforeach()
