// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/http/adminroute.h"

#include "simulator/documents/rejection.h"

#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace simulator {

QString AdminCall::argument(const QString& key) const
{
    QByteArray query = request.query;
    query.replace('+', "%20"); // as forms and scripts write a blank
    return QUrlQuery(QString::fromUtf8(query)).queryItemValue(key, QUrl::FullyDecoded);
}

qint64 AdminCall::number(const QString& key, qint64 otherwise) const
{
    const QString text = argument(key);
    if (text.isEmpty()) {
        return otherwise;
    }
    bool isNumber = false;
    const qint64 value = text.toLongLong(&isNumber);
    if (!isNumber || value < 0) {
        throw Rejection(400, u"The argument \"%1\" must be a whole number from 0 up"_s.arg(key));
    }
    return value;
}

std::optional<QString> AdminRoute::match(const Request& request) const
{
    if (request.method != method) {
        return std::nullopt;
    }
    const qsizetype open = path.indexOf('{');
    if (open < 0) {
        return request.path == path ? std::optional(QString()) : std::nullopt;
    }
    const QByteArray before = path.first(open);
    const QByteArray behind = path.sliced(path.indexOf('}') + 1);
    const qsizetype size = request.path.size() - before.size() - behind.size();
    if (size <= 0 || !request.path.startsWith(before) || !request.path.endsWith(behind)) {
        return std::nullopt;
    }
    const QByteArray part = request.path.sliced(before.size(), size);
    return part.contains('/') ? std::nullopt : std::optional(QString::fromUtf8(part));
}

Answer jsonAnswer(const QByteArray& text)
{
    Answer answer;
    answer.contentType = "application/json; charset=utf-8";
    answer.body = text;
    return answer;
}

} // namespace simulator
