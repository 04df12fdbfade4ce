# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# What "cmake --install" copies, in the components that the packages are made of:
#   host         the host's library
#   plugin       the loyalty plug-in
#   tools        the till and the loyalty server
#   development  headers, CMake package, the example of a till and, when the tests are built, the
#                contract suite with the loyalty system that watches a host
#   store        what brings tills to a database that they share, and delivers from it
#   documentation  the protocol with its schemas, requirements, vectors and the example of a server and,
#                where scripts/docs has rendered it, the reference

include(CMakePackageConfigHelpers)

# Beside each other the files find each other in any folder. Where the dynamic linker looks by itself
# they carry no path.
file(RELATIVE_PATH to_libraries /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
set_target_properties(orva-till orva-simulator PROPERTIES INSTALL_RPATH "\$ORIGIN/${to_libraries}")
file(RELATIVE_PATH to_libraries /${ORVA_INSTALL_PLUGINS} /${CMAKE_INSTALL_LIBDIR})
set_target_properties(orva PROPERTIES INSTALL_RPATH "\$ORIGIN/${to_libraries}")

function(orva_forget_path_below_usr component file)
    install(CODE "
        if(CMAKE_INSTALL_PREFIX MATCHES \"/usr\$\")
            file(RPATH_REMOVE FILE \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${file}\")
        endif()" COMPONENT ${component})
endfunction()

# orva_install_compressed(FILE FOLDER COMPONENT): as Debian wants man pages, changelogs and long texts
function(orva_install_compressed file folder component)
    cmake_path(GET file FILENAME name)
    set(compressed ${PROJECT_BINARY_DIR}/packaging/${folder}/${name}.gz)
    find_program(GZIP_PROGRAM gzip REQUIRED)
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/packaging/${folder})
    execute_process(COMMAND ${GZIP_PROGRAM} -9nc ${file}
        OUTPUT_FILE ${compressed} COMMAND_ERROR_IS_FATAL ANY)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    install(FILES ${compressed} DESTINATION ${folder} COMPONENT ${component})
endfunction()

install(TARGETS orva-host EXPORT PosHostTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT host NAMELINK_COMPONENT development)

install(TARGETS orva LIBRARY DESTINATION ${ORVA_INSTALL_PLUGINS} COMPONENT plugin)
orva_forget_path_below_usr(plugin ${ORVA_INSTALL_PLUGINS}/liborva.so)

install(TARGETS orva-till orva-simulator RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
foreach(program orva-till orva-simulator)
    orva_forget_path_below_usr(tools ${CMAKE_INSTALL_BINDIR}/${program})
    orva_install_compressed(${PROJECT_SOURCE_DIR}/docs/man/${program}.1
        ${CMAKE_INSTALL_MANDIR}/man1 tools)
    orva_install_compressed(${PROJECT_SOURCE_DIR}/docs/man/ru/${program}.1
        ${CMAKE_INSTALL_MANDIR}/ru/man1 tools)
    install(FILES docs/completion/orva.bash RENAME ${program} COMPONENT tools
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
endforeach()
orva_install_compressed(${PROJECT_SOURCE_DIR}/README.ru.md ${CMAKE_INSTALL_DATADIR}/doc/orva-tools
    tools)
# Where the service manager looks below /usr. Elsewhere the file serves as a pattern: it names /usr/bin.
install(FILES packaging/orva-delivery.service DESTINATION lib/systemd/system COMPONENT tools)
# Installed, the till finds its plug-in by itself; the example's path leads into this tree.
file(READ till/examples/orva.toml settings)
string(REGEX REPLACE "\nplugin = [^\n]*" "" settings "${settings}")
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/examples/orva.toml CONTENT "${settings}" @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/examples/orva.toml till/examples/sale.toml
        till/examples/return.toml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/orva-tools/examples COMPONENT tools)

file(RELATIVE_PATH to_libraries /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
set_target_properties(orva-store PROPERTIES INSTALL_RPATH "\$ORIGIN/${to_libraries}")
file(RELATIVE_PATH to_libraries /${ORVA_INSTALL_STORE} /${CMAKE_INSTALL_LIBDIR})
set_target_properties(orva-store-client PROPERTIES INSTALL_RPATH "\$ORIGIN/${to_libraries}")
install(TARGETS orva-store RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT store)
install(TARGETS orva-store-client LIBRARY DESTINATION ${ORVA_INSTALL_STORE} COMPONENT store)
orva_forget_path_below_usr(store ${CMAKE_INSTALL_BINDIR}/orva-store)
orva_forget_path_below_usr(store ${ORVA_INSTALL_STORE}/liborvastore.so)
orva_install_compressed(${PROJECT_SOURCE_DIR}/docs/man/orva-store.1 ${CMAKE_INSTALL_MANDIR}/man1 store)
orva_install_compressed(${PROJECT_SOURCE_DIR}/docs/man/ru/orva-store.1 ${CMAKE_INSTALL_MANDIR}/ru/man1
    store)
install(FILES docs/completion/orva.bash RENAME orva-store COMPONENT store
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES packaging/orva-store@.service DESTINATION lib/systemd/system COMPONENT store)
install(FILES packaging/alerts.yml DESTINATION ${CMAKE_INSTALL_DATADIR}/orva-store COMPONENT store)

# Headers for a plug-in or a till, without those that the library has for itself.
install(DIRECTORY host DESTINATION ${ORVA_INSTALL_HEADERS} COMPONENT development
    FILES_MATCHING PATTERN "*.h" PATTERN "*_p.h" EXCLUDE)
# What those of the queue name of the store
install(FILES store/sharedbooks.h store/storeclient.h
    DESTINATION ${ORVA_INSTALL_HEADERS}/store COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/host/loyalty/abstractpluginid.h
    DESTINATION ${ORVA_INSTALL_HEADERS}/host/loyalty COMPONENT development)
install(EXPORT PosHostTargets NAMESPACE PosHost:: DESTINATION ${ORVA_INSTALL_CMAKE}
    COMPONENT development)
install(DIRECTORY docs/example-host COMPONENT development
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/poshost-dev/examples)

# What stands in protocol/ here stands beside the texts there; links to anything else outside their folder lead nowhere.
foreach(name protocol delivery)
    file(READ docs/${name}.md text)
    string(REPLACE "../protocol/" "" text "${text}")
    string(REPLACE "protocol/schema" "schema" text "${text}")
    string(REGEX REPLACE "\\[([^]]*)\\]\\(\\.\\./[^)]*\\)" "\\1" text "${text}")
    file(WRITE ${PROJECT_BINARY_DIR}/packaging/${name}.md "${text}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS docs/${name}.md)
    orva_install_compressed(${PROJECT_BINARY_DIR}/packaging/${name}.md
        ${CMAKE_INSTALL_DATADIR}/doc/orva-doc documentation)
endforeach()
install(DIRECTORY protocol/schema protocol/vectors docs/example-server
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/orva-doc COMPONENT documentation)
install(FILES protocol/requirements.toml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/orva-doc COMPONENT documentation)
install(DIRECTORY build/docs/host/html DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/orva-doc
    COMPONENT documentation OPTIONAL)

if(TARGET orva-contract)
    target_include_directories(orva-contract INTERFACE $<INSTALL_INTERFACE:${ORVA_INSTALL_HEADERS}>)
    install(TARGETS orva-contract EXPORT PosHostContractTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
    install(FILES contract/documentdata.h contract/hostundertest.h contract/printers.h
            contract/queueundertest.h
            contract/run.h contract/runningcase.h
        DESTINATION ${ORVA_INSTALL_HEADERS}/contract COMPONENT development)
    file(RELATIVE_PATH to_libraries /${ORVA_INSTALL_WATCH} /${CMAKE_INSTALL_LIBDIR})
    set_target_properties(poshost-watch PROPERTIES INSTALL_RPATH "\$ORIGIN/${to_libraries}")
    install(TARGETS poshost-watch LIBRARY DESTINATION ${ORVA_INSTALL_WATCH} COMPONENT development)
    orva_forget_path_below_usr(development ${ORVA_INSTALL_WATCH}/libposhost-watch.so)
    install(EXPORT PosHostContractTargets NAMESPACE PosHost:: DESTINATION ${ORVA_INSTALL_CMAKE}
        COMPONENT development)
endif()

configure_package_config_file(cmake/PosHostConfig.cmake.in PosHostConfig.cmake
    INSTALL_DESTINATION ${ORVA_INSTALL_CMAKE} PATH_VARS ORVA_INSTALL_PLUGINS ORVA_INSTALL_WATCH
    NO_SET_AND_CHECK_MACRO)
# The contracts stay within a major version.
write_basic_package_version_file(PosHostConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/PosHostConfig.cmake ${PROJECT_BINARY_DIR}/PosHostConfigVersion.cmake
    DESTINATION ${ORVA_INSTALL_CMAKE} COMPONENT development)
