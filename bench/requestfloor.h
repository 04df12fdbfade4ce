// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "bench/checkdata.h"
#include "host/document/bonusimpact.h"
#include "host/document/documentbonusrecord.h"

#include <QDomDocument>
#include <QList>
#include <QStringList>

namespace bench {

/// What no implementation of a request can do without, on texts and values that are ready: Qt's DOM
/// for the two documents, the host's objects with their clock reads, and the property maps. Nothing
/// is looked up, converted or checked.
class RequestFloor
{
public:
    explicit RequestFloor(int lines);
    ~RequestFloor();
    RequestFloor(const RequestFloor&) = delete;
    RequestFloor& operator=(const RequestFloor&) = delete;

    /// One request; what the one before made is released, as a loyalty system does.
    void run();

    /// The request's bytes, to be compared with the subject's.
    QByteArray posted;
    /// The document that the state was written to, to be compared with the subject's.
    QSharedPointer<Document> document;

private:
    void buildRequest();
    void readAnswer();
    void makeObjects();
    void writeState();

    QList<Line> lines;
    QString dateText;
    QString sumText;
    QByteArray answer;
    QSharedPointer<DocumentCardRecord> card;
    QDomDocument lastResponse;
    QList<QSharedPointer<DocumentImpact>> discounts;
    QList<DocumentBonusRecord> bonusRecords;
    QStringList messages;
};

} // namespace bench
