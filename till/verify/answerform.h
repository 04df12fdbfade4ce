// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace till::verify {

/// What does not fit a schema, and where.
struct FormObjection
{
    QString path;
    QString text; ///< in English, as the library says it
};

namespace answerform {

/// The first thing in which a document does not fit one of the protocol's schemas.
/// @param schema its name, such as "answer"
std::optional<FormObjection> objectionTo(const QString& schema, const QByteArray& document);

} // namespace answerform

} // namespace till::verify
