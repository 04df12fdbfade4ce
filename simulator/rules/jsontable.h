// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

#include <toml++/toml.h>

namespace simulator {

/// A JSON object as the table that TOML would make of it, so that both are read by one reader.
/// Its values are texts, numbers and true or false; any other becomes an empty array, which no
/// reader of such a value takes. name stands for the text in messages.
/// Throws ConfigError with name, line and reason when it is no JSON object.
toml::table parseJson(const QByteArray& text, const QString& name);

} // namespace simulator
