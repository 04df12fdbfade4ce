// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/rules/answerreader.h"

#include "input/readfile.h"
#include "simulator/rules/matchreader.h"
#include "simulator/text.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

[[noreturn]] void refuseFile(const TableReader& table, const QString& file,
                             const input::FileError& error)
{
    switch (error.kind()) {
    case input::FileError::Kind::NotRegular:
        table.refuse("file", Text::tr("names %1, which is no regular file").arg(file));
    case input::FileError::Kind::TooLarge:
        table.refuse("file", Text::tr("names %1, which is larger than %2 bytes")
                                 .arg(file, QString::number(maximumAnswerFile)));
    case input::FileError::Kind::Unreadable:
        break;
    }
    table.refuse("file", Text::tr("names %1, which cannot be read: %2").arg(file, error.reason()));
}

} // namespace

CannedAnswer readAnswer(const TableReader& table, const QDir& folder, QStringList& files)
{
    table.allowOnly(matchKeys() + QStringList{u"status"_s, u"body"_s, u"file"_s});
    CannedAnswer answer;
    readMatch(table, answer);
    answer.status = readStatus(table, answer.status);
    const QStringList keys = table.keys();
    if (!keys.contains(u"file"_s)) {
        answer.body = table.text("body").toUtf8();
        return answer;
    }
    if (keys.contains(u"body"_s)) {
        table.refuse("file", Text::tr("stands beside \"body\": an answer has one of them"));
    }
    const QString file = folder.filePath(table.requiredText("file"));
    files.append(file);
    try {
        answer.body = input::readFile(file, maximumAnswerFile);
    } catch (const input::FileError& error) {
        refuseFile(table, file, error);
    }
    return answer;
}

} // namespace simulator
