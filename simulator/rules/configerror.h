// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <stdexcept>

namespace simulator {

/// What is wrong with the file of rules: one sentence with the file, the line and the key.
class ConfigError : public std::runtime_error
{
public:
    explicit ConfigError(const QString& what) : std::runtime_error(what.toStdString()) {}
};

} // namespace simulator
