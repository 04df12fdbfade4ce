// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>

/// A loyalty server that books what is posted to it: each body once, like the real one, which
/// answers 409 to what it knows.
class LedgerServer
{
public:
    LedgerServer();
    ~LedgerServer();
    LedgerServer(const LedgerServer&) = delete;
    LedgerServer& operator=(const LedgerServer&) = delete;

    /// How long each answer takes from now on.
    void setDelay(int milliseconds) { delay = milliseconds; }
    QString address() const;

    int requests() const { return posted; }
    /// Bodies in the order in which they were booked.
    QList<QByteArray> booked() const;
    /// How many posts brought what was booked before.
    int repeated() const { return again; }

private:
    struct Implementation;
    std::unique_ptr<Implementation> self;
    std::atomic<int> delay = 0;
    std::atomic<int> posted = 0;
    std::atomic<int> again = 0;
    mutable std::mutex mutex; ///< guards what follows
    QList<QByteArray> order;
    QHash<QByteArray, int> known;
    bool isEnding = false;
    std::condition_variable ending;
};
