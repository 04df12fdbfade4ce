// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/mend.h"

#include "console/printable.h"
#include "till/text.h"

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

QString placeOf(const Mend& mend)
{
    switch (mend.place) {
    case Mend::Place::Instead:
        return Text::tr("%1, in the place of line %2:").arg(mend.file).arg(mend.number);
    case Mend::Place::Behind:
        return Text::tr("%1, behind line %2:").arg(mend.file).arg(mend.number);
    case Mend::Place::AtEnd:
        break;
    }
    return Text::tr("%1, at its end:").arg(mend.file);
}

} // namespace

QStringList Mend::lines() const
{
    namespace printable = console::printable;
    switch (kind) {
    case Kind::None:
        return {};
    case Kind::Command:
        return {u"-> "_s + printable::line(text)};
    case Kind::Words:
        return {Text::tr("by hand: %1").arg(printable::line(text))};
    case Kind::Line:
        break;
    }
    QStringList shown{u"-> "_s + printable::line(placeOf(*this))};
    for (const QString& line : text.split(u'\n')) {
        shown.append(u"   "_s + printable::line(line));
    }
    return shown;
}

QString Mend::kindName() const
{
    switch (kind) {
    case Kind::None:
        break;
    case Kind::Command:
        return u"command"_s;
    case Kind::Line:
        return u"line"_s;
    case Kind::Words:
        return u"words"_s;
    }
    return {};
}

QString Mend::placeName() const
{
    if (kind != Kind::Line) {
        return {};
    }
    return place == Place::Instead ? u"instead"_s : place == Place::Behind ? u"behind"_s : u"end"_s;
}

QByteArray Mend::appliedTo(const QByteArray& content) const
{
    QByteArrayList lines = content.split('\n');
    const bool endsWithLine = content.isEmpty() || content.endsWith('\n');
    if (endsWithLine) {
        lines.removeLast();
    }
    const QByteArray own = text.toUtf8();
    if (place == Place::AtEnd) {
        lines.append(own);
    } else if (place == Place::Behind && number <= lines.size()) {
        lines.insert(number, own);
    } else if (place == Place::Instead && number >= 1 && number <= lines.size()) {
        lines[number - 1] = own;
    }
    return lines.join('\n') + '\n';
}

} // namespace till::doctor
