// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/support/grantingserver.h"

namespace tests {

namespace {

QByteArray granted(QByteArray check)
{
    check.replace("</RawItem>", "<awards><RawItemAwards><discount>20.00</discount>"
                                "<awardBonus>9.00</awardBonus>"
                                "<allowBonusInCurrency>40.00</allowBonusInCurrency>"
                                "</RawItemAwards></awards></RawItem>");
    check.replace("</RawCheck>",
                  "<client><RawCheckClient><name>Анна</name><surname>Соколова</surname>"
                  "<account><RawCheckAccount><balance>500.00</balance></RawCheckAccount></account>"
                  "</RawCheckClient></client><awards><RawCheckAwards>"
                  "<allowBonus>80.00</allowBonus><awardBonus>18.00</awardBonus>"
                  "</RawCheckAwards></awards><informing><RawCheckInforming>"
                  "<communicationChannel>check</communicationChannel><info>Спасибо</info>"
                  "</RawCheckInforming></informing></RawCheck>");
    return check;
}

} // namespace

GrantingServer::GrantingServer()
{
    setScript([this](const Request& request) {
        return Reply{reachable ? status : 0, granted(request.body)};
    });
}

} // namespace tests
