// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QPair>
#include <QString>
#include <QUrl>

namespace till::verify {

/// A request as it goes to the server.
struct Outgoing
{
    using Headers = QList<QPair<QByteArray, QByteArray>>;

    QUrl url;
    QByteArray body;
    Headers headers; ///< those of the plug-in; length and host are made on the way
    QByteArray method = "POST";
    bool inChunks = false;     ///< in pieces, its length not announced
    int pieces = 1;            ///< how many pieces the body goes out in
    int pauseMilliseconds = 0; ///< before each piece

    /// The same with another value of a header, or without it where the value is null.
    Outgoing with(const QByteArray& name, const QByteArray& value) const;
};

/// What came back.
struct Reply
{
    int status = 0; ///< 0: no whole answer came
    QByteArray body;
    Outgoing::Headers headers;
    QString trouble; ///< why there is no whole answer, as the transport says it
    qint64 milliseconds = 0;
    int connections = 0; ///< that were opened for it

    /// The last of that name, in whatever case; null where there is none.
    QByteArray header(const QByteArray& name) const;
    /// A header that holds a date as HTTP writes it, in UTC; invalid where it holds none.
    QDateTime dateIn(const QByteArray& name) const;
    /// Such as "200", or what went wrong.
    QString shown() const;
};

/// A request with what came back, for who has to look into it.
struct Exchange
{
    QUrl url;
    QByteArray request;
    Reply reply;
};

/// How a connection over TLS came about.
struct Handshake
{
    bool succeeded = false;
    QString trouble;
};

/// Requests of all forms that HTTP has, where the host's client sends only the one that tills use.
/// Goes to no address but those below the one it is made for. Each call has a connection of its
/// own, where it does not say otherwise; any thread. A call blocks up to the time-out.
class Wire
{
public:
    /// @param marked every address begins with it
    /// @param caFile authorities to trust, and @param proxy the way; empty: the system's, none
    Wire(const QUrl& marked, const QByteArray& caFile, const QByteArray& proxy, int seconds);

    /// @throws Failure where the address is not below the marked one
    Reply send(const Outgoing& request) const;
    /// One after the other on one connection, if the server keeps it.
    QList<Reply> sendKept(const QList<Outgoing>& requests) const;
    /// All at the same time, a thread each.
    QList<Reply> sendTogether(const QList<Outgoing>& requests) const;
    /// Sends it whole and closes the connection without waiting for the answer.
    void sendAndLeave(const Outgoing& request) const;
    enum class Versions
    {
        Usual,
        Old, ///< TLS 1.0 and 1.1 only
    };
    /// Connects over TLS and sends nothing.
    Handshake shakeHands(Versions versions) const;

    bool isEncrypted() const { return address.scheme() == QLatin1StringView("https"); }
    const QUrl& marked() const { return address; }

private:
    void guard(const QUrl& url) const;

    const QUrl address;
    const QByteArray trusted;
    const QByteArray way;
    const int limitSeconds;
};

} // namespace till::verify
