// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/credentials.h"

#include <QCryptographicHash>

namespace simulator {
namespace {

constexpr qsizetype schemeSize = 6; // "Basic "

} // namespace

QByteArray authorizationValue(const QString& user, const QString& password, const QString& apiKey)
{
    const QByteArray hash =
        QCryptographicHash::hash(password.toLatin1(), QCryptographicHash::Sha1).toHex();
    return "Basic " + (user.toUtf8() + ':' + hash + ':' + apiKey.toUtf8()).toBase64();
}

bool isAuthorized(const QByteArray& header, const QByteArray& expected)
{
    return header.first(qMin(header.size(), schemeSize)).toLower() == "basic " &&
           header.sliced(schemeSize).trimmed() == expected.sliced(schemeSize);
}

} // namespace simulator
