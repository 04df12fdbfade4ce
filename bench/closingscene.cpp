// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "bench/closingscene.h"

#include "host/database/database.h"

using namespace Qt::StringLiterals;

namespace bench {

ClosingScene::ClosingScene(int lines)
    : broker(QSharedPointer<poshost::Database>::create(workplace.file(u"till.sqlite"_s))),
      bare(workplace.file(u"bare.sqlite"_s)), answer(parsedAnswer(lines))
{
    Singleton<DBQueueBroker>::instance = &broker;
    const auto card = makeCard();
    sale = makeSale(lines, card);
    for (const auto& impact : makeUsedImpacts(lines, 2, card)) {
        sale->addImpact(impact);
    }
    orva.init();
}

ClosingScene::~ClosingScene()
{
    Singleton<DBQueueBroker>::instance = nullptr;
}

void ClosingScene::prepare()
{
    confirmation = answer.cloneNode().toDocument();
    orva.interface->setLastResponse(confirmation);
}

void ClosingScene::close()
{
    orva.commit(sale);
}

void ClosingScene::insert()
{
    bare.insert(confirmation.toString(1).toUtf8());
}

} // namespace bench
