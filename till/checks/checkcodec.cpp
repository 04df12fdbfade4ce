// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/checkcodec.h"

#include "till/checks/checksoundness.h"
#include "till/checks/documentstream.h"
#include "till/checks/fieldstream.h"
#include "till/checks/linefields.h"
#include "till/failure.h"
#include "till/text.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QIODevice>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace till {
namespace {

using CheckField = FieldOf<Check, int, bool, qint64, QString, QStringList, std::optional<qint64>>;

constexpr quint32 magic = 0x4f435031; // "OCP1"
/// From this version on a stored check ends with a digest of all that stands before it.
constexpr int firstVersionWithDigest = 2;
constexpr auto digestKind = QCryptographicHash::Sha1;

template <typename Value>
CheckField member(const QString& name, Value Check::*member, int since = 1)
{
    return {
        name,
        Access<Check, Value>{[member](const Check& check) { return check.*member; },
                             [member](Check& check, const Value& value) { check.*member = value; }},
        since};
}

/// What a check has beside its document and its lines, in the order in which it is stored.
const QList<CheckField>& ownFields()
{
    static const QList<CheckField> fields{
        {u"loyalty"_s,
         Access<Check, int>{
             [](const Check& check) { return static_cast<int>(check.loyalty); },
             [](Check& check, int state) { check.loyalty = static_cast<LoyaltyState>(state); }}},
        member(u"refusal"_s, &Check::refusal),
        {u"points"_s,
         Access<Check, int>{[](const Check& check) { return static_cast<int>(check.points.kind); },
                            [](Check& check, int kind) {
                                check.points.kind = static_cast<PointsChoice::Kind>(kind);
                            }}},
        {u"pointsSum"_s, Access<Check, qint64>{
                             [](const Check& check) { return check.points.kopecks; },
                             [](Check& check, qint64 kopecks) { check.points.kopecks = kopecks; }}},
        member(u"pointsTouched"_s, &Check::pointsTouched),
        member(u"systemEarn"_s, &Check::systemEarnKopecks),
        member(u"toCashier"_s, &Check::cashierMessages),
        member(u"toCustomer"_s, &Check::clientMessages),
        member(u"tendered"_s, &Check::tenderedKopecks),
        member(u"confirmed"_s, &Check::confirmed),
        member(u"returnsBefore"_s, &Check::returnsBefore),
    };
    return fields;
}

/// What this till writes: the version that its newest field came with.
int presentVersion()
{
    static const int version = std::max({firstVersionWithDigest, documentstream::version(),
                                         fieldstream::versionOf(linefields::stored()),
                                         fieldstream::versionOf(ownFields())});
    return version;
}

void writeLines(QDataStream& stream, const QList<Line>& lines)
{
    stream << qint32(lines.size());
    for (const Line& line : lines) {
        fieldstream::write(stream, line, linefields::stored());
    }
}

QList<Line> readLines(QDataStream& stream, int version)
{
    qint32 count = 0;
    stream >> count;
    QList<Line> lines;
    for (qint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        lines.append(Line());
        fieldstream::read(stream, lines.last(), linefields::stored(), version);
    }
    return lines;
}

qsizetype digestBytes()
{
    return QCryptographicHash::hashLength(digestKind);
}

bool isWhole(const QByteArray& bytes, int version)
{
    return version < firstVersionWithDigest ||
           (bytes.size() > digestBytes() &&
            QCryptographicHash::hash(bytes.chopped(digestBytes()), digestKind) ==
                bytes.last(digestBytes()));
}

/// Nothing when the stream ends too early or holds what cannot be.
std::optional<Check> read(QDataStream& stream, int version)
{
    Check check;
    check.document = documentstream::read(stream, version);
    check.lines = readLines(stream, version);
    fieldstream::read(stream, check, ownFields(), version);
    if (stream.status() != QDataStream::Ok) {
        return std::nullopt;
    }
    check.fillDocument();
    return check;
}

} // namespace

QByteArray checkcodec::encode(const Check& check)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_4);
    stream << magic << qint32(presentVersion());
    documentstream::write(stream, *check.document);
    writeLines(stream, check.lines);
    fieldstream::write(stream, check, ownFields());
    return bytes + QCryptographicHash::hash(bytes, digestKind);
}

Check checkcodec::decode(const QByteArray& bytes, const QString& name)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_6_4);
    quint32 readMagic = 0;
    quint32 readVersion = 0;
    stream >> readMagic >> readVersion;
    if (readMagic == magic && readVersion > quint32(presentVersion())) {
        throw Failure(
            Text::tr("The stored check %1 was written by a newer till; use that one.").arg(name));
    }
    const int version = readMagic == magic ? int(readVersion) : 0;
    const auto check =
        version > 0 && isWhole(bytes, version) ? read(stream, version) : std::nullopt;
    const qsizetype behind = version < firstVersionWithDigest ? 0 : digestBytes();
    if (!check || stream.device()->bytesAvailable() != behind || !isSound(*check)) {
        throw Failure(damagedText(name));
    }
    return *check;
}

QString checkcodec::damagedText(const QString& name)
{
    return Text::tr("The stored check %1 is damaged; look for it in a copy of the database.")
        .arg(name);
}

} // namespace till
