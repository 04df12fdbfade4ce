# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# The installed programs run without being told where the library and the plug-in are, also from a
# folder that has been moved since, and so do the commands that the Russian README prints. With two plug-ins somebody has to choose.

include(${CMAKE_CURRENT_LIST_DIR}/installed.cmake)

set(moved ${WORK_DIR}/moved)
file(RENAME ${PREFIX} ${moved})
run(${CMAKE_CURRENT_LIST_DIR}/sale.bash ${moved} ${WORK_DIR}/shop)
expect("${printed}" CONTAINS "The books agree.")
run(${CMAKE_CURRENT_LIST_DIR}/readme.bash ${moved} ${SOURCE_DIR}/README.ru.md ${WORK_DIR}/readme)
expect("${printed}" CONTAINS " commands work.")

# Its keys are known from the sheet that is installed beside it.
file(WRITE ${WORK_DIR}/mistyped.toml
    "[Orva]\ntime_out = 5\n[till]\ndatabase = \"mistyped.sqlite\"\n")
execute_process(COMMAND ${moved}/bin/orva-till --config ${WORK_DIR}/mistyped.toml checks
    ERROR_VARIABLE errors COMMAND_ERROR_IS_FATAL ANY)
expect("${errors}" CONTAINS "Orva.time_out")
expect("${errors}" CONTAINS "timeout")

set(plugins ${moved}/${LIBDIR}/poshost/plugins)
file(COPY_FILE ${plugins}/liborva.so ${plugins}/libother.so)
execute_process(COMMAND ${moved}/bin/orva-till --database ${WORK_DIR}/two.sqlite
        check ${moved}/share/doc/orva-tools/examples/sale.toml
    ERROR_VARIABLE errors RESULT_VARIABLE code)
if(NOT code EQUAL 2)
    message(FATAL_ERROR "exit code ${code} instead of 2: ${errors}")
endif()
expect("${errors}" CONTAINS "--plugin")
