// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/checkcodec.h"

#include "host/document/discountimpact.h"
#include "host/document/money.h"
#include "till/checks/checksoundness.h"
#include "till/checks/documentstream.h"
#include "till/checks/storedvalues.h"
#include "till/failure.h"
#include "till/text.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QIODevice>

namespace till {
namespace {

constexpr quint32 magic = 0x4f435031; // "OCP1"
/// Version 2 ends with a digest of all that stands before it.
constexpr quint32 formatVersion = 2;
constexpr quint32 firstVersionWithDigest = 2;
constexpr auto digestKind = QCryptographicHash::Sha1;

template <typename T>
void writeOptional(QDataStream& stream, const std::optional<T>& value)
{
    stream << value.has_value() << value.value_or(T());
}

template <typename T>
void readOptional(QDataStream& stream, std::optional<T>& value)
{
    bool present = false;
    T content{};
    stream >> present >> content;
    value = present ? std::optional(content) : std::nullopt;
}

void writeLine(QDataStream& stream, const Line& line)
{
    stream << qint32(line.position) << line.code << line.name << line.fractional
           << line.priceKopecks << line.minPriceKopecks << line.thousandths
           << line.returnedThousandths << line.sumKopecks << line.discountKopecks
           << line.spentKopecks << line.awardedKopecks << line.earnedKopecks
           << line.givenBackKopecks << line.takenBackKopecks;
}

Line readLine(QDataStream& stream)
{
    Line line;
    qint32 position = 0;
    stream >> position >> line.code >> line.name >> line.fractional >> line.priceKopecks >>
        line.minPriceKopecks >> line.thousandths >> line.returnedThousandths >> line.sumKopecks >>
        line.discountKopecks >> line.spentKopecks >> line.awardedKopecks >> line.earnedKopecks >>
        line.givenBackKopecks >> line.takenBackKopecks;
    line.position = position;
    return line;
}

void writeLines(QDataStream& stream, const QList<Line>& lines)
{
    stream << qint32(lines.size());
    for (const Line& line : lines) {
        writeLine(stream, line);
    }
}

QList<Line> readLines(QDataStream& stream)
{
    qint32 count = 0;
    stream >> count;
    QList<Line> lines;
    for (qint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        lines.append(readLine(stream));
    }
    return lines;
}

qsizetype digestBytes()
{
    return QCryptographicHash::hashLength(digestKind);
}

bool isWhole(const QByteArray& bytes, quint32 version)
{
    return version < firstVersionWithDigest ||
           (bytes.size() > digestBytes() &&
            QCryptographicHash::hash(bytes.chopped(digestBytes()), digestKind) ==
                bytes.last(digestBytes()));
}

/// Nothing when the stream ends too early or holds what cannot be.
std::optional<Check> read(QDataStream& stream)
{
    Check check;
    check.document = documentstream::read(stream);
    check.lines = readLines(stream);
    qint32 loyalty = 0;
    qint32 kind = 0;
    qint32 returnsBefore = 0;
    stream >> loyalty >> check.refusal >> kind >> check.points.kopecks >> check.pointsTouched;
    readOptional(stream, check.systemEarnKopecks);
    check.cashierMessages = storedvalues::readTexts(stream);
    check.clientMessages = storedvalues::readTexts(stream);
    readOptional(stream, check.tenderedKopecks);
    stream >> check.confirmed >> returnsBefore;
    if (stream.status() != QDataStream::Ok) {
        return std::nullopt;
    }
    check.loyalty = LoyaltyState(loyalty);
    check.points.kind = PointsChoice::Kind(kind);
    check.returnsBefore = returnsBefore;
    check.fillDocument();
    return check;
}

} // namespace

QByteArray checkcodec::encode(const Check& check)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_4);
    stream << magic << formatVersion;
    documentstream::write(stream, *check.document);
    writeLines(stream, check.lines);
    stream << qint32(check.loyalty) << check.refusal << qint32(check.points.kind)
           << check.points.kopecks << check.pointsTouched;
    writeOptional(stream, check.systemEarnKopecks);
    stream << check.cashierMessages << check.clientMessages;
    writeOptional(stream, check.tenderedKopecks);
    stream << check.confirmed << qint32(check.returnsBefore);
    return bytes + QCryptographicHash::hash(bytes, digestKind);
}

Check checkcodec::decode(const QByteArray& bytes, const QString& name)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_6_4);
    quint32 readMagic = 0;
    quint32 version = 0;
    stream >> readMagic >> version;
    if (readMagic == magic && version > formatVersion) {
        throw Failure(
            Text::tr("The stored check %1 was written by a newer till; use that one.").arg(name));
    }
    const auto check =
        readMagic == magic && version > 0 && isWhole(bytes, version) ? read(stream) : std::nullopt;
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
