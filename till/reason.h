// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <exception>

namespace till {

/// What an exception says to people: the host's own text, or what().
QString reasonOf(const std::exception& error);

} // namespace till
