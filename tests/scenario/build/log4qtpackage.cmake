# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# Installs the stand-in for Log4Qt whose LogManager::logger takes up to ARGUMENTS arguments, builds
# the plug-in with it and with an interface identifier of its own, and looks with PROBE at what the
# built plug-in does.

include(${CMAKE_CURRENT_LIST_DIR}/steps.cmake)

set(identifier com.example.till.AbstractPlugin)
set(prefix ${WORK_DIR}/prefix${ARGUMENTS})
set(plugin_build ${WORK_DIR}/plugin)

file(REMOVE_RECURSE ${prefix})
configure(${SOURCE_DIR}/tests/scenario/build/log4qt ${WORK_DIR}/log4qt code output
    -D "CMAKE_PREFIX_PATH=${PREFIX_PATH}" -D CMAKE_INSTALL_PREFIX=${prefix}
    -D LOG4QT_ARGUMENTS=${ARGUMENTS})
if(NOT code EQUAL 0)
    message(FATAL_ERROR "The stand-in cannot be configured:\n${output}")
endif()
run(${CMAKE_COMMAND} --build ${WORK_DIR}/log4qt)
run(${CMAKE_COMMAND} --install ${WORK_DIR}/log4qt)

# Without optimisation and debugging information it builds fastest.
configure(${SOURCE_DIR} ${plugin_build} code output
    -D "CMAKE_PREFIX_PATH=${prefix};${PREFIX_PATH}" -D ORVA_BUILD_TESTS=OFF
    -D ORVA_ABSTRACT_PLUGIN_IID=${identifier} -D "CMAKE_BUILD_TYPE=")
if(NOT code EQUAL 0)
    message(FATAL_ERROR "The plug-in cannot be configured:\n${output}")
endif()
expect("${output}" CONTAINS "Logging: Log4Qt from ${prefix}/lib/cmake/Log4Qt")
expect("${output}" LACKS "drop-in")
run(${CMAKE_COMMAND} --build ${plugin_build} --target orva --parallel 2)

# The server client asks for its logger by name alone, the plug-in class with a second argument
# where that is offered.
if(ARGUMENTS EQUAL 2)
    set(plugins_call "logger: \"orva\", \"\"")
else()
    set(plugins_call "logger: \"orva\"")
endif()
run(${CMAKE_COMMAND} -E env LOG4QT_STAND_IN_TRACE=1
    ${PROBE} ${plugin_build}/lib/liborva.so org.poshost.AbstractPlugin ${identifier})
string(CONCAT expected
    "logger: \"orva\"\n"
    "${plugins_call}\n"
    "cast: org.poshost.AbstractPlugin null\n"
    "cast: ${identifier} found\n"
    "info: Адрес сервера: \n"
    "info: Код кассы в системе лояльности: , код магазина в системе лояльности: \n"
    "debug: Установка данных авторизации для пользователя \n"
    "init: true\n")
if(NOT printed STREQUAL expected)
    message(FATAL_ERROR "The plug-in printed:\n${printed}\nbut expected is:\n${expected}")
endif()

# The plug-in's package needs the library's, and is not made where no package has the library.
set(packages ${WORK_DIR}/packages)
file(REMOVE_RECURSE ${packages})
set(pack ${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${prefix}/lib cpack --config
    ${plugin_build}/CPackConfig.cmake -D CPACK_COMPONENTS_ALL=plugin -B ${packages})
find_program(dpkg_deb dpkg-deb REQUIRED)
execute_process(COMMAND ${pack} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE code)
if(code EQUAL 0)
    message(FATAL_ERROR "A package was made that does not need the library:\n${output}")
endif()
expect("${output}" CONTAINS "No package owns") # and the path, perhaps on the next line
run(${CMAKE_COMMAND} -D "ORVA_LOG4QT_PACKAGE=liblog4qt1 (>= 2.0)" ${plugin_build})
run(${pack})
file(GLOB package ${packages}/liborva_*.deb)
run(${dpkg_deb} --field ${package} Depends)
expect("${printed}" CONTAINS "liblog4qt1 (>= 2.0)")
