// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/year/tillbox.h"

#include "host/database/database.h"
#include "host/database/statement.h"
#include "host/queue/outgoingqueue.h"
#include "tests/support/tillsettings.h"
#include "till/commands/workplace.h"
#include "till/desk/credentials.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace year {

TillBox::TillBox(int name, const QString& folder, quint64 deliverySeed)
    : number(name), configFile(u"%1/till%2.toml"_s.arg(folder).arg(name)),
      databaseFile(u"%1/till%2.sqlite"_s.arg(folder).arg(name)), seed(deliverySeed),
      database(std::make_unique<poshost::Database>(databaseFile)),
      delivery(std::make_unique<poshost::QueueDelivery>(*database, seed))
{
    setPassword(u"secret"_s);
}

TillBox::~TillBox() = default;

void TillBox::setPassword(const QString& value)
{
    secret = value;
    QFile file(configFile);
    tests::TillSettings settings;
    settings.server = u"http://loyalty.test/"_s;
    settings.number = QString::number(number);
    settings.name = settings.number;
    settings.password = secret;
    settings.database = databaseFile;
    settings.plugin = QStringLiteral(ORVA_PLUGIN_FILE);
    const QByteArray text = settings.toml().toUtf8();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(text) != text.size()) {
        throw std::runtime_error("cannot write " + configFile.toStdString());
    }
}

void TillBox::start()
{
    till::Options options;
    options.configFile = configFile;
    options.configNamed = true;
    workplace = std::make_unique<till::Workplace>(options);
    workplace->loadPlugin();
    delivery.reset();
    database = std::make_unique<poshost::Database>(databaseFile);
    delivery = std::make_unique<poshost::QueueDelivery>(*database, ++seed);
}

void TillBox::stop()
{
    workplace.reset();
}

till::CashDesk& TillBox::desk()
{
    return workplace->cashDesk();
}

till::CheckStore& TillBox::checks()
{
    return workplace->checks();
}

poshost::DeliveryReport TillBox::deliver()
{
    return delivery->deliverDue();
}

int TillBox::retryParked()
{
    poshost::OutgoingQueue queue(*database);
    int parked = 0;
    const QList<poshost::QueueEntry> entries = queue.list();
    for (const poshost::QueueEntry& entry : entries) {
        if (entry.state == poshost::QueueState::Parked) {
            queue.retry(entry.id);
            ++parked;
        }
    }
    return parked;
}

int TillBox::reauthorize()
{
    const auto credentials = till::Credentials::of(workplace->loyaltySystem());
    return poshost::OutgoingQueue(*database).reauthorize(credentials.queue,
                                                         credentials.authorization);
}

QString TillBox::messageState(const QString& check)
{
    poshost::Statement statement(*database, u"SELECT m.state FROM checks c JOIN queue_messages m "
                                            "ON m.id = c.message_id WHERE c.id = ?"_s);
    return statement.bind(check).next() ? statement.value(0).toString() : u"removed"_s;
}

QList<LeftMessage> TillBox::left()
{
    QList<LeftMessage> messages;
    poshost::Statement statement(*database,
                                 u"SELECT c.id, m.state = 'parked', m.last_status, "
                                 "(SELECT o.id FROM queue_dependencies d JOIN checks o "
                                 "ON o.message_id = d.depends_on WHERE d.message_id = m.id) "
                                 "FROM queue_messages m LEFT JOIN checks c ON c.message_id = m.id "
                                 "WHERE m.state <> 'delivered' ORDER BY m.id"_s);
    while (statement.next()) {
        messages.append({statement.value(0).toString(), statement.value(1).toBool(),
                         statement.value(2).toInt(), statement.value(3).toString()});
    }
    return messages;
}

} // namespace year
