// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/unit/till/recording/recordedshop.h"

#include <QDirIterator>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

void RecordedShop::SetUp()
{
    Shop::SetUp();
    configure(u"[recording]\nfolder = \"records\"\n"_s);
}

void RecordedShop::configure(const QString& table) const
{
    writeFile(u"orva.toml"_s, readFile(u"orva.toml"_s) + table);
}

void RecordedShop::sellWithPoints() const
{
    const RunResult sold =
        till({u"sell"_s, u"sale.toml"_s, u"--points"_s, u"all"_s, u"--wait"_s, u"30"_s});
    EXPECT_EQ(sold.exitCode, 0) << qPrintable(sold.output);
}

QJsonArray RecordedShop::listed() const
{
    const RunResult list = till({u"log"_s, u"list"_s, u"--json"_s});
    EXPECT_EQ(list.exitCode, 0) << qPrintable(list.output);
    return QJsonDocument::fromJson(list.output.toUtf8()).array();
}

RunResult RecordedShop::replay(const QString& what, const QStringList& more) const
{
    return till(QStringList{u"log"_s, u"replay"_s, what} + more);
}

QStringList RecordedShop::files() const
{
    QStringList names;
    QDirIterator all(folder(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        names.append(all.next());
    }
    names.sort();
    return names;
}

QString RecordedShop::recordFile(int number) const
{
    return u"records/%1.jsonl"_s.arg(number, 6, 10, QLatin1Char('0'));
}
