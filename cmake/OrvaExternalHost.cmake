# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# The plug-in alone: client/ and plugin/ against an installed PosHost. What host/ in this tree holds,
# if it is there at all, must not be seen, so the folders are given to the compiler one by one.

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Xml)
find_package(PosHost 0.9 REQUIRED GLOBAL)
add_library(orva-host ALIAS PosHost::poshost)
message(STATUS "Host: PosHost ${PosHost_VERSION} from ${PosHost_DIR}")

set(ORVA_INCLUDE_ROOT ${PROJECT_BINARY_DIR}/include)
file(MAKE_DIRECTORY ${ORVA_INCLUDE_ROOT})
foreach(folder client plugin)
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${folder} ${ORVA_INCLUDE_ROOT}/${folder} SYMBOLIC)
endforeach()

orva_precompiled_headers(orva-precompiled
    LIBRARIES Qt6::Core
    HEADERS <QByteArray> <QHash> <QList> <QMap> <QSharedPointer> <QString> <QVariant> <functional>)
include(OrvaLog4Qt)
include(OrvaInstallFolders)
add_subdirectory(client)
add_subdirectory(plugin)
install(TARGETS orva LIBRARY DESTINATION ${ORVA_INSTALL_PLUGINS} COMPONENT plugin)
