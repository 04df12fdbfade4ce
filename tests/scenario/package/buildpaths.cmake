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
    foreach(file IN LISTS files)
        if(IS_SYMLINK ${file})
            continue()
        endif()
        file(READ ${file} content HEX)
        foreach(folder ${SOURCE_DIR} ${BUILD_DIR})
            string(HEX "${folder}/" text)
            string(FIND "${content}" "${text}" found)
            if(NOT found EQUAL -1)
                message(SEND_ERROR "${file} names ${folder}")
            endif()
        endforeach()
    endforeach()
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
