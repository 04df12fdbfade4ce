# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# The Debian packages, one for each component that is installed (scripts/package makes them).

# Installing copies what scripts/package has built and builds nothing else.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(version ${PROJECT_VERSION})
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orva)
set(CPACK_PACKAGE_VERSION ${version})
set(CPACK_PACKAGE_CONTACT "The Orva developers <developers@orva.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL host plugin tools store development documentation)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# What a library needs is found out from the files; the host's own library is not in any package yet.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/host)

set(host_package libposhost${PROJECT_VERSION_MAJOR})

# What is linked with the logging library needs its package. The tool that looks up which packages
# the linked libraries are in passes over one that is in none.
set(ORVA_LOG4QT_PACKAGE "" CACHE STRING
    "Debian package of Log4Qt, with its version as in \"Depends\"; empty: the one that owns it")
set(logging_package "${ORVA_LOG4QT_PACKAGE}")
if(ORVA_WITH_LOG4QT AND NOT logging_package)
    get_target_property(library Log4Qt::log4qt LOCATION)
    file(REAL_PATH "${library}" library)
    execute_process(COMMAND dpkg-query --search "${library}"
        OUTPUT_VARIABLE owner ERROR_QUIET RESULT_VARIABLE failed)
    if(NOT failed)
        string(REGEX REPLACE ":.*" "" logging_package "${owner}")
    endif()
endif()
set(logging_depends "")
if(ORVA_WITH_LOG4QT AND logging_package)
    set(logging_depends ", ${logging_package}")
elseif(ORVA_WITH_LOG4QT)
    file(CONFIGURE OUTPUT packaging/nologging.cmake @ONLY CONTENT
        "message(FATAL_ERROR \"No package owns @library@, which liborva and orva-tools need: name one with -DORVA_LOG4QT_PACKAGE=\")\n")
    set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_BINARY_DIR}/packaging/nologging.cmake)
endif()

# orva_package(COMPONENT NAME SECTION "what it is" "lines of the description")
function(orva_package component name section summary description)
    string(TOUPPER ${component} key)
    # the first line is the summary, the others are indented by CPack
    set(CPACK_COMPONENT_${key}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name} PARENT_SCOPE)
    set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    orva_install_compressed(${PROJECT_BINARY_DIR}/packaging/changelog
        ${CMAKE_INSTALL_DATADIR}/doc/${name} ${component})
    install(FILES packaging/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name}
        COMPONENT ${component})
endfunction()

string(TIMESTAMP day "%a, %d %b %Y 00:00:00 +0000" UTC)
file(CONFIGURE OUTPUT packaging/changelog @ONLY CONTENT
"orva (@version@) unstable; urgency=medium

  * What is new stands in the project's CHANGELOG.md.

 -- @CPACK_PACKAGE_CONTACT@  @day@
")

orva_package(host ${host_package} libs "host of loyalty plug-ins for cash registers"
"The framework that a loyalty plug-in of a cash register sees: document model,
configuration, HTTP client, and the outgoing queue in SQLite with its delivery.")
file(CONFIGURE OUTPUT packaging/shlibs @ONLY
    CONTENT "libposhost ${PROJECT_VERSION_MAJOR} ${host_package} (>= @version@)\n")
file(CONFIGURE OUTPUT packaging/triggers @ONLY CONTENT "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_HOST_PACKAGE_CONTROL_EXTRA
    "${PROJECT_BINARY_DIR}/packaging/shlibs;${PROJECT_BINARY_DIR}/packaging/triggers")

orva_package(plugin liborva misc "loyalty plug-in for cash registers"
"Brings a loyalty server's discounts, points and messages into a cash register:
one question to the server while the customer waits, a confirmation in the
till's own queue when the check is closed.")
set(CPACK_DEBIAN_PLUGIN_PACKAGE_DEPENDS "${host_package} (= ${version})${logging_depends}")
# Only tills since 1.0.0 look which contract a plug-in was built for.
set(CPACK_DEBIAN_PLUGIN_PACKAGE_BREAKS "orva-tools (<< 1.0.0)")

orva_package(tools orva-tools misc "reference cash desk and loyalty server"
"orva-till is a cash desk that works with loyalty plug-ins, orva-simulator a
loyalty server with a ledger, for trying and testing them.")
# adduser makes the service's account.
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${host_package} (= ${version}), adduser${logging_depends}")
set(scripts ${PROJECT_SOURCE_DIR}/packaging)
set(CPACK_DEBIAN_TOOLS_PACKAGE_CONTROL_EXTRA
    "${scripts}/postinst;${scripts}/prerm;${scripts}/postrm")
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS "liborva (= ${version})")

orva_package(store orva-store misc "books that tills share, on PostgreSQL"
"What a till needs to hand its closed checks over to a database that several
tills share, and the program that keeps that database and delivers from it.")
set(CPACK_DEBIAN_STORE_PACKAGE_DEPENDS "${host_package} (= ${version})")

orva_package(development poshost-dev libdevel "headers and contract tests for hosts and plug-ins"
"What a loyalty plug-in or a cash register of one's own is built with: the
headers, the CMake package PosHost, an example of a till, a suite of tests
that finds out which promises of the headers a host breaks, and a loyalty system
that finds out which rules of order.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${host_package} (= ${version}), qt6-base-dev (>= 6.4)")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS "libgtest-dev, libgmock-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "orva-doc")

# Not in poshost-dev: the reference is as large as all of the tools, the same on every machine, and who
# writes a server needs the protocol and none of the headers.
orva_package(documentation orva-doc doc "protocol and reference of the Orva loyalty plug-in"
"The protocol between plug-in and loyalty server with its XML schemas, what becomes
of a closed check, and the reference of the headers in poshost-dev as HTML.")
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SHLIBDEPS OFF)

include(CPack)
