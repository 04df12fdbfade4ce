// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/year/journal.h"

#include "tests/scenario/year/violation.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace year {

void Journal::write(const QString& line)
{
    constexpr qsizetype kept = 20;
    const QString text = named(line);
    const QByteArray bytes = text.toUtf8() + '\n';
    hash.addData(bytes);
    if (out != nullptr && out->write(bytes) != bytes.size()) {
        throw std::runtime_error("the journal cannot be written: " +
                                 out->errorString().toStdString());
    }
    last.append(text);
    if (last.size() > kept) {
        last.removeFirst();
    }
    ++count;
}

QString Journal::nameOf(const QString& checkId)
{
    const auto next = static_cast<int>(ordinals.size()) + 1;
    auto known = ordinals.find(checkId);
    if (known == ordinals.end()) {
        known = ordinals.insert(checkId, next);
    }
    return u"C%1"_s.arg(*known);
}

QString Journal::named(QString text)
{
    static const QRegularExpression identifier(
        u"[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}"_s);
    for (auto match = identifier.match(text); match.hasMatch(); match = identifier.match(text)) {
        text.replace(match.capturedStart(), match.capturedLength(), nameOf(match.captured()));
    }
    return text;
}

} // namespace year
