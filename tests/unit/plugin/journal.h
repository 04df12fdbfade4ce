// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "tests/support/loglistener.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <utility>

namespace tests {

/// What happened while it lives, in one list: the lines of the logger "orva", each as
/// "level: text", and the calls that doubles note. So the order of log lines and calls can be
/// asserted. One at a time.
class Journal
{
public:
    Journal() : listener(&Journal::take) { current = this; }
    ~Journal() { current = nullptr; }
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    /// Called after each entry, for what must hold at that moment.
    std::function<void(const QString&)> onEntry;

    QStringList entries() const { return noted; }
    void clear() { noted.clear(); }
    /// The entries so far, which are then forgotten.
    QStringList taken() { return std::exchange(noted, {}); }

    static void note(const QString& entry)
    {
        if (current == nullptr) {
            return;
        }
        current->noted.append(entry);
        if (current->onEntry) {
            current->onEntry(entry);
        }
    }

private:
    static void take(QtMsgType level, const QString& text)
    {
        switch (level) {
        case QtDebugMsg:
            note(QStringLiteral("debug: ") + text);
            break;
        case QtInfoMsg:
            note(QStringLiteral("info: ") + text);
            break;
        case QtCriticalMsg:
            note(QStringLiteral("error: ") + text);
            break;
        default:
            note(QStringLiteral("level %1: ").arg(static_cast<int>(level)) + text);
            break;
        }
    }

    inline static Journal* current = nullptr;

    QStringList noted;
    LogListener listener;
};

/// A double that notes every call and can be told to do something on it, for instance to throw.
class Recorder
{
public:
    explicit Recorder(const QString& ownName) : recorderName(ownName) {}

    QString name() const { return recorderName; }
    /// Given the call without the double's name, after it was noted.
    std::function<void(const QString&)> onCall;

protected:
    void called(const QString& call) const
    {
        Journal::note(recorderName + u'.' + call);
        if (onCall) {
            onCall(call);
        }
    }
    ~Recorder() = default;

private:
    QString recorderName;
};

} // namespace tests
