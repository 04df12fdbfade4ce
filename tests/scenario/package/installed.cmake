# SPDX-FileCopyrightText: 2026 The Orva developers
# SPDX-License-Identifier: Apache-2.0
#
# What the tests of the installation share: PREFIX, where the build has been installed.

include(${CMAKE_CURRENT_LIST_DIR}/../build/steps.cmake)

set(PREFIX ${WORK_DIR}/prefix)
file(REMOVE_RECURSE ${WORK_DIR})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --config "${CONFIG}" --prefix ${PREFIX})
