// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/till/tilltest.h"

using namespace Qt::StringLiterals;

namespace tests {

TillTest::TillTest()
    : database(QSharedPointer<poshost::Database>::create(folder.file(u"till.sqlite"_s))),
      broker(database), brokerInPlace(&broker), sessionInPlace(&session), store(database),
      loyalty(std::make_unique<FakeLoyalty>()),
      desk(std::make_unique<till::CashDesk>(*loyalty, store, session))
{}

TillTest::~TillTest()
{
    desk.reset();
}

till::CheckFile TillTest::twoLines()
{
    till::Line tea;
    tea.position = 1;
    tea.code = u"1001"_s;
    tea.name = u"Чай"_s;
    tea.priceKopecks = 100'00;
    tea.thousandths = 2000;
    tea.sumKopecks = 200'00;
    till::Line apples;
    apples.position = 2;
    apples.code = u"1002"_s;
    apples.name = u"Яблоки"_s;
    apples.fractional = true;
    apples.priceKopecks = 60'00;
    apples.thousandths = 500;
    apples.sumKopecks = 30'00;
    till::CheckFile file;
    file.card = u"2200000000017"_s;
    file.lines = {tea, apples};
    return file;
}

void TillTest::openReady()
{
    desk->openSale(twoLines());
    ASSERT_TRUE(desk->presentCard(u"2200000000017"_s));
    ASSERT_TRUE(desk->request());
}

till::Check TillTest::sell(const till::PointsChoice& points)
{
    openReady();
    if (points.kind != till::PointsChoice::Kind::None) {
        desk->choosePoints(points);
    }
    return desk->close();
}

till::CheckFile TillTest::returnOf(const QString& sale, const QMap<int, qint64>& lines)
{
    till::CheckFile file;
    file.type = till::CheckFile::Type::Return;
    file.sale = sale;
    for (auto it = lines.cbegin(); it != lines.cend(); ++it) {
        till::Line line;
        line.position = it.key();
        line.returnedThousandths = it.value();
        file.lines.append(line);
    }
    return file;
}

QStringList TillTest::payloads()
{
    QStringList texts;
    poshost::OutgoingQueue queue(*database);
    for (const poshost::QueueEntry& entry : queue.list()) {
        texts.append(queue.show(entry.id)->payload);
    }
    return texts;
}

void TillTest::restart()
{
    desk.reset();
    auto fresh = std::make_unique<FakeLoyalty>();
    fresh->discounts = loyalty->discounts;
    fresh->awards = loyalty->awards;
    fresh->spendable = loyalty->spendable;
    fresh->placed = loyalty->placed;
    loyalty = std::move(fresh);
    desk = std::make_unique<till::CashDesk>(*loyalty, store, session);
}

} // namespace tests
