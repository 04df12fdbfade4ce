// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/till/doctor/row.h"

#include "host/config/keysheet.h"
#include "host/config/knownkeys.h"
#include "host/queue/queuebell.h"
#include "tests/unit/till/doctor/printedmend.h"

#include <QDeadlineTimer>
#include <QThread>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tests {
namespace {

bool isAmong(const QString& id, const QStringList& groups)
{
    return std::any_of(groups.cbegin(), groups.cend(), [&id](const QString& group) {
        return group.endsWith(u'.') ? id.startsWith(group) : id == group;
    });
}

/// What must have changed: "check mark" for each.
QStringList expectedChanges(const Row& row, const QMap<QString, QString>& before)
{
    const QString found = row.found.section(u' ', 0, 0);
    QStringList changes;
    for (auto it = before.cbegin(); it != before.cend(); ++it) {
        if (it.key() == found) {
            changes.append(row.found);
        } else if (isAmong(it.key(), row.skipped) && *it != "skipped"_L1) {
            changes.append(it.key() + u" skipped"_s);
        }
    }
    return changes;
}

/// Without its sheet nothing is said of a plug-in's keys.
void dropKeysOfPlugin(QMap<QString, QString>& marks)
{
    marks.removeIf([](const auto& mark) { return mark.key().startsWith(u"config.Orva."_s); });
}

QStringList changesBetween(const QMap<QString, QString>& before,
                           const QMap<QString, QString>& after)
{
    QStringList changes;
    for (auto it = after.cbegin(); it != after.cend(); ++it) {
        if (before.value(it.key()) != *it) {
            changes.append(it.key() + u' ' + *it);
        }
    }
    return changes;
}

} // namespace

QStringList server()
{
    return {u"server."_s, u"clock"_s};
}

QStringList way()
{
    return QStringList{u"road."_s, u"tls."_s} + server();
}

QStringList behindTheSheet()
{
    return QStringList{u"address."_s, u"timeout"_s} + way();
}

namespace {

void expectOnlyTheCause(const Row& row, const QMap<QString, QString>& sound,
                        const till::doctor::Report& broken)
{
    QMap<QString, QString> before = sound;
    if (poshost::knownkeys::of(poshost::keysheet::owner()).isEmpty()) {
        dropKeysOfPlugin(before);
    }
    EXPECT_EQ(changesBetween(before, Scene::marksOf(broken)).join(u'\n').toStdString(),
              expectedChanges(row, before).join(u'\n').toStdString())
        << broken.text().toStdString();
    for (const auto& check : broken.rows()) {
        const bool isFound = row.found.startsWith(check.id + u' ');
        EXPECT_EQ(!check.finding.mend.isNone(), isFound) << check.id.toStdString();
    }
}

/// What goes on running has to begin first.
bool isDelivering(const Scene& scene)
{
    const QDeadlineTimer end(20'000);
    while (!poshost::QueueBell::isHeard(scene.databaseFile) && !end.hasExpired()) {
        QThread::msleep(5);
    }
    return poshost::QueueBell::isHeard(scene.databaseFile);
}

void apply(Scene& scene, const Row& row, const PrintedMend& mend, Mended& counts)
{
    if (mend.isCommand()) {
        ++counts.byCommand;
        mend.runAsPrinted(row.answers ? row.answers(scene) : QByteArray());
        EXPECT_TRUE(!mend.leftSomethingRunning() || isDelivering(scene));
        scene.writtenByHand = true;
    } else if (mend.isLine()) {
        ++counts.byLine;
        mend.putIntoFile();
        scene.writtenByHand = true;
    } else {
        ++counts.byHand;
        row.byHand ? row.byHand(scene) : scene.putRight();
    }
}

/// What still has to be mended. There is no store here: a right value for its key names one that
/// cannot be reached.
qsizetype leftOver(const till::doctor::Report& report)
{
    return std::count_if(report.rows().cbegin(), report.rows().cend(), [](const auto& row) {
        return row.id != "store"_L1 && (row.finding.mark == till::doctor::Mark::Fails ||
                                        row.finding.mark == till::doctor::Mark::Warning);
    });
}

} // namespace

Mended expectFoundAndMended(const QList<Row>& rows, Scene::Way way)
{
    Mended counts;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Scene scene(way);
        const till::doctor::Report sound = scene.examine();
        EXPECT_EQ(sound.count(till::doctor::Mark::Fails), 0) << sound.text().toStdString();
        EXPECT_EQ(sound.count(till::doctor::Mark::Warning), 0) << sound.text().toStdString();
        const QMap<QString, QString> before = Scene::marksOf(sound);
        row.breakIt(scene);
        const till::doctor::Report broken = scene.examine();
        expectOnlyTheCause(row, before, broken);
        const PrintedMend mend(broken.text());
        apply(scene, row, mend, counts);
        const till::doctor::Report mended = scene.examine();
        // what is new, such as a database that is not made yet, has less to be looked at
        EXPECT_EQ(leftOver(mended), 0) << mend.text().toStdString() << '\n'
                                       << mended.text().toStdString();
    }
    return counts;
}

} // namespace tests
