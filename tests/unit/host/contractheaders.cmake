# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# The headers of host/ that a plug-in may include, and three checks on them: each compiles by
# itself, none pulls in more than Qt Core and Qt Xml, and client/ and plugin/ include no others.

set(contract_headers
    core/basicexception.h
    core/message.h
    core/mockfactory.h
    core/singleton.h
    core/tr.h
    document/abstractdocument.h
    document/bonusimpact.h
    document/card.h
    document/client.h
    document/discountimpact.h
    document/documentbonusrecord.h
    document/documentcardrecord.h
    document/documentimpact.h
    document/documentimpactdetail.h
    document/ediscountmode.h
    document/ediscountobject.h
    document/ediscounttype.h
    document/edocumenttype.h
    document/eimpactsource.h
    document/goodsitem.h
    document/tmcunit.h
    hostexport.h
    loyalty/actionhandler.h
    loyalty/actiontrigger.h
    loyalty/basicloyaltysystem.h
    loyalty/basicplugin.h
    loyalty/cardnumberinputdata.h
    loyalty/documentwatcher.h
    loyalty/ecardmode.h
    loyalty/ecardnumbertype.h
    loyalty/ecoupon.h
    loyalty/loyaltysystemoption.h
    services/config.h
    services/currenttime.h
    services/dbqueuebroker.h
    services/restclient.h
    services/session.h
    services/sessioncontext.h
    xml/xmlutils.h
    xml/xmlwrapper.h)

# What each header is compiled with: nothing but Qt Core and Qt Xml is in reach beyond what the compiler
# finds by itself; the second check is for that.
add_library(test-contract-headers OBJECT EXCLUDE_FROM_ALL ${PROJECT_SOURCE_DIR}/cmake/precompiled.cpp)
_orva_settings(test-contract-headers)
set_target_properties(test-contract-headers PROPERTIES AUTOMOC OFF)
target_link_libraries(test-contract-headers PRIVATE Qt6::Core Qt6::Xml)

# What the headers pull in all told, asked of the compiler.
set(everything ${CMAKE_CURRENT_BINARY_DIR}/contractheaders.cpp)
list(TRANSFORM contract_headers REPLACE "(.+)" "#include \"host/\\1\"" OUTPUT_VARIABLE lines)
list(JOIN lines "\n" lines)
file(CONFIGURE OUTPUT ${everything} CONTENT "@lines@\n" @ONLY)
set(include_directories
    "$<TARGET_PROPERTY:test-contract-headers,INCLUDE_DIRECTORIES>")
set(leaks_test ${CMAKE_COMMAND}
    -D COMPILER=${CMAKE_CXX_COMPILER}
    -D "INCLUDES=${include_directories}"
    -D "DEFINITIONS=$<TARGET_PROPERTY:Qt6::Core,INTERFACE_COMPILE_DEFINITIONS>"
    -D HOST=${PROJECT_SOURCE_DIR}/host)
add_test(NAME host.contract-headers-pull-in-qt-core-and-xml-only
    COMMAND ${leaks_test} -D SOURCE=${everything}
        -P ${CMAKE_CURRENT_SOURCE_DIR}/checkleaks.cmake)
list(JOIN contract_headers "," headers)
set(alone_test ${CMAKE_COMMAND}
    -D COMPILER=${CMAKE_CXX_COMPILER}
    -D "INCLUDES=${include_directories}"
    -D "DEFINITIONS=$<TARGET_PROPERTY:test-contract-headers,COMPILE_DEFINITIONS>"
    -D WORK_DIR=${CMAKE_CURRENT_BINARY_DIR}/contractheaders)
add_test(NAME host.each-contract-header-compiles-by-itself
    COMMAND ${alone_test} -D HEADERS=${headers} -P ${CMAKE_CURRENT_SOURCE_DIR}/checkalone.cmake)
set_tests_properties(host.each-contract-header-compiles-by-itself PROPERTIES TIMEOUT 600)
orva_long_tests(host.each-contract-header-compiles-by-itself)
# The check itself must see a header that leans on another.
file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/contractheaders/host/leaning.h
    CONTENT "#pragma once\nclass Leaning : public BasicException {};\n" @ONLY)
add_test(NAME host.a-header-that-needs-another-is-seen
    COMMAND ${alone_test} "-DINCLUDES=${include_directories};${CMAKE_CURRENT_BINARY_DIR}/contractheaders"
        -D HEADERS=core/tr.h,leaning.h -P ${CMAKE_CURRENT_SOURCE_DIR}/checkalone.cmake)
set_tests_properties(host.a-header-that-needs-another-is-seen PROPERTIES
    PASS_REGULAR_EXPRESSION "leaning.h does not compile by itself")
# The check itself must see a leak where there is one.
file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/leakyheader.cpp
    CONTENT "#include \"host/services/session.h\"\n#include <QtSql/QSqlQuery>\n" @ONLY)
add_test(NAME host.a-leaking-header-is-seen
    COMMAND ${leaks_test} -D SOURCE=${CMAKE_CURRENT_BINARY_DIR}/leakyheader.cpp
        "-DINCLUDES=${include_directories}"
        -P ${CMAKE_CURRENT_SOURCE_DIR}/checkleaks.cmake)
set_tests_properties(host.a-leaking-header-is-seen PROPERTIES
    PASS_REGULAR_EXPRESSION "pulled in from elsewhere:[^\n]*QtSql")

# The plug-in's own code, recursively.
list(JOIN contract_headers "," allowed)
set(includes_test ${CMAKE_COMMAND}
    -D ALLOWED=${allowed}
    -D SOURCE_DIR=${PROJECT_SOURCE_DIR})
add_test(NAME plugin.includes-of-the-host-are-those-of-the-contract
    COMMAND ${includes_test} "-DFOLDERS=client;plugin"
        -P ${CMAKE_CURRENT_SOURCE_DIR}/checkincludes.cmake)
add_test(NAME plugin.a-forbidden-include-is-seen
    COMMAND ${includes_test} -D FOLDERS=tests/data/plugin/includes
        -P ${CMAKE_CURRENT_SOURCE_DIR}/checkincludes.cmake)
set_tests_properties(plugin.a-forbidden-include-is-seen PROPERTIES
    PASS_REGULAR_EXPRESSION "host/document/document.h.*host/database/database.h.*simulator/documents/check.h.*till/slip.h")
