// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/year/shoptill.h"

#include "host/database/database.h"
#include "tests/scenario/year/violation.h"
#include "till/checks/checkstore.h"
#include "till/sharing/reservations.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QThread>

using namespace Qt::StringLiterals;

namespace year {

void ShopTill::start()
{
    process = std::make_unique<Program>(QStringLiteral(ORVA_TILL), QStringList{u"work"_s}, folder);
}

void ShopTill::quit()
{
    process->send(u"quit"_s);
    if (process->waitForEnd() != 0) {
        throw Violation(u"till %1 did not end well:\n%2"_s.arg(own).arg(process->output()));
    }
    process.reset();
}

void ShopTill::kill()
{
    process->kill();
    process->waitForEnd();
    process.reset();
}

QString ShopTill::order(const QString& command)
{
    const QString answer = tell(command);
    requireOk(command, answer);
    return answer;
}

void ShopTill::awaitSettledReturns() const
{
    constexpr int limit = 30'000;
    constexpr unsigned long betweenLooks = 20;
    const QDeadlineTimer deadline(limit);
    poshost::Database file(database());
    while (till::Reservations::nextDue(file).value_or(1) == 0) {
        if (deadline.hasExpired()) {
            throw Violation(u"till %1 does not settle its returns"_s.arg(own));
        }
        QThread::msleep(betweenLooks);
    }
}

void ShopTill::requireOk(const QString& command, const QString& answer) const
{
    if (!isOk(answer)) {
        throw Violation(u"till %1 was told \"%2\" and answered:\n%3"_s.arg(QString::number(own),
                                                                           command, answer));
    }
}

void ShopTill::write(const QString& file, const QString& text) const
{
    QFile written(folder + u'/' + file);
    const QByteArray bytes = text.toUtf8();
    if (!written.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        written.write(bytes) != bytes.size()) {
        throw Violation(u"cannot write %1: %2"_s.arg(written.fileName(), written.errorString()));
    }
}

QList<till::Check> ShopTill::takeClosed()
{
    QList<till::Check> taken;
    till::CheckStore checks(QSharedPointer<poshost::Database>::create(database()));
    checks.forEachListed([&](const till::CheckRow& row) {
        if (row.state != u"closed"_s) {
            return true;
        }
        if (known.contains(row.id)) {
            return false;
        }
        known.insert(row.id);
        taken.prepend(checks.findClosed(row.id));
        return true;
    });
    return taken;
}

void ShopTill::forEachClosed(const std::function<void(const till::Check&)>& take) const
{
    till::CheckStore(QSharedPointer<poshost::Database>::create(database())).forEachClosed(take);
}

QString ShopTill::run(const QStringList& arguments) const
{
    const RunResult result = runProgram(QStringLiteral(ORVA_TILL), arguments, folder);
    if (result.exitCode != 0) {
        throw Violation(u"till %1: \"%2\" ended with %3:\n%4"_s.arg(
            QString::number(own), arguments.join(u' '), QString::number(result.exitCode),
            result.output));
    }
    return result.output;
}

QStringList ShopTill::filesWith(const QByteArray& bytes) const
{
    QStringList found;
    const QDir all(folder);
    const QStringList names = all.entryList(QDir::Files | QDir::Hidden);
    for (const QString& name : names) {
        QFile file(all.filePath(name));
        if (!file.open(QIODevice::ReadOnly)) {
            throw Violation(u"cannot read %1: %2"_s.arg(file.fileName(), file.errorString()));
        }
        if (file.readAll().contains(bytes)) {
            found.append(file.fileName());
        }
    }
    return found;
}

} // namespace year
