// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/support/tararchive.h"

#include "console/printable.h"
#include "till/text.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace till {
namespace {

constexpr qsizetype blockBytes = 512;
constexpr QByteArrayView tarMagic("ustar");

/// Where a field of a header stands.
struct HeaderField
{
    qsizetype at;
    qsizetype length;
};

constexpr HeaderField nameField{0, 100};
constexpr HeaderField modeField{100, 8};
constexpr HeaderField ownerField{108, 8};
constexpr HeaderField groupField{116, 8};
constexpr HeaderField sizeField{124, 12};
constexpr HeaderField timeField{136, 12};
constexpr HeaderField sumField{148, 8};
constexpr HeaderField kindField{156, 1};
constexpr HeaderField magicField{257, 6};
constexpr HeaderField versionField{263, 2};
constexpr HeaderField prefixField{345, 155};

void put(QByteArray& header, HeaderField field, const QByteArray& value)
{
    header.replace(field.at, value.size(), value);
}

void putNumber(QByteArray& header, HeaderField field, qint64 number)
{
    const QByteArray digits = QByteArray::number(number, 8);
    put(header, field, digits.rightJustified(field.length - 1, '0'));
}

QByteArray textIn(const QByteArray& header, HeaderField field)
{
    const QByteArray text = header.mid(field.at, field.length);
    const qsizetype end = text.indexOf('\0');
    return end < 0 ? text : text.first(end);
}

/// The sum over a header in which blanks stand for the sum itself.
int sumOf(QByteArray header)
{
    put(header, sumField, QByteArray(sumField.length, ' '));
    return std::accumulate(header.begin(), header.end(), 0, [](int sum, char byte) {
        return sum + static_cast<unsigned char>(byte);
    });
}

qint64 numberIn(const QByteArray& header, HeaderField field)
{
    bool isNumber = false;
    const qint64 number = textIn(header, field).trimmed().toLongLong(&isNumber, 8);
    if (!isNumber || number < 0) {
        throw tararchive::Unreadable(Text::tr("a number in it is damaged"));
    }
    return number;
}

qsizetype padding(qsizetype size)
{
    return (blockBytes - size % blockBytes) % blockBytes;
}

QByteArray headerOf(const TarMember& member, const QDateTime& time)
{
    QByteArray header(blockBytes, '\0');
    put(header, nameField, member.name.toUtf8().left(nameField.length));
    putNumber(header, modeField, 0600);
    putNumber(header, ownerField, 0);
    putNumber(header, groupField, 0);
    putNumber(header, sizeField, member.content.size());
    putNumber(header, timeField, std::max<qint64>(0, time.toSecsSinceEpoch()));
    put(header, kindField, "0");
    put(header, magicField, QByteArray("ustar\0", 6));
    put(header, versionField, "00");
    const QByteArray sum = QByteArray::number(sumOf(header), 8).rightJustified(6, '0');
    put(header, sumField, sum + QByteArray("\0 ", 2));
    return header;
}

/// A name that stays inside of the folder where somebody unpacks it.
QString nameIn(const QByteArray& header)
{
    static const QRegularExpression allowed(
        u"^[A-Za-z0-9][A-Za-z0-9._-]*(/[A-Za-z0-9][A-Za-z0-9._-]*)*$"_s);
    const QString name = QString::fromUtf8(textIn(header, nameField));
    if (!textIn(header, prefixField).isEmpty() || !allowed.match(name).hasMatch() ||
        name.contains(u'\n')) {
        throw tararchive::Unreadable(Text::tr("the name \"%1\" in it is none that a till gives")
                                         .arg(console::printable::line(name)));
    }
    return name;
}

void requirePlainFile(const QByteArray& header, const QString& name)
{
    const char kind = header.at(kindField.at);
    if (kind != '0' && kind != '\0') {
        throw tararchive::Unreadable(
            Text::tr("\"%1\" in it is no plain file but a link, a folder or a device").arg(name));
    }
}

void requireWhole(const QByteArray& header)
{
    if (QByteArrayView(header).sliced(magicField.at).first(tarMagic.size()) != tarMagic ||
        numberIn(header, sumField) != sumOf(header)) {
        throw tararchive::Unreadable(Text::tr("it is damaged, or no archive"));
    }
}

} // namespace

bool tararchive::isOne(const QByteArray& bytes)
{
    return bytes.size() >= blockBytes &&
           QByteArrayView(bytes).sliced(magicField.at).first(tarMagic.size()) == tarMagic;
}

QByteArray tararchive::written(const QList<TarMember>& members, const QDateTime& time)
{
    QByteArray bytes;
    for (const TarMember& member : members) {
        bytes += headerOf(member, time) + member.content +
                 QByteArray(padding(member.content.size()), '\0');
    }
    return bytes + QByteArray(2 * blockBytes, '\0');
}

QList<TarMember> tararchive::read(const QByteArray& bytes)
{
    const QByteArray end(blockBytes, '\0');
    QList<TarMember> members;
    QSet<QString> names;
    qsizetype at = 0;
    while (true) {
        const QByteArray header = bytes.mid(at, blockBytes);
        if (header == end) {
            return members;
        }
        if (header.size() < blockBytes) {
            throw Unreadable(Text::tr("it is cut off"));
        }
        requireWhole(header);
        const QString name = nameIn(header);
        requirePlainFile(header, name);
        const qint64 size = numberIn(header, sizeField);
        at += blockBytes;
        if (size > bytes.size() - at) {
            throw Unreadable(Text::tr("it is cut off"));
        }
        if (names.contains(name) || names.size() >= mostMembers) {
            throw Unreadable(
                Text::tr("\"%1\" in it is there twice, or there is too much in it").arg(name));
        }
        names.insert(name);
        members.append({name, bytes.mid(at, size)});
        at += size + padding(size);
    }
}

} // namespace till
