// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/faults/pair.h"

#include "tests/scenario/faults/figures.h"

#include <QElapsedTimer>

namespace {

QString authorityFor(const FaultRow& row)
{
    return row.fault.kind == simulator::FaultKind::WrongCertificate ? FaultyServer::authorityFile()
                                                                    : QString();
}

} // namespace

Pair::Pair(const FaultRow& given, int number)
    : row(given), server(folder.file(QString()), number, row.fault,
                         Figures::instance().seed() + static_cast<quint64>(number)),
      till(folder.file(QString()), server.address(), authorityFor(row),
           Figures::instance().seed() + static_cast<quint64>(number))
{}

void Pair::timed(const char* what, const std::function<void()>& call)
{
    QElapsedTimer clock;
    clock.start();
    call();
    const qint64 taken = clock.elapsed();
    EXPECT_LE(taken, FaultyTill::timeoutMilliseconds + toleranceMilliseconds) << what;
    Figures::instance().noteCall(QString::fromLatin1(what) + QLatin1StringView(" under ") +
                                     QString::fromLatin1(row.name),
                                 taken);
}

void Pair::close()
{
    timed("close", [this] { refusal = till.desk().close().refusal; });
}
