// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/rules/rules.h"
#include "tests/scenario/year/trade.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace year {

class TillBox;
struct Scene;

/// Decides by chance what happens next: at the tills, to their clock, to the server and on the way
/// between them.
class Story
{
public:
    using Tills = std::vector<std::unique_ptr<TillBox>>;

    /// @param afterEvent called with the journal's line after every event
    Story(Scene& scene, Tills& tills, const simulator::Rules& rules,
          std::function<void(const QString& line)> afterEvent);

    /// One day with so many events.
    void day(int events);
    /// All faults end and everything is delivered that ever can be.
    void ending();

    /// The number of the event that happened last or was happening, from 1.
    int number() const { return begun; }
    const Trade& trade() const { return people; }
    /// How often each kind of event happened.
    const QMap<QString, int>& events() const { return happened; }

private:
    struct Kind;

    void event();
    void happen();
    void tell(const QString& kind, const QString& what);
    QString deliverEverywhere(int percent);
    TillBox& till() { return *tills.at(current); }

    QString changeTill();
    QString restartTill();
    QString lookAfter();
    QString restartServer();
    QString beginOutage();
    QString setClock();
    QString changePassword();
    QString changeWeather();

    Scene& scene;
    Tills& tills;
    simulator::Rules rules;
    std::function<void(const QString&)> after;
    Trade people;
    size_t current = 0;
    int outageLeft = 0;
    int passwords = 0;
    int begun = 0;
    QMap<QString, int> happened;
};

} // namespace year
