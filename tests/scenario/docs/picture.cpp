// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/docs/picture.h"

#include "tests/scenario/docs/tree.h"

#include <QSet>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// A room is a folder, a file, or files of a folder with "*" for a part of their names.
bool isIn(const QString& path, const QString& room)
{
    const qsizetype star = room.indexOf(u'*');
    if (star < 0) {
        return path.startsWith(room) &&
               (path.size() == room.size() || path.at(room.size()) == u'/');
    }
    const QStringView before = QStringView(room).first(star);
    const QStringView behind = QStringView(room).sliced(star + 1);
    return path.startsWith(before) && path.endsWith(behind) && path.indexOf(u'/', star) < 0;
}

} // namespace

QList<Include> includesBelow(const QStringList& folders)
{
    const QStringList houses = tree::houses();
    QList<Include> found;
    for (const QString& folder : folders) {
        const QStringList sources = tree::sourcesBelow(folder);
        for (const QString& source : sources) {
            const QStringList headers = tree::captured(
                tree::textOf(source), u"^[ \\t]*#[ \\t]*include[ \\t]*[<\"]([^>\"]+)[>\"]"_s);
            for (const QString& header : headers) {
                // one that climbs out of its folder may lead anywhere
                if (houses.contains(header.section(u'/', 0, 0)) || header.startsWith(u'.')) {
                    found.append({source, header});
                }
            }
        }
    }
    return found;
}

Picture::Picture(const QString& markdown)
{
    const QStringList lines =
        markdown.section(u"```rooms\n"_s, 1).section(u"```"_s, 0, 0).split(u'\n');
    for (const QString& line : lines) {
        readLine(line);
    }
    for (const QString& room : places) {
        const QString outer = room.section(u'/', 0, -2);
        if (places.contains(outer) && !room.contains(u'.')) {
            divided.insert(outer);
        }
    }
}

void Picture::readLine(const QString& line)
{
    QStringList words = line.split(u' ', Qt::SkipEmptyParts);
    if (!line.startsWith(u' ')) {
        if (words.value(1) == "="_L1) {
            groups.insert(words.first(), words.mid(2));
        }
        return; // otherwise a caption
    }
    if (!words.first().endsWith(u'>')) {
        places.append(words.takeFirst());
    }
    if (!words.isEmpty() && words.first() != "-->"_L1) {
        unreadable.append(line);
    }
    for (const QString& name : words.mid(1)) {
        arrows.append({places.last(), name});
    }
}

QStringList Picture::membersOf(const QString& name) const
{
    return groups.value(name, {name});
}

QString Picture::roomOf(const QString& path) const
{
    QString best;
    for (const QString& room : places) {
        if (room.size() > best.size() && isIn(path, room)) {
            best = room;
        }
    }
    // Where rooms stand below a room, it holds its own files alone, and a folder beside them is
    // none of the picture yet.
    const bool isBelow = path.indexOf(u'/', best.size() + 1) >= 0;
    return isBelow && divided.contains(best) ? QString() : best;
}

QStringList Picture::forbidden(const QList<Include>& includes) const
{
    QStringList wrong;
    for (const Include& include : includes) {
        const QString from = roomOf(include.source);
        const QString to = roomOf(include.header);
        const bool isAllowed =
            from == to || std::any_of(arrows.cbegin(), arrows.cend(), [&](const Arrow& arrow) {
                return arrow.from == from && membersOf(arrow.to).contains(to);
            });
        if (from.isEmpty() || to.isEmpty()) {
            wrong.append(u"%1 includes %2: one of them stands in no room of the picture"_s.arg(
                include.source, include.header));
        } else if (!isAllowed) {
            wrong.append(u"%1 includes %2: there is no arrow from %3 to %4"_s.arg(
                include.source, include.header, from, to));
        }
    }
    return wrong;
}

QStringList Picture::unused(const QList<Include>& includes) const
{
    QSet<std::pair<QString, QString>> needed;
    for (const Include& include : includes) {
        needed.insert({roomOf(include.source), roomOf(include.header)});
    }
    QStringList wrong;
    for (const Arrow& arrow : arrows) {
        const QStringList targets = membersOf(arrow.to);
        const bool isUsed =
            std::any_of(targets.cbegin(), targets.cend(), [&](const QString& target) {
                return needed.contains({arrow.from, target});
            });
        if (!isUsed) {
            wrong.append(u"nothing in %1 includes anything of %2: rub out the arrow"_s.arg(
                arrow.from, arrow.to));
        }
    }
    return wrong;
}

QStringList Picture::misdrawn() const
{
    QStringList wrong;
    for (const QString& line : unreadable) {
        wrong.append(u"%1: an arrow is -->"_s.arg(line.trimmed()));
    }
    for (const Arrow& arrow : arrows) {
        const QStringList targets = membersOf(arrow.to);
        for (const QString& target : targets) {
            const qsizetype at = places.indexOf(target);
            if (at < 0) {
                wrong.append(u"%1 --> %2: there is no such room"_s.arg(arrow.from, target));
            } else if (at < places.indexOf(arrow.from)) {
                wrong.append(u"%1 --> %2 leads upwards: move down what both rooms need"_s.arg(
                    arrow.from, target));
            }
        }
    }
    return wrong;
}
