// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/check.h"

#include "host/services/currenttime.h"
#include "till/checks/linefields.h"

#include <QUuid>

#include <algorithm>

namespace till {
namespace {

qint64 sumOf(const QList<Line>& lines, qint64 Line::*figure)
{
    qint64 sum = 0;
    for (const Line& line : lines) {
        sum += line.*figure;
    }
    return sum;
}

QDateTime presentSecond()
{
    const QDateTime now = MockFactory<CurrentTime>::create()->currentDateTime();
    return now.addMSecs(-now.time().msec());
}

} // namespace

Check Check::create(EDocumentType type, int number, const QList<Line>& lines)
{
    Check check;
    check.document = QSharedPointer<Document>::create();
    check.document->setDocumentId(QUuid::createUuid().toString(QUuid::WithoutBraces));
    check.document->setCheckNumber(number);
    check.document->setDocumentType(type);
    check.document->setDateTime(presentSecond());
    check.lines = lines;
    check.fillDocument();
    return check;
}

QSharedPointer<DocumentCardRecord> Check::newCardRecord(const QString& cardNumber, int systemType)
{
    constexpr int codeOfTheOneRecord = 1;
    return QSharedPointer<DocumentCardRecord>::create(QSharedPointer<Card>::create(cardNumber),
                                                      systemType, codeOfTheOneRecord);
}

bool Check::isReturn() const
{
    return document->getDocumentType() == static_cast<int>(EDocumentType::ReturnBySale);
}

QSharedPointer<DocumentCardRecord> Check::cardRecord() const
{
    return document->getCardRecords().value(0);
}

QString Check::cardNumber() const
{
    const auto record = cardRecord();
    return record.isNull() ? QString() : record->getNumber().toString();
}

Line* Check::line(int position)
{
    lines.detach(); // another check may share them
    return const_cast<Line*>(std::as_const(*this).line(position));
}

const Line* Check::line(int position) const
{
    // a sale's lines are numbered as they stand, and an answer asks for each of them several times
    const qsizetype place = qsizetype(position) - 1;
    if (place >= 0 && place < lines.size() && lines.at(place).position == position) {
        return &lines.at(place);
    }
    const auto found = std::find_if(lines.cbegin(), lines.cend(), [position](const Line& line) {
        return line.position == position;
    });
    return found == lines.cend() ? nullptr : &*found;
}

void Check::fillDocument()
{
    QList<QSharedPointer<GoodsItem>> items;
    for (const Line& line : std::as_const(lines)) {
        items.append(linefields::itemOf(line, isReturn()));
    }
    document->setGoodsItems(items);
}

qint64 Check::goodsKopecks() const
{
    return sumOf(lines, &Line::sumKopecks);
}

qint64 Check::discountKopecks() const
{
    return sumOf(lines, &Line::discountKopecks);
}

qint64 Check::spentKopecks() const
{
    return sumOf(lines, &Line::spentKopecks);
}

qint64 Check::earnedKopecks() const
{
    return sumOf(lines, &Line::earnedKopecks);
}

qint64 Check::givenBackKopecks() const
{
    return sumOf(lines, &Line::givenBackKopecks);
}

qint64 Check::takenBackKopecks() const
{
    return sumOf(lines, &Line::takenBackKopecks);
}

qint64 Check::moneyKopecks() const
{
    return goodsKopecks() - discountKopecks() - (isReturn() ? givenBackKopecks() : spentKopecks());
}

void Check::tenderToDocument(qint64 kopecks)
{
    document->setPaymentKopecks(kopecks);
}

} // namespace till
