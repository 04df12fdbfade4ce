// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/simulator/deviations/deviantserver.h"

#include "tests/unit/simulator/servicefixture.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace simulator::test {
namespace {

QStringList listOf(const QString& deviation)
{
    return deviation.isEmpty() ? QStringList() : QStringList{deviation};
}

} // namespace

DeviantServer::DeviantServer(const QString& deviation)
    : folder(QDir::tempPath() + u"/deviation-XXXXXX"_s),
      service(builtIn(), folder.filePath(u"books.sqlite"_s), habitsOf(listOf(deviation))),
      server([this](const Request& request) { return service.handle(request); }, listOf(deviation))
{}

QByteArray DeviantServer::confirmationFor(const QString& id)
{
    const Answer answer = precheck(saleOfTwo(id));
    return confirmation(answer.body,
                        {{u"1"_s, {u"5.00"_s, u"47.00"_s}}, {u"2"_s, {u"6.00"_s, u"7.00"_s}}},
                        u"95.00"_s);
}

Answer DeviantServer::sell(const QString& id)
{
    const QByteArray confirmation = confirmationFor(id);
    ask("paymenttry", confirmation);
    return ask("checkconfirm", confirmation);
}

QString DeviantServer::confirm(const QByteArray& confirmation)
{
    const QString tried = said(ask("paymenttry", confirmation));
    return tried + u' ' + said(ask("checkconfirm", confirmation));
}

TextCheck DeviantServer::partOfFirst(const QString& id, const QString& total,
                                     const QString& points) const
{
    return {id,
            u"2200000000017"_s,
            total,
            {{u"1"_s, u"1000"_s, u"1.000"_s, total, u"0.00"_s, points}},
            u"sale"_s};
}

QString DeviantServer::giveBack(const TextCheck& check)
{
    QStringList statuses;
    for (const char* endpoint : {"precheck", "paymenttry", "checkconfirm"}) {
        statuses.append(said(ask(endpoint, document(check))));
    }
    return statuses.join(u' ');
}

QString DeviantServer::balance()
{
    for (const LedgerView::CardRow& row : service.ledger().cards) {
        if (row.account.card == u"2200000000017"_s) {
            return writeKopecks(row.account.balance);
        }
    }
    return u"no card"_s;
}

} // namespace simulator::test
