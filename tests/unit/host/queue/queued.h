// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QVariantMap>

/// A message as a plug-in queues it.
inline QVariantMap
queuedMessage(const QString& payload, const QString& authorization = QStringLiteral("Basic one"),
              const QStringList& steps = {QStringLiteral("1"), QStringLiteral("2")})
{
    QVariantMap headers{{QStringLiteral("Content-Type"), QStringLiteral("application/xml")},
                        {QStringLiteral("Accept"), QStringLiteral("application/xml")}};
    if (!authorization.isEmpty()) {
        headers.insert(QStringLiteral("Authorization"), authorization);
    }
    QVariantMap urls;
    for (const QString& step : steps) {
        urls.insert(step, QStringLiteral("http://server.test/step%1").arg(step));
    }
    return {{QStringLiteral("payload"), payload},
            {QStringLiteral("headers"), headers},
            {QStringLiteral("urls"), urls}};
}
