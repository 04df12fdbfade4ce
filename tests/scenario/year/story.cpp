// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/year/story.h"

#include "tests/scenario/year/dice.h"
#include "tests/scenario/year/network.h"
#include "tests/scenario/year/scene.h"
#include "tests/scenario/year/tillbox.h"
#include "tests/scenario/year/yearclock.h"
#include "tests/support/books.h"

using namespace Qt::StringLiterals;
using simulator::FaultKind;

namespace year {

/// A kind of event with its share in all of them.
struct Story::Kind
{
    QString name;
    int share;
    QString (Story::*happen)();
};

Story::Story(Scene& everything, Tills& allTills, const simulator::Rules& serverRules,
             std::function<void(const QString&)> afterEvent)
    : scene(everything), tills(allTills), rules(serverRules), after(std::move(afterEvent)),
      people(everything)
{
    scene.network.serve(rules);
    till().start();
}

void Story::day(int events)
{
    constexpr int opensAt = 8;
    const QDateTime now = scene.clock.trueTime();
    const QDate date = now.time().hour() < opensAt ? now.date() : now.date().addDays(1);
    scene.clock.advanceTo(QDateTime(date, QTime(opensAt, 0)));
    ++begun;
    tell(u"weather"_s, changeWeather());
    constexpr qint64 openMilliseconds = 12LL * 3600 * 1000;
    for (int i = 0; i < events; ++i) {
        scene.clock.advance(scene.dice.between(1, 2 * openMilliseconds / events));
        event();
    }
}

void Story::event()
{
    ++begun;
    if (outageLeft > 0 && --outageLeft == 0) {
        scene.network.endOutage();
        tell(u"outage"_s, u"ends"_s);
        ++begun;
    }
    happen();
}

void Story::happen()
{
    constexpr int waitsForPassword = 90;
    if (till().password() != rules.password && !scene.dice.chance(waitsForPassword)) {
        tell(u"administrator"_s, lookAfter());
        return;
    }
    static const QList<Kind> rare{
        {u"change of till"_s, 40, &Story::changeTill},
        {u"restart"_s, 25, &Story::restartTill},
        {u"administrator"_s, 12, &Story::lookAfter},
        {u"server restart"_s, 8, &Story::restartServer},
        {u"outage"_s, 6, &Story::beginOutage},
        {u"clock"_s, 6, &Story::setClock},
        {u"password"_s, 1, &Story::changePassword},
    };
    qint64 way = scene.dice.between(1, 1000);
    for (const Kind& kind : rare) {
        way -= kind.share;
        if (way <= 0) {
            tell(kind.name, (this->*kind.happen)());
            return;
        }
    }
    constexpr int returns = 150;
    constexpr int restored = 100;
    if (way <= returns && people.hasReturnable(till())) {
        tell(u"return"_s, people.takeBack(till()));
    } else if (way <= returns + restored && people.hasSuspended(till())) {
        tell(u"restored check"_s, people.resume(till()));
    } else {
        tell(u"sale"_s, people.sell(till()));
    }
}

/// Lets the tills deliver and writes the line.
void Story::tell(const QString& kind, const QString& what)
{
    ++happened[kind];
    QString line = u"%1 %2 till %3 %4: %5"_s.arg(begun, 6, 10, QLatin1Char('0'))
                       .arg(scene.clock.currentDateTime().toString(u"yyyy-MM-dd hh:mm:ss"_s))
                       .arg(till().name())
                       .arg(kind, what);
    line += deliverEverywhere(70);
    const QStringList faults = scene.network.takeFaults();
    if (!faults.isEmpty()) {
        line += u"; met "_s + faults.join(u", "_s);
    }
    after(line);
}

QString Story::deliverEverywhere(int percent)
{
    QString text;
    for (const auto& one : tills) {
        if (!scene.dice.chance(percent)) {
            continue;
        }
        const poshost::DeliveryReport report = one->deliver();
        if (report.requests > 0) {
            text += u"; till %1 delivers %2 with %3 requests, %4 parked"_s.arg(one->name())
                        .arg(report.delivered)
                        .arg(report.requests)
                        .arg(report.parked);
        }
    }
    return text;
}

QString Story::changeTill()
{
    till().stop();
    current = static_cast<size_t>(scene.dice.between(0, static_cast<qint64>(tills.size()) - 1));
    till().start();
    return u"work goes on at till %1"_s.arg(till().name());
}

QString Story::restartTill()
{
    till().stop();
    till().start();
    return u"without an open check"_s;
}

/// An administrator puts right what is in the way of this till's queue.
QString Story::lookAfter()
{
    QString text;
    if (till().password() != rules.password) {
        till().stop();
        till().setPassword(rules.password);
        till().start();
        text = u"new password in %1 messages, "_s.arg(till().reauthorize());
    }
    return text + u"%1 parked messages retried"_s.arg(till().retryParked());
}

QString Story::restartServer()
{
    scene.network.serve(rules);
    return u"with the same books"_s;
}

QString Story::beginOutage()
{
    static const QList<FaultKind> kinds{FaultKind::RefusedConnection, FaultKind::HangingResolution,
                                        FaultKind::WrongCertificate};
    const FaultKind kind = scene.dice.pick(kinds);
    const bool onlyBooking = scene.dice.chance(60);
    outageLeft = static_cast<int>(scene.dice.between(3, onlyBooking ? 120 : 30));
    scene.network.beginOutage(kind, static_cast<int>(scene.dice.between(0, 4)), onlyBooking);
    return u"%1 for %2 events, %3"_s.arg(
        QString::fromLatin1(simulator::describe(kind).name), QString::number(outageLeft),
        onlyBooking ? u"only where confirmations go"_s : u"wherever requests go"_s);
}

QString Story::setClock()
{
    constexpr qint64 hour = 3600;
    switch (scene.dice.between(1, 3)) {
    case 1:
        scene.clock.setWrongBy(-hour);
        return u"an hour back"_s;
    case 2:
        scene.clock.setWrongBy(24 * hour);
        return u"a day forward"_s;
    default:
        scene.clock.setWrongBy(0);
        return u"put right"_s;
    }
}

QString Story::changePassword()
{
    rules.password = u"secret%1"_s.arg(++passwords);
    scene.network.serve(rules);
    return u"the server takes another one"_s;
}

QString Story::changeWeather()
{
    const qint64 roll = scene.dice.between(1, 10);
    const int perMille = roll <= 5 ? 10 : roll <= 8 ? 60 : roll == 9 ? 200 : 500;
    scene.network.setWeather(perMille, scene.dice.draw());
    return u"%1 requests in 1000 meet a fault"_s.arg(perMille);
}

void Story::ending()
{
    constexpr int rounds = 60;
    constexpr qint64 longerThanAnyWait = 3600 * 1000LL;
    scene.network.endOutage();
    scene.network.setWeather(0, 0);
    scene.clock.setWrongBy(0);
    till().stop();
    for (current = 0; current < tills.size(); ++current) {
        till().start();
        ++begun;
        tell(u"ending"_s, lookAfter());
        for (int round = 0; round < rounds && !till().left().isEmpty(); ++round) {
            scene.clock.advance(longerThanAnyWait);
            till().deliver();
            till().retryParked();
        }
        till().deliver();
        till().stop();
        ++begun;
        tell(u"ending"_s, u"%1 messages are left"_s.arg(till().left().size()));
    }
    current = 0;
}

} // namespace year
