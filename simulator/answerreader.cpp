// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/answerreader.h"

#include "simulator/matchreader.h"
#include "simulator/text.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

constexpr int firstStatus = 200;
constexpr int lastStatus = 599;

} // namespace

CannedAnswer readAnswer(const TableReader& table, const QDir& folder, QStringList& files)
{
    table.allowOnly(matchKeys() + QStringList{u"status"_s, u"body"_s, u"file"_s});
    CannedAnswer answer;
    readMatch(table, answer);
    answer.status =
        static_cast<int>(table.integer("status", answer.status, firstStatus, lastStatus));
    const QStringList keys = table.keys();
    if (!keys.contains(u"file"_s)) {
        answer.body = table.text("body").toUtf8();
        return answer;
    }
    if (keys.contains(u"body"_s)) {
        table.refuse("file", Text::tr("stands beside \"body\": an answer has one of them"));
    }
    QFile file(folder.filePath(table.requiredText("file")));
    files.append(file.fileName());
    if (!file.open(QIODevice::ReadOnly)) {
        table.refuse("file", Text::tr("names %1, which cannot be read: %2")
                                 .arg(file.fileName(), file.errorString()));
    }
    answer.body = file.readAll();
    return answer;
}

} // namespace simulator
