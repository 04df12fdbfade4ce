// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/till/doctor/row.h"

#include "host/config/keysheet.h"
#include "host/config/knownkeys.h"

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

void expectFound(const QList<Row>& rows, Scene::Way way)
{
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Scene scene(way);
        const till::doctor::Report sound = scene.examine();
        ASSERT_EQ(sound.count(till::doctor::Mark::Fails), 0) << sound.text().toStdString();
        ASSERT_EQ(sound.count(till::doctor::Mark::Warning), 0) << sound.text().toStdString();
        QMap<QString, QString> before = Scene::marksOf(sound);
        row.breakIt(scene);
        const till::doctor::Report broken = scene.examine();
        if (poshost::knownkeys::of(poshost::keysheet::owner()).isEmpty()) {
            dropKeysOfPlugin(before);
        }
        EXPECT_EQ(changesBetween(before, Scene::marksOf(broken)).join(u'\n').toStdString(),
                  expectedChanges(row, before).join(u'\n').toStdString())
            << broken.text().toStdString();
        for (const auto& check : broken.rows()) {
            const bool isFound = row.found.startsWith(check.id + u' ');
            EXPECT_EQ(!check.finding.mend.isEmpty(), isFound) << check.id.toStdString();
        }
    }
}

} // namespace tests
