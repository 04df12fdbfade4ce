// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/desk/pluginhost.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QJsonObject>
#include <QString>

#include <future>
#include <memory>
#include <optional>

namespace till::doctor {

/// What a library says about itself without being loaded.
struct PluginMetadata
{
    QJsonObject metadata; ///< empty: it is no plug-in
    QString error;        ///< Qt's words
};

/// How the loading of a library went.
struct PluginLoading
{
    bool loaded = false;
    QString error;          ///< Qt's words, or why nothing of it may run here
    QString missingLibrary; ///< the first library that it needs and that is not found
};

/// How the host and the plug-in got on.
struct PluginMeeting
{
    std::optional<PluginFailure::Step> failedAt;
    QString refusal;
    /// The file of Log4Qt that the plug-in logs through; empty: it logs through Qt.
    QString log4QtFile;
};

/// A question to the server through the plug-in, and what the host's HTTP client saw of it.
struct Exchange
{
    int requests = 0;   ///< that the plug-in gave to the HTTP client
    int status = 0;     ///< of the answer, 0 without one
    bool whole = false; ///< an answer came, to its end
    QString transport;  ///< what went wrong on the way, for people
    QString date;       ///< the answer's header
    QDateTime answeredAt;
    int milliseconds = 0;
    bool accepted = false; ///< the plug-in understood the answer
    QString reason;        ///< why not
    QString words;         ///< what the server wrote to a refusal, one line
};

/// A plug-in loaded, tried and put away on a thread of its own, which has to itself what the
/// plug-in needs of the process: it is the host's thread meanwhile.
///
/// The steps follow each other; each is waited for by itself and to be called once. A step without
/// a result in time hangs, and so those behind it have none either.
class PluginVisit
{
public:
    /// @param card that the server is asked about
    /// @param limitSeconds of the question
    PluginVisit(const QString& file, const QString& card, int limitSeconds);
    /// Lets the visit end without a question unless it was decided; waits for nothing.
    ~PluginVisit();
    PluginVisit(const PluginVisit&) = delete;
    PluginVisit& operator=(const PluginVisit&) = delete;

    std::optional<PluginMetadata> metadata(const QDeadlineTimer& deadline);
    std::optional<PluginLoading> loading(const QDeadlineTimer& deadline);
    std::optional<PluginMeeting> meeting(const QDeadlineTimer& deadline);
    /// Whether the plug-in shall ask the server; once.
    void decide(bool ask);
    /// After decide(true).
    std::optional<Exchange> exchange(const QDeadlineTimer& deadline);
    /// Whether the plug-in has been put away.
    bool hasEnded(const QDeadlineTimer& deadline);
    /// Whether a step had no result in time.
    bool hangs() const { return late; }

private:
    template <typename T>
    std::optional<T> step(std::future<T>& result, const QDeadlineTimer& deadline);

    struct Course;
    std::shared_ptr<Course> course;
    bool decided = false;
    bool late = false;
};

} // namespace till::doctor
