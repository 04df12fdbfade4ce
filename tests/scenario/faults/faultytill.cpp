// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/faults/faultytill.h"

#include "host/queue/outgoingqueue.h"
#include "host/queue/queuedelivery.h"
#include "tests/support/tillsettings.h"
#include "till/desk/credentials.h"
#include "till/screen/ledger.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using till::PointsChoice;

namespace {

constexpr qint64 pointsKopecks = 50'00;

} // namespace

FaultyTill::FaultyTill(const QString& givenFolder, const QString& serverAddress,
                       const QString& caFile, quint64 seedOfWaits)
    : folder(givenFolder), seed(seedOfWaits)
{
    tests::TillSettings settings;
    settings.server = serverAddress;
    settings.timeoutSeconds = timeoutMilliseconds / 1000;
    settings.caFile = caFile;
    settings.plugin = QStringLiteral(ORVA_PLUGIN_FILE);
    write(u"orva.toml"_s, settings.toml());
    write(u"sale.toml"_s, u"type = \"sale\"\ncard = \"2200000000017\"\n"
                          "[[line]]\ncode = \"1000\"\nname = \"Чай\"\nprice = 100.00\n"
                          "quantity = 2\n"
                          "[[line]]\ncode = \"1002\"\nname = \"Яблоки\"\nprice = 60.00\n"
                          "quantity = 0.5\nunit = \"kg\"\n"_s);
    write(u"return.toml"_s, u"type = \"return\"\nsale = \"last\"\n[[line]]\nposition = 1\n"
                            "quantity = 1\n"_s);
    options.configFile = folder + u"/orva.toml"_s;
    options.configNamed = true;
    restart();
}

FaultyTill::~FaultyTill() = default;

void FaultyTill::write(const QString& name, const QString& content) const
{
    QFile file(folder + u'/' + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << file.errorString().toStdString();
    file.write(content.toUtf8());
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

void FaultyTill::restart()
{
    workplace.reset();
    workplace = std::make_unique<till::Workplace>(options);
    EXPECT_EQ(workplace->warnings().join(u'\n').toStdString(), "");
    workplace->loadPlugin();
}

void FaultyTill::openSale()
{
    desk().openSale(till::CheckFile::read(folder + u"/sale.toml"_s));
}

void FaultyTill::openReturn()
{
    desk().openReturn(till::CheckFile::read(folder + u"/return.toml"_s));
}

void FaultyTill::presentCard()
{
    desk().presentCard(u"2200000000017"_s);
}

void FaultyTill::openPaidWithPoints()
{
    openSale();
    presentCard();
    EXPECT_EQ(desk().choosePoints(PointsChoice::sum(pointsKopecks)), pointsKopecks);
}

void FaultyTill::deliver()
{
    nextAttempt = poshost::QueueDelivery(workplace->database(), seed).deliverDue().nextAttempt;
}

void FaultyTill::waitForNextAttempt()
{
    if (nextAttempt.isValid()) {
        clock.advanceTo(nextAttempt);
    }
}

std::optional<poshost::QueueEntry> FaultyTill::undelivered()
{
    const QList<poshost::QueueEntry> entries = poshost::OutgoingQueue(workplace->database()).list();
    return entries.isEmpty() ? std::nullopt : std::optional(entries.first());
}

void FaultyTill::reauthorizeAndRetry()
{
    poshost::OutgoingQueue queue(workplace->database());
    const auto credentials = till::Credentials::of(workplace->loyaltySystem());
    EXPECT_EQ(queue.reauthorize(credentials.queue, credentials.authorization), 1);
    EXPECT_TRUE(queue.retry(undelivered()->id));
}

void FaultyTill::drain()
{
    constexpr int rounds = 8; // more than any message here needs
    for (int i = 0; i < rounds && undelivered(); ++i) {
        if (undelivered()->state == poshost::QueueState::Parked) {
            EXPECT_TRUE(poshost::OutgoingQueue(workplace->database()).retry(undelivered()->id));
        } else {
            waitForNextAttempt();
        }
        deliver();
    }
}

QString FaultyTill::books()
{
    QString text;
    till::Ledger(workplace->checks(), workplace->database()).writeCsv([&text](const QString& part) {
        text += part;
    });
    return text;
}
