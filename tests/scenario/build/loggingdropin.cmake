# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# Where Log4Qt is not installed, configuring says that the drop-in takes its place.

include(${CMAKE_CURRENT_LIST_DIR}/steps.cmake)

configure(${SOURCE_DIR} ${WORK_DIR} code output
    -D "CMAKE_PREFIX_PATH=${PREFIX_PATH}" -D ORVA_BUILD_TESTS=OFF
    -D CMAKE_DISABLE_FIND_PACKAGE_Log4Qt=ON)
if(NOT code EQUAL 0)
    message(FATAL_ERROR "Configuring failed:\n${output}")
endif()
expect("${output}" CONTAINS "Logging: the drop-in for Log4Qt")
expect("${output}" LACKS "Logging: Log4Qt from")
