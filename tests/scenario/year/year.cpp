// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/year/year.h"

#include "simulator/rules/rulesreader.h"
#include "tests/scenario/year/auditor.h"
#include "tests/scenario/year/dice.h"
#include "tests/scenario/year/journal.h"
#include "tests/scenario/year/network.h"
#include "tests/scenario/year/scene.h"
#include "tests/scenario/year/story.h"
#include "tests/scenario/year/tillbox.h"
#include "tests/scenario/year/violation.h"
#include "tests/scenario/year/yearclock.h"
#include "till/checks/amount.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using till::amount::moneyText;

namespace year {
namespace {

QString cardNumber(int index)
{
    return u"22%1"_s.arg(index, 11, 10, QLatin1Char('0'));
}

/// The built-in rules with the year's own cards.
simulator::Rules rulesFor(const Options& options, Dice& dice, tests::Books& books)
{
    simulator::Rules rules = simulator::readRules(simulator::builtInRules(), u"built-in rules"_s);
    rules.isStrict = true;
    rules.cards.clear();
    for (int i = 1; i <= options.cards; ++i) {
        const qint64 opening = dice.chance(30) ? 0 : dice.between(0, 2000'00);
        rules.cards.push_back({cardNumber(i), u"Анна"_s, u"Соколова"_s, opening});
        books.open(cardNumber(i), opening);
    }
    return rules;
}

QList<till::Line> goodsOf(Dice& dice)
{
    constexpr int kinds = 60;
    QList<till::Line> goods;
    for (int i = 0; i < kinds; ++i) {
        till::Line line;
        line.code = QString::number(1000 + i);
        line.name = u"Товар %1"_s.arg(i);
        line.fractional = dice.chance(30);
        line.priceKopecks = dice.chance(80) ? dice.between(5'00, 900'00) : dice.between(1, 5'00);
        line.minPriceKopecks = dice.chance(30) ? line.priceKopecks * 7 / 10 : 0;
        goods.append(line);
    }
    return goods;
}

QString listOf(const QMap<QString, int>& counts)
{
    QStringList parts;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        parts.append(u"%1 %2"_s.arg(it.key()).arg(it.value()));
    }
    return parts.join(u", "_s);
}

/// Everything that lives for a year.
class Year
{
public:
    Year(const Options& given, const QString& folder, QIODevice* journalFile)
        : options(given), dice(given.seed), clock(QDateTime(QDate(2026, 1, 1), QTime(0, 0))),
          journal(journalFile),
          network(clock, folder + u"/server.sqlite"_s, given.plant, given.plantAt),
          scene{clock, dice, journal, network, books, {}, goodsOf(dice)}
    {
        const simulator::Rules rules = rulesFor(options, dice, books);
        scene.cards = books.cards();
        for (int i = 1; i <= options.tills; ++i) {
            tills.push_back(std::make_unique<TillBox>(i, folder, dice.draw()));
        }
        story = std::make_unique<Story>(scene, tills, rules,
                                        [this](const QString& line) { afterEvent(line); });
        auditor = std::make_unique<Auditor>(books, folder + u"/server.sqlite"_s, tills);
    }

    Outcome run();

private:
    void afterEvent(const QString& line);
    void endOfDay(int day);
    QString figures() const;
    QString violation(const QString& what);

    const Options options;
    Dice dice;
    YearClock clock;
    Journal journal;
    tests::Books books;
    Network network;
    Scene scene;
    Story::Tills tills;
    std::unique_ptr<Story> story;
    std::unique_ptr<Auditor> auditor;
    Remainder left;
};

Outcome Year::run()
{
    Outcome outcome;
    try {
        for (int day = 1; day <= options.days; ++day) {
            story->day(options.eventsPerDay);
            endOfDay(day);
        }
        story->ending();
        auditor->checkEverything();
        left = auditor->checkRemainder();
        outcome.sound = true;
        outcome.report = figures();
    } catch (const Violation& found) {
        outcome.report = violation(found.text());
    } catch (const std::exception& error) {
        outcome.report = violation(QString::fromUtf8(error.what()));
    }
    outcome.digest = journal.digest();
    return outcome;
}

void Year::afterEvent(const QString& line)
{
    journal.write(line);
    auditor->check();
}

void Year::endOfDay(int day)
{
    qint64 held = 0;
    qint64 pending = 0;
    for (const QString& card : std::as_const(scene.cards)) {
        held += books.expected(card);
        pending += books.inTheEnd(card) - books.expected(card);
    }
    auditor->checkLedger();
    journal.write(u"day %1 ends: the cards hold %2, %3 are on the way in %4 checks"_s.arg(day).arg(
        moneyText(held), moneyText(pending), QString::number(books.unbooked())));
}

QString Year::figures() const
{
    const Trade::Counts& count = story->trade().counts();
    const tests::Points& total = books.totals();
    qint64 began = 0;
    qint64 held = 0;
    for (const QString& card : scene.cards) {
        began += books.opening(card);
        held += books.expected(card);
    }
    QStringList lines;
    lines << u"Events: %1"_s.arg(listOf(story->events()));
    lines << u"Checks: %1 sales and %2 returns closed, %3 of them without a confirmation; %4 "
             "suspended, %5 restored, %6 abandoned, %7 interrupted by a restart, %8 returns "
             "overtaken"_s.arg(count.sales)
                 .arg(count.returns)
                 .arg(count.unconfirmed)
                 .arg(count.suspended)
                 .arg(count.restored)
                 .arg(count.abandoned)
                 .arg(count.interrupted)
                 .arg(count.refused);
    lines << u"Requests: %1, of which met a fault: %2"_s.arg(network.requests())
                 .arg(listOf(network.faults()));
    lines << u"Confirmed checks: %1, booked once: %2, not booked: %3"_s.arg(books.size())
                 .arg(books.size() - books.unbooked())
                 .arg(books.unbooked());
    lines << u"Left in the queues: %1 that were booked and answered 409 as if by somebody else, %2 "
             "returns behind them"_s.arg(left.unclear)
                 .arg(left.behind);
    lines << u"Points: began with %1 + earned %2 - spent %3 + given back %4 - taken back %5 = "
             "held %6"_s.arg(moneyText(began), moneyText(total.earned), moneyText(total.spent),
                             moneyText(total.givenBack), moneyText(total.takenBack),
                             moneyText(held));
    lines << u"Journal: %1 lines, SHA-256 %2"_s.arg(journal.lines()).arg(journal.digest());
    return lines.join(u'\n') + u'\n';
}

QString Year::violation(const QString& what)
{
    return u"VIOLATION with seed %1 at event %2: %3\nThe journal up to it:\n%4\n"_s.arg(
        QString::number(options.seed), QString::number(story->number()), journal.named(what),
        journal.lastLines().join(u'\n'));
}

} // namespace

Outcome live(const Options& options)
{
    QLoggingCategory::setFilterRules(u"orva*=false\nposhost*=false"_s);
    const QTemporaryDir folder(QDir::tempPath() + u"/orva-year-XXXXXX"_s);
    if (!folder.isValid()) {
        throw std::runtime_error("no folder for the year: " + folder.errorString().toStdString());
    }
    QFile file(options.journal);
    if (!options.journal.isEmpty() && !file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        throw std::runtime_error("cannot write " + options.journal.toStdString());
    }
    return Year(options, folder.path(), file.isOpen() ? &file : nullptr).run();
}

} // namespace year
