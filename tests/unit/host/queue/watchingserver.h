// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "contract/rawserver.h"

#include <QByteArray>
#include <QHash>
#include <QStringList>
#include <algorithm>
#include <condition_variable>
#include <functional>
#include <mutex>

/// A server on the loopback that sees how many requests are with it at the same time. A body's
/// first letter names its lane.
class WatchingServer
{
public:
    /// What a request gets; called on the connections' threads, several at a time.
    using Script = std::function<std::string(const QByteArray& body)>;

    QString url() const { return server.url().toString(); }

    /// Until told otherwise everything is taken at once.
    void setScript(Script play)
    {
        const std::lock_guard lock(mutex);
        script = std::move(play);
    }

    /// Waits, as part of a script, until that many requests are with the server.
    /// @return false: they did not come within ten seconds
    bool waitForCompany(int count)
    {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, std::chrono::seconds(10), [&] { return most >= count; });
    }

    /// "body:step" of all requests in the order in which they came.
    QStringList seen()
    {
        const std::lock_guard lock(mutex);
        return came;
    }
    /// How many were with the server at once, of all lanes and of the lane that had most.
    int mostAtOnce()
    {
        const std::lock_guard lock(mutex);
        return most;
    }
    int mostOfOneLane()
    {
        const std::lock_guard lock(mutex);
        return mostInLane;
    }

private:
    void serve(RawServer::Connection& connection)
    {
        while (const std::optional<std::string> request = connection.readRequest()) {
            const QByteArray text = QByteArray::fromStdString(*request);
            const QByteArray body = text.mid(text.indexOf("\r\n\r\n") + 4);
            const Script play = arrive(body, text.mid(text.indexOf("step") + 4, 1));
            const std::string answer = play ? play(body) : RawServer::answer("200 OK");
            leave(body);
            connection.send(answer);
        }
    }

    Script arrive(const QByteArray& body, const QByteArray& step)
    {
        const std::lock_guard lock(mutex);
        came.append(QString::fromUtf8(body + ':' + step));
        most = std::max(most, ++present);
        mostInLane = std::max(mostInLane, ++inLane[body.at(0)]);
        changed.notify_all();
        return script;
    }

    void leave(const QByteArray& body)
    {
        const std::lock_guard lock(mutex);
        --present;
        --inLane[body.at(0)];
    }

    std::mutex mutex; ///< guards what follows
    std::condition_variable changed;
    Script script;
    QStringList came;
    QHash<char, int> inLane;
    int present = 0;
    int most = 0;
    int mostInLane = 0;
    RawServer server{[this](RawServer::Connection& connection) { serve(connection); }};
};
