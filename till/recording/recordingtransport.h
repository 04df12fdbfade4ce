// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/services/restclient.h"

#include <QJsonObject>
#include <QString>

namespace till {

class Recorder;

/// Stands before the HTTP client while it lives and writes down what the plug-in posts and what it
/// gets for it. Other threads, that is the delivery of the queue, are served as ever: this object
/// is a client of its own for them.
class RecordingTransport : public RestClient
{
public:
    explicit RecordingTransport(Recorder& journal);
    ~RecordingTransport() override;

    void post(const QUrl& url, const QByteArray& body,
              const QHash<QString, QString>& headers) override;
    int getError() override;
    int getHttpStatusCode() override;
    tr::Tr getErrorText() override;
    QByteArray getResponse() override;
    void setTimeout(int seconds) override;
    QString getResponseHeader(const QString& name) override;
    int getSendCount() override;

    /// The headers without those that carry credentials.
    static QJsonObject harmless(const QHash<QString, QString>& headers);
    static bool isSecret(const QString& headerName);

private:
    /// The client that does the work for this thread, or null: the base class does.
    RestClient* worker();
    void noteCall(const QString& name);

    Recorder& recorder;
    RestClient* const before;
    RestClient own;
};

} // namespace till
