// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/grantingserver.h"

using namespace Qt::StringLiterals;

namespace tests {

void FakeServer::post(const QUrl& url, const QByteArray& body, const QHash<QString, QString>&)
{
    urls.append(url);
    bodies.append(body);
    QByteArray lines = body;
    lines.replace("</RawItem>", "<awards><RawItemAwards><discount>20.00</discount>"
                                "<awardBonus>9.00</awardBonus>"
                                "<allowBonusInCurrency>40.00</allowBonusInCurrency>"
                                "</RawItemAwards></awards></RawItem>");
    lines.replace("</RawCheck>",
                  "<client><RawCheckClient><name>Анна</name><surname>Соколова</surname>"
                  "<account><RawCheckAccount><balance>500.00</balance></RawCheckAccount></account>"
                  "</RawCheckClient></client><awards><RawCheckAwards>"
                  "<allowBonus>80.00</allowBonus><awardBonus>18.00</awardBonus>"
                  "</RawCheckAwards></awards><informing><RawCheckInforming>"
                  "<communicationChannel>check</communicationChannel><info>Спасибо</info>"
                  "</RawCheckInforming></informing></RawCheck>");
    answer = lines;
}

tr::Tr FakeServer::getErrorText()
{
    return getError() == 0 ? tr::Tr() : tr::Tr(u"restTransportError"_s, u"Сервер молчит"_s);
}

} // namespace tests
