# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# The plug-in is built from a tree without host/ and till/, for the host that is installed, and the
# installed till sells a check with it.

include(${CMAKE_CURRENT_LIST_DIR}/installed.cmake)

set(tree ${WORK_DIR}/tree)
file(COPY ${SOURCE_DIR}/CMakeLists.txt ${SOURCE_DIR}/client ${SOURCE_DIR}/plugin ${SOURCE_DIR}/cmake
    DESTINATION ${tree})
# Without optimisation and with several sources at a time it builds fastest.
configure(${tree} ${WORK_DIR}/build code output -D ORVA_EXTERNAL_HOST=ON -D "CMAKE_BUILD_TYPE="
    -D CMAKE_UNITY_BUILD=ON
    -D "CMAKE_PREFIX_PATH=${PREFIX};${PREFIX_PATH}")
if(NOT code EQUAL 0)
    message(FATAL_ERROR "The plug-in cannot be configured:\n${output}")
endif()
expect("${output}" CONTAINS "Host: PosHost ${VERSION} from ${PREFIX}/")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build --parallel 2)

file(REMOVE_RECURSE ${PREFIX}/${LIBDIR}/poshost/plugins)
run(${CMAKE_COMMAND} --install ${WORK_DIR}/build --prefix ${PREFIX})
run(${CMAKE_CURRENT_LIST_DIR}/sale.bash ${PREFIX} ${WORK_DIR}/shop)
expect("${printed}" CONTAINS "The books agree.")
if(NOT EXISTS ${PREFIX}/${LIBDIR}/poshost/plugins/liborva.keys.toml)
    message(FATAL_ERROR "The plug-in was installed without its key sheet.")
endif()

# The same for a host that promises no more than it must. Only compiled: there is no such library.
include(${CMAKE_CURRENT_LIST_DIR}/leasthost.cmake)
ask_only_what_is_promised(${PREFIX}/include/poshost/host)
file(GLOB_RECURSE compiled ${WORK_DIR}/build/client/*.o ${WORK_DIR}/build/plugin/*.o)
file(REMOVE ${compiled})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build --target orva-client orva-plugin)
