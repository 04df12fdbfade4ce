// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/http/requestreader.h"

#include "simulator/documents/rejection.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

constexpr qsizetype step = 16 * 1024;
constexpr qsizetype longestChunkLine = 256;

[[noreturn]] void rejectLate()
{
    throw Rejection(408, u"The request was not there in time"_s);
}

[[noreturn]] void rejectLarge(qsizetype most)
{
    constexpr qsizetype kibibyte = 1024;
    constexpr qsizetype mebibyte = kibibyte * kibibyte;
    throw Rejection(413, most % mebibyte == 0
                             ? u"The body is larger than %1 MiB"_s.arg(most / mebibyte)
                             : u"The body is larger than %1 KiB"_s.arg(most / kibibyte));
}

[[noreturn]] void rejectBroken()
{
    throw Rejection(400, u"The body ended before its declared length or is garbled"_s);
}

/// The length before a piece of a body, behind which may stand what nobody needs.
qsizetype chunkLength(const QByteArray& line)
{
    constexpr qsizetype mostDigits = 8;
    const QByteArray digits = line.split(';').first().trimmed();
    const bool isNumber = !digits.isEmpty() && digits.size() <= mostDigits &&
                          std::all_of(digits.begin(), digits.end(), [](char digit) {
                              return QByteArrayView("0123456789abcdefABCDEF").contains(digit);
                          });
    if (!isNumber) {
        rejectBroken();
    }
    return static_cast<qsizetype>(digits.toULongLong(nullptr, 16));
}

} // namespace

/// Adds what has come to the buffer.
Channel::Outcome RequestReader::fill(Channel::Deadline until)
{
    std::array<char, step> piece; // NOLINT(cppcoreguidelines-pro-type-member-init): is read into
    qsizetype count = piece.size();
    const Channel::Outcome outcome = channel.read(piece.data(), count, until);
    buffer.append(piece.data(), count);
    return outcome;
}

bool RequestReader::waitForRequest(Channel::Deadline until)
{
    return !buffer.isEmpty() || fill(until) == Channel::Outcome::Read;
}

std::optional<RequestHead> RequestReader::readHead(Channel::Deadline until)
{
    qsizetype end = 0;
    for (;;) {
        while (buffer.startsWith("\r\n")) { // some clients end the body before with it
            buffer.remove(0, 2);
        }
        end = buffer.indexOf("\r\n\r\n");
        if (end > maximumHead || (end < 0 && buffer.size() > maximumHead)) {
            throw Rejection(
                431, u"The head of the request is larger than %1 KiB"_s.arg(maximumHead / 1024));
        }
        if (end >= 0) {
            break;
        }
        switch (fill(until)) {
        case Channel::Outcome::Read:
            break;
        case Channel::Outcome::Closed:
            return std::nullopt;
        case Channel::Outcome::TooLate:
            rejectLate();
        }
    }
    const QByteArray text = buffer.first(end);
    buffer.remove(0, end + 4);
    return readRequestHead(text);
}

/// Moves so many bytes behind what is there already.
void RequestReader::append(QByteArray& to, qsizetype count, Channel::Deadline until)
{
    const qsizetype size = to.size() + count;
    const qsizetype known = std::min(count, buffer.size());
    to.append(buffer.first(known));
    buffer.remove(0, known);
    while (to.size() < size) {
        const qsizetype before = to.size();
        qsizetype piece = std::min(step, size - before);
        to.resize(before + piece);
        const Channel::Outcome outcome = channel.read(to.data() + before, piece, until);
        to.resize(before + piece);
        if (outcome == Channel::Outcome::TooLate) {
            rejectLate();
        }
        if (outcome == Channel::Outcome::Closed) {
            rejectBroken();
        }
    }
}

/// A line of a body in pieces, without its end.
QByteArray RequestReader::readLine(Channel::Deadline until)
{
    qsizetype end = buffer.indexOf("\r\n");
    while (end < 0 && buffer.size() <= longestChunkLine) {
        switch (fill(until)) {
        case Channel::Outcome::Read:
            break;
        case Channel::Outcome::Closed:
            rejectBroken();
        case Channel::Outcome::TooLate:
            rejectLate();
        }
        end = buffer.indexOf("\r\n");
    }
    if (end < 0 || end > longestChunkLine) {
        rejectBroken();
    }
    const QByteArray line = buffer.first(end);
    buffer.remove(0, end + 2);
    return line;
}

QByteArray RequestReader::readChunks(qsizetype most, Channel::Deadline until)
{
    QByteArray body;
    for (;;) {
        const qsizetype length = chunkLength(readLine(until));
        if (length == 0) {
            break;
        }
        if (length > most - body.size()) {
            rejectLarge(most);
        }
        append(body, length, until);
        if (!readLine(until).isEmpty()) {
            rejectBroken();
        }
    }
    constexpr int mostTrailers = 100;
    for (int i = 0; i < mostTrailers; ++i) {
        if (readLine(until).isEmpty()) {
            return body;
        }
    }
    rejectBroken();
}

QByteArray RequestReader::readBody(const RequestHead& head, qsizetype most, Channel::Deadline until)
{
    if (head.length.value_or(0) > static_cast<quint64>(most)) {
        rejectLarge(most);
    }
    if (head.asksFirst && head.hasBody()) {
        channel.write("HTTP/1.1 100 Continue\r\n\r\n");
    }
    if (head.isChunked) {
        return readChunks(most, until);
    }
    QByteArray body;
    const auto length = static_cast<qsizetype>(head.length.value_or(0));
    body.reserve(length);
    append(body, length, until);
    return body;
}

bool RequestReader::skip(quint64 count, Channel::Deadline until)
{
    for (;;) {
        const auto known = std::min(count, static_cast<quint64>(buffer.size()));
        buffer.remove(0, static_cast<qsizetype>(known));
        count -= known;
        if (count == 0) {
            return true;
        }
        if (fill(until) != Channel::Outcome::Read) {
            return false;
        }
    }
}

} // namespace simulator
