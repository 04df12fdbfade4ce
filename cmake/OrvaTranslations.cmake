# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# The programs' texts in other languages, compiled from translations/*.ts.

# orva_translations(TARGET): puts the compiled translations into a target, as
# :/translations/orva_LANGUAGE.qm. The full build fails while they do not fit the texts in the
# folders that have a text.h.
function(orva_translations target)
    find_program(LRELEASE_PROGRAM lrelease REQUIRED
        HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS})
    file(GLOB files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/translations/*.ts)
    set(compiled "")
    foreach(file IN LISTS files)
        cmake_path(GET file STEM LAST_ONLY name)
        set(qm ${PROJECT_BINARY_DIR}/translations/${name}.qm)
        add_custom_command(OUTPUT ${qm}
            COMMAND ${LRELEASE_PROGRAM} -silent ${file} -qm ${qm}
            DEPENDS ${file} VERBATIM)
        list(APPEND compiled ${qm})
    endforeach()
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/translations)
    qt_add_resources(${target} translations BASE ${PROJECT_BINARY_DIR} PREFIX / OPTIONS ${ORVA_RESOURCE_OPTIONS}
        FILES ${compiled})

    file(GLOB folders ${PROJECT_SOURCE_DIR}/*/text.h)
    list(TRANSFORM folders REPLACE "/text\\.h$" "")
    list(TRANSFORM folders APPEND "/*.cpp" OUTPUT_VARIABLE sources)
    list(TRANSFORM folders APPEND "/*.h" OUTPUT_VARIABLE headers)
    file(GLOB_RECURSE texts CONFIGURE_DEPENDS ${sources} ${headers})
    set(stamp ${PROJECT_BINARY_DIR}/translations/checked)
    add_custom_command(OUTPUT ${stamp}
        COMMAND ${PROJECT_SOURCE_DIR}/scripts/translations check
        COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
        DEPENDS ${texts} ${files} ${PROJECT_SOURCE_DIR}/scripts/translations
        COMMENT "Checking the translations" VERBATIM)
    add_custom_target(orva-translations-checked ALL DEPENDS ${stamp})
endfunction()
