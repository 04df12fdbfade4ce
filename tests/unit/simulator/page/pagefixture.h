// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/faults/faultplan.h"
#include "simulator/http/admindesk.h"
#include "simulator/page/page.h"
#include "tests/unit/simulator/servicefixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace simulator::test {

/// A service with its page, asked without a connection.
class PageTest : public ServiceFixture
{
protected:
    PageTest()
    {
        page.addTo(desk, *service, plan,
                   [this](const Request& request) { return exchange(request); });
    }

    Answer exchange(const Request& request)
    {
        const Answer answer = service->handle(request);
        page.exchanges.add(request, answer);
        return answer;
    }

    Answer ask(const QByteArray& method, const QByteArray& address, const QByteArray& body = {})
    {
        const qsizetype mark = address.indexOf('?');
        Request request{method, mark < 0 ? address : address.first(mark), {}, body};
        request.query = mark < 0 ? QByteArray() : address.sliced(mark + 1);
        request.host = "127.0.0.1:8711";
        request.contentType = method == "POST" ? "application/json" : "";
        return desk.handle(request);
    }

    QJsonObject object(const QByteArray& address)
    {
        const Answer answer = ask("GET", address);
        EXPECT_EQ(answer.status, 200) << address.toStdString() << answer.body.toStdString();
        return QJsonDocument::fromJson(answer.body).object();
    }

    QList<qint64> listed(const QByteArray& query)
    {
        QList<qint64> numbers;
        const QJsonArray list = object("/exchanges" + query)[QStringLiteral("exchanges")].toArray();
        for (const auto& row : list) {
            numbers.append(row[QStringLiteral("number")].toInteger());
        }
        return numbers;
    }

    /// Takes a return of one of the three pieces of sell()'s first line through all steps.
    void giveBack(const QString& id, const QString& total, const QString& points)
    {
        const TextLine line{QStringLiteral("1"),     QStringLiteral("1000"),
                            QStringLiteral("1.000"), total,
                            QStringLiteral("0.00"),  points};
        const QByteArray body =
            document({id, QStringLiteral("2200000000017"), total, {line}, QStringLiteral("sale")});
        for (const char* endpoint : {"precheck", "paymenttry", "checkconfirm"}) {
            const Answer answer = service->handle(post(endpoint, body));
            EXPECT_EQ(answer.status, 200) << endpoint << ": " << answer.reason.toStdString();
        }
    }

    /// A sale, a return of nothing that was sold, and a document that is none.
    void someExchanges()
    {
        sell(QStringLiteral("sale"));
        exchange(post("precheck", document(saleOfTwo(QStringLiteral("first")))));
        exchange(post("precheck", document(saleOfTwo(QStringLiteral("second")))));
        exchange(post("precheck", document(saleOfTwo(QStringLiteral("first")))));
        exchange(post("precheck", "<RawCheck><surprise>\n</surprise></RawCheck>"));
        exchange(post("checkconfirm", "no document"));
    }

    FaultPlan plan;
    AdminDesk desk{*service, plan};
    Page page{databasePath(), QString()};
};

} // namespace simulator::test
