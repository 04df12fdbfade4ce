// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/page/rulesstate.h"

#include "input/readfile.h"
#include "simulator/rules/rulesreader.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <utility>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// No file of rules is larger.
constexpr qint64 longestFile = 4LL * 1024 * 1024;

QByteArray textOf(const QString& file)
{
    if (file.isEmpty()) {
        return builtInRules();
    }
    try {
        return input::readFile(file, longestFile);
    } catch (const input::FileError&) {
        return {}; // why it is not followed is said beside it
    }
}

int lineIn(const QString& complaint)
{
    static const QRegularExpression place(u":(\\d+): "_s);
    return place.match(complaint).captured(1).toInt();
}

} // namespace

RulesState::RulesState(QString rulesFile) : file(std::move(rulesFile)) {}

void RulesState::follow()
{
    const std::scoped_lock lock(mutex);
    complaint.clear();
    ++notes;
}

void RulesState::refuse(const QString& why)
{
    const std::scoped_lock lock(mutex);
    complaint = why;
    ++notes;
}

QByteArray RulesState::json() const
{
    QString why;
    {
        const std::scoped_lock lock(mutex);
        why = complaint;
    }
    return QJsonDocument(QJsonObject{{u"file"_s, file},
                                     {u"text"_s, QString::fromUtf8(textOf(file))},
                                     {u"followed"_s, why.isEmpty()},
                                     {u"complaint"_s, why},
                                     {u"line"_s, lineIn(why)}})
        .toJson(QJsonDocument::Compact);
}

} // namespace simulator
