# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# The headers of host/ that a plug-in may include, and three checks on them: each compiles by
# itself, none pulls in more than Qt Core and Qt Xml, and client/ and plugin/ include no others.

set(contract_headers
    core/basicexception.h
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

# One source a header. No library but Qt Core and Qt Xml is in reach beyond what the compiler finds
# by itself; the second check is for that.
set(sources "")
foreach(header IN LISTS contract_headers)
    string(REGEX REPLACE "[/.]" "_" name ${header})
    set(source ${CMAKE_CURRENT_BINARY_DIR}/contractheaders/${name}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "#include \"host/@header@\"\n#include \"host/@header@\"\n"
        @ONLY)
    list(APPEND sources ${source})
endforeach()
add_library(test-contract-headers OBJECT ${sources})
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
    PASS_REGULAR_EXPRESSION "host/document/document.h.*host/database/database.h.*simulator/ledger/check.h.*till/slip.h")
