// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/document.h"
#include "host/services/config.h"
#include "host/services/currenttime.h"
#include "host/services/dbqueuebroker.h"
#include "host/services/restclient.h"
#include "host/services/session.h"
#include "plugin/orva.h"

#include <QByteArray>
#include <QDateTime>
#include <QSharedPointer>

/// The plug-in's class with what it keeps in reach.
class OpenOrva : public Orva
{
public:
    using Orva::bonusRecords;
    using Orva::interface;
};

/// The process's services for one plug-in: an answer instead of a server, a queue that forgets, a
/// clock that stands still. One at a time.
class ShopScene
{
public:
    ShopScene();
    ~ShopScene();
    ShopScene(const ShopScene&) = delete;
    ShopScene& operator=(const ShopScene&) = delete;

    /// What the server says to everything from here on.
    void setAnswer(const QByteArray& body) { transport.answer = body; }
    /// A check of three lines with a card; the session's document from here on.
    QSharedPointer<Document> open(EDocumentType type);

private:
    struct Transport : RestClient
    {
        void post(const QUrl&, const QByteArray&, const QHash<QString, QString>&) override {}
        int getError() override { return 0; }
        int getHttpStatusCode() override { return 200; }
        QByteArray getResponse() override { return answer; }
        void setTimeout(int) override {}
        QByteArray answer;
    };
    struct Queue : DBQueueBroker
    {
        bool addToQueue(const QString&, const QVariantMap&, const QString&) override
        {
            return true;
        }
    };
    struct Clock : CurrentTime
    {
        QDateTime currentDateTime() override
        {
            return QDateTime(QDate(2024, 3, 5), QTime(14, 20, 30));
        }
    };

    Config config;
    Session session;
    Queue queue;
    Transport transport;
    Clock clock;
};

/// Does with an answer what a till does between the card and the closed check.
void playVisit(ShopScene& scene);
