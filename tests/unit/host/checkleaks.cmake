# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# Lists what SOURCE includes, directly or not, and refuses everything that is neither of the host,
# nor of Qt Core and Qt Xml, nor of the C and C++ libraries.

cmake_minimum_required(VERSION 3.25)
set(options "")
foreach(directory IN LISTS INCLUDES)
    list(APPEND options "-I${directory}")
endforeach()
foreach(definition IN LISTS DEFINITIONS)
    list(APPEND options "-D${definition}")
endforeach()
execute_process(COMMAND ${COMPILER} -std=c++20 -fPIC -M ${options} ${SOURCE}
    OUTPUT_VARIABLE rule ERROR_VARIABLE errors RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "The headers do not compile:\n${errors}")
endif()
string(REGEX REPLACE "\\\\\n" " " rule "${rule}")
string(REGEX REPLACE "^[^:]*:" "" rule "${rule}")
string(REGEX REPLACE "[ \n]+" ";" files "${rule}")

set(own 0)
set(leaks "")
foreach(file IN LISTS files)
    if(file STREQUAL "" OR file STREQUAL SOURCE)
        continue()
    endif()
    file(REAL_PATH "${file}" path)
    if(path MATCHES "^${HOST}/")
        math(EXPR own "${own} + 1")
    elseif(path MATCHES "/host/loyalty/abstractpluginid\\.h$")
        # made by the configuration
    elseif(path MATCHES "/Qt(Core|Xml)/" OR path MATCHES "/mkspecs/")
        # Qt Core and Qt Xml
    elseif(path MATCHES "/c\\+\\+/" OR path MATCHES "/lib/(gcc|clang|llvm)")
        # the C++ library and the compiler's own headers
    elseif(path MATCHES "^/usr/include/([^/]+-linux-gnu[^/]*/)?((asm|asm-generic|bits|gnu|linux|sys)/)?(types/)?[^/]+\\.h$"
            OR path MATCHES "^/usr/include/([^/]+-linux-gnu[^/]*/)?bits/types/[^/]+\\.h$"
            OR path MATCHES "^/usr/(include|lib)/linux/")
        get_filename_component(name "${path}" NAME)
        if(name MATCHES "^(sqlite3|zlib|curl|expat)")
            list(APPEND leaks "${path}")
        endif()
    else()
        list(APPEND leaks "${path}")
    endif()
endforeach()
if(own LESS 1)
    message(FATAL_ERROR "No header of ${HOST} among what was included: the check sees nothing.")
endif()
if(leaks)
    list(JOIN leaks " " leaks)
    message(FATAL_ERROR "pulled in from elsewhere: ${leaks}")
endif()
message(STATUS "${own} headers of the host, nothing else")
