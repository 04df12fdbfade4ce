// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/hostexport.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QVariantMap>

namespace poshost {

/// A queued message in the form in which it is stored: what is posted, kept byte for byte, and the
/// authorization apart, so that it can be replaced and erased by itself.
struct HOST_EXPORT QueueMessage
{
    QByteArray payload;    ///< the body, UTF-8
    QByteArray headers;    ///< name -> value without the authorization, JSON
    QByteArray urls;       ///< number -> address, JSON
    QString authorization; ///< the value of that header, empty when there is none
    int steps = 0;         ///< how many addresses are to be posted to

    /// What is stored beside payload, headers and urls and tells whether they are still the same.
    /// @return a digest of payload, headers and addresses
    QByteArray digest() const;

    /// Takes a message as a plug-in gives it: "payload" (text), "headers" and "urls" (maps of
    /// texts). Other keys mean nothing to the queue and are not kept.
    /// @param message the plug-in's map
    /// @return the message as it is to be stored
    static QueueMessage fromMap(const QVariantMap& message);
    /// Whether that is the JSON of an object of texts, as headers and urls are.
    /// @param json what was stored or handed over
    /// @return false for other values and for what is no JSON
    static bool isTextObject(const QByteArray& json);
    /// The addresses in the order in which they are posted to: by ascending number. Keys that are
    /// no numbers from 0 up name no step.
    /// @param urls number -> address, JSON
    /// @return empty when no step is named
    static QStringList addressesOf(const QByteArray& urls);
    /// The headers to send.
    /// @param headers name -> value, JSON
    /// @param authorization added as "Authorization" when not empty
    /// @return name -> value
    static QHash<QString, QString> headersOf(const QByteArray& headers,
                                             const QString& authorization);
};

} // namespace poshost
