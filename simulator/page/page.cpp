// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/page/page.h"

#include "simulator/http/admindesk.h"
#include "simulator/page/bookroutes.h"
#include "simulator/page/livefeed.h"
#include "simulator/page/pagefiles.h"
#include "simulator/page/stateroutes.h"
#include "simulator/page/trial.h"

#include <QFileInfo>

#include <utility>

namespace simulator {

Page::Page(const QString& books, const QString& rulesFile)
    : database(books), exchanges(QFileInfo(books).absolutePath()), rules(rulesFile)
{}

void Page::addTo(AdminDesk& desk, Service& service, FaultPlan& plan, Sender send)
{
    desk.add(pageFileRoutes(desk.pageToken()));
    desk.add(eventRoutes({exchanges, plan, rules, server}));
    desk.add(exchangeRoutes(exchanges, service, std::move(send)));
    desk.add(stateRoutes(server, rules));
    desk.add(bookRoutes(service, database));
    desk.add(trialRoutes(service, database));
}

} // namespace simulator
