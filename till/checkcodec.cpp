// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checkcodec.h"

#include "host/document/discountimpact.h"
#include "host/document/money.h"
#include "till/documentstream.h"
#include "till/failure.h"
#include "till/text.h"

#include <QDataStream>
#include <QIODevice>

namespace till {
namespace {

constexpr quint32 magic = 0x4f435031; // "OCP1"
constexpr quint32 formatVersion = 1;

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
    return bytes;
}

Check checkcodec::decode(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_6_4);
    quint32 readMagic = 0;
    quint32 version = 0;
    stream >> readMagic >> version;
    if (readMagic != magic || version > formatVersion) {
        throw Failure(readMagic == magic
                          ? Text::tr("The stored check was written by a newer till; use that one.")
                          : Text::tr("The stored check is damaged and cannot be read."));
    }
    Check check;
    check.document = documentstream::read(stream);
    check.lines = readLines(stream);
    qint32 loyalty = 0;
    qint32 kind = 0;
    qint32 returnsBefore = 0;
    stream >> loyalty >> check.refusal >> kind >> check.points.kopecks >> check.pointsTouched;
    readOptional(stream, check.systemEarnKopecks);
    stream >> check.cashierMessages >> check.clientMessages;
    readOptional(stream, check.tenderedKopecks);
    stream >> check.confirmed >> returnsBefore;
    if (stream.status() != QDataStream::Ok || !stream.atEnd()) {
        throw Failure(Text::tr("The stored check is damaged and cannot be read."));
    }
    check.loyalty = LoyaltyState(loyalty);
    check.points.kind = PointsChoice::Kind(kind);
    check.returnsBefore = returnsBefore;
    check.fillDocument();
    return check;
}

} // namespace till
