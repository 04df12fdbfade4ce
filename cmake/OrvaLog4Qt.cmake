# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# Log4Qt where it is installed, otherwise the drop-in with the same headers and calls. Both are
# linked as Log4Qt::log4qt. ORVA_WITH_LOG4QT says whether it is the library.

find_package(Log4Qt CONFIG QUIET)
set(ORVA_WITH_LOG4QT FALSE)
if(TARGET Log4Qt::log4qt)
    set(ORVA_WITH_LOG4QT TRUE)
    message(STATUS "Logging: Log4Qt from ${Log4Qt_DIR}")
else()
    message(STATUS "Logging: the drop-in for Log4Qt (Qt logging category orva)")
    add_subdirectory(${PROJECT_SOURCE_DIR}/client/log4qt)
endif()
