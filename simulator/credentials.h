// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

namespace simulator {

/// The value of the Authorization header that belongs to a user: the word Basic and the Base64 of
/// the user, the lower-case hexadecimal SHA-1 of the password (in Latin-1) and the key, joined by
/// colons.
QByteArray authorizationValue(const QString& user, const QString& password, const QString& apiKey);

/// Whether a header says the same as the expected value; the scheme's case does not matter.
bool isAuthorized(const QByteArray& header, const QByteArray& expected);

} // namespace simulator
