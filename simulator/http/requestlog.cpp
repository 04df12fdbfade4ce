// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/http/requestlog.h"

#include "simulator/documents/check.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// One word of the log: printable, without blanks and not too long; "-" when it is empty.
QString word(QString text)
{
    text.truncate(64);
    std::replace_if(
        text.begin(), text.end(),
        [](QChar character) { return character.isSpace() || !character.isPrint(); }, u'?');
    return text.isEmpty() ? u"-"_s : text;
}

QString sentence(QString text)
{
    std::replace_if(
        text.begin(), text.end(),
        [](QChar character) { return character.isSpace() || !character.isPrint(); }, u' ');
    return text;
}

} // namespace

QString logLine(const QString& time, const Request& request, const Answer& answer)
{
    QString line = time + u' ' + word(QString::fromUtf8(request.path)) + u' ' +
                   word(answer.checkId) + u' ' + word(maskedCard(answer.cardNumber)) + u' ' +
                   QString::number(answer.status);
    if (!answer.reason.isEmpty()) {
        line += u' ' + sentence(answer.reason);
    }
    if (answer.fault) {
        line += u" [fault "_s + answer.fault->name() + u']';
    }
    return line;
}

QString logObject(const QString& time, const Request& request, const Answer& answer)
{
    const QJsonObject object{
        {u"time"_s, time},
        {u"path"_s, QString::fromUtf8(request.path)},
        {u"check"_s, answer.checkId},
        {u"card"_s, answer.cardNumber.isEmpty() ? QString() : maskedCard(answer.cardNumber)},
        {u"status"_s, answer.status},
        {u"reason"_s, answer.reason},
        {u"fault"_s, answer.fault ? answer.fault->name() : QString()}};
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

void RequestLog::write(const Request& request, const Answer& answer)
{
    const QString time = QDateTime::currentDateTime().toString(u"yyyy-MM-dd hh:mm:ss.zzz"_s);
    const QString text =
        form == Form::Json ? logObject(time, request, answer) : logLine(time, request, answer);
    out.write(text + u'\n');
}

} // namespace simulator
