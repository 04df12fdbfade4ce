# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# Where things are installed, below the prefix.

# Debian's folder for libraries, whatever the prefix: the dynamic linker looks there by itself, and
# the files are the same in a package and in a folder for trying. CMake's own default is that only
# for the prefix /usr, and what Qt's package includes may have set it already.
if("${CMAKE_INSTALL_LIBDIR}" MATCHES "^(lib)?$" AND CMAKE_LIBRARY_ARCHITECTURE)
    set(CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE} CACHE PATH
        "Folder of the libraries below the prefix" FORCE)
endif()
include(GNUInstallDirs)

# A folder of their own, so that "host/document/..." stands in no other project's way.
set(ORVA_INSTALL_HEADERS ${CMAKE_INSTALL_INCLUDEDIR}/poshost)
# What the host's loader finds without being told.
set(ORVA_INSTALL_PLUGINS ${CMAKE_INSTALL_LIBDIR}/poshost/plugins)
# The module that reaches a store, which the host's library loads where one is configured.
set(ORVA_INSTALL_STORE ${CMAKE_INSTALL_LIBDIR}/poshost/store)
# Loaded by nobody who is not told to: a loyalty system that watches a host.
set(ORVA_INSTALL_WATCH ${CMAKE_INSTALL_LIBDIR}/poshost/watch)
set(ORVA_INSTALL_CMAKE ${CMAKE_INSTALL_LIBDIR}/cmake/PosHost)
