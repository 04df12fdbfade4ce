// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/store/takinghand.h"

#include <QFile>
#include <QThread>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// One customer of so many sees the till die, and one the return abandoned.
constexpr int customersBetweenKills = 9;
constexpr int customersBetweenChanges = 14;
constexpr int longestLifeLeft = 40; ///< milliseconds after the command under which it dies
constexpr int longestPause = 200;   ///< milliseconds behind a customer who was turned away
constexpr int mostPieces = 2;       ///< that one customer brings

} // namespace

Program& TakingHand::till()
{
    if (!working) {
        working = std::make_unique<Program>(
            QStringLiteral(ORVA_TILL), QStringList{u"--config"_s, name + u".toml"_s, u"work"_s},
            folder);
    }
    return *working;
}

bool TakingHand::isOk(const QString& command)
{
    return till().command(command).endsWith(u"ok\n"_s);
}

bool TakingHand::open(const QString& sale, int position, int pieces)
{
    const QString file = name + u"-back.toml"_s;
    QFile written(folder + u'/' + file);
    EXPECT_TRUE(written.open(QIODevice::WriteOnly | QIODevice::Truncate));
    written.write(
        u"type = \"return\"\nsale = \"%1\"\n[[line]]\nposition = %2\nquantity = %3\n"_s.arg(sale)
            .arg(position)
            .arg(pieces)
            .toUtf8());
    written.close();
    return isOk(u"return "_s + file);
}

void TakingHand::serve(const QString& sale, int positions)
{
    if (!open(sale, 1 + upTo(positions - 1), 1 + upTo(mostPieces - 1))) {
        ++refused;
        QThread::msleep(static_cast<unsigned long>(upTo(longestPause))); // the store may be away
        return;
    }
    if (upTo(customersBetweenChanges) == 0) {
        isOk(u"abandon"_s);
    } else if (upTo(customersBetweenKills) == 0) {
        till().send(u"close"_s);
        QThread::msleep(static_cast<unsigned long>(upTo(longestLifeLeft)));
        die();
    } else if (!isOk(u"close"_s)) {
        ++refused;
        if (upTo(1) == 0 || !isOk(u"close"_s)) {
            isOk(u"abandon"_s);
        }
    }
}

void TakingHand::takeAllBack(const QString& sale, int positions)
{
    for (int position = 1; position <= positions; ++position) {
        while (open(sale, position, 1)) {
            const QString answer = till().command(u"close"_s);
            EXPECT_TRUE(answer.endsWith(u"ok\n"_s)) << qPrintable(answer);
            if (!answer.endsWith(u"ok\n"_s)) {
                isOk(u"abandon"_s);
                return;
            }
        }
    }
}

void TakingHand::die()
{
    if (working) {
        working->kill();
        working->waitForEnd();
        working.reset();
        ++killed;
    }
}

RunResult TakingHand::run(const QStringList& arguments) const
{
    return runProgram(QStringLiteral(ORVA_TILL),
                      QStringList{u"--config"_s, name + u".toml"_s} + arguments, folder);
}
