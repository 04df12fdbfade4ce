// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/store/tillhand.h"

#include <QThread>

using namespace Qt::StringLiterals;

namespace {

/// One customer of so many sees the till die.
constexpr int customersBetweenKills = 60;
constexpr int longestLife = 60; ///< milliseconds after the command under which it dies

} // namespace

void TillHand::work(const std::atomic<bool>& stopped)
{
    start();
    while (!stopped) {
        if (upTo(customersBetweenKills) == 0) {
            kill(u"close"_s);
            start();
        } else {
            serve();
        }
    }
    till->send(u"quit"_s);
    till->waitForEnd();
    till.reset();
}

void TillHand::start()
{
    till = std::make_unique<Program>(QStringLiteral(ORVA_TILL), QStringList{u"work"_s}, folder);
}

/// One customer: mostly a purchase, now and then goods of the last one come back.
void TillHand::serve()
{
    const bool takesBack = closed > 0 && upTo(5) == 0;
    const QString opening =
        takesBack ? u"return return.toml"_s : u"open sale%1.toml"_s.arg(1 + upTo(saleFiles - 1));
    if (!isOk(opening)) {
        return; // the last sale has come back already
    }
    if (isOk(u"close"_s)) {
        ++closed;
    } else {
        isOk(u"abandon"_s);
    }
}

/// The till dies with a check open, being closed, or closed.
void TillHand::kill(const QString& command)
{
    if (isOk(u"open sale%1.toml"_s.arg(1 + upTo(saleFiles - 1)))) {
        till->send(command);
    }
    QThread::msleep(static_cast<unsigned long>(upTo(longestLife)));
    till->kill();
    till->waitForEnd();
    ++killed;
}

bool TillHand::isOk(const QString& command)
{
    return till->command(command).endsWith(u"ok\n"_s);
}

RunResult TillHand::run(const QStringList& arguments) const
{
    return runProgram(QStringLiteral(ORVA_TILL), arguments, folder);
}
