# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# An interface identifier that does not end in ".AbstractPlugin" is refused with its value.

include(${CMAKE_CURRENT_LIST_DIR}/steps.cmake)

set(again "")
foreach(identifier "org.example.Plugin" "AbstractPlugin" "org.example.AbstractPlugin.v2"
        "org.example.AbstractPlugins" "org.example.abstractplugin" "")
    configure(${SOURCE_DIR} ${WORK_DIR} code output ${again}
        -D "CMAKE_PREFIX_PATH=${PREFIX_PATH}" -D ORVA_BUILD_TESTS=OFF
        -D "ORVA_ABSTRACT_PLUGIN_IID=${identifier}")
    if(code EQUAL 0)
        message(FATAL_ERROR "The identifier \"${identifier}\" was accepted.")
    endif()
    expect("${output}" CONTAINS "ORVA_ABSTRACT_PLUGIN_IID is \"${identifier}\"")
    expect("${output}" CONTAINS ".AbstractPlugin")
    expect("${output}" LACKS "Generating done")
    set(again AGAIN)
endforeach()
