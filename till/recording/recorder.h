// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/abstractdocument.h"
#include "till/recording/recordeddocument.h"
#include "till/recording/recordedevents.h"
#include "till/recording/recordedtexts.h"
#include "till/recording/recordtarget.h"

#include <QElapsedTimer>
#include <QJsonObject>
#include <QSharedPointer>
#include <QString>
#include <QWeakPointer>

#include <functional>
#include <thread>

class DocumentCardRecord;

namespace till {

/// Writes down what the host and a plug-in say to each other. Whatever goes wrong here stays here:
/// nothing is thrown, the sale goes on, and the first failure is logged, once for the process. The
/// rest of that record is then missing; the next check begins another one.
///
/// begin, end and fail belong to the thread that made the recorder; note and isNoting may be called
/// from any, but only that thread's calls are taken for the plug-in's.
class Recorder
{
public:
    /// What a call is given.
    struct Given
    {
        QSharedPointer<AbstractDocument> document;
        QSharedPointer<DocumentCardRecord> card;
        QJsonObject arguments;
    };

    /// @param recordTarget must live longer
    /// @param recordHeader the first line of every record
    Recorder(RecordTarget& recordTarget, const QJsonObject& recordHeader);

    /// A value of the configuration that was asked for.
    void noteConfig(const QString& key, const QJsonValue& value);
    /// A call of the host into the plug-in begins. The first one on another document begins a
    /// record; one without a document is not recorded.
    void begin(const QString& call, const Given& given);
    /// The call returned. @param result what it returned, made only where it is needed
    void end(const std::function<QJsonValue()>& result);
    /// The call threw. @param error null for what is no std::exception
    void fail(const std::exception* error);

    /// Whether this is the thread on which the plug-in works.
    bool isOwnThread() const { return std::this_thread::get_id() == owner; }
    /// Whether the plug-in is at work on this thread, and not a service that it uses.
    bool isNoting() const;
    /// Something that the plug-in asked for. @param event made only where it is needed
    void note(const std::function<QJsonObject()>& event);
    /// A reading of the clock that the plug-in asked for.
    void noteReading(const QDateTime& time);
    /// What stands for a value of an event, which may be a long text. Only while an event is made.
    QJsonValue ofVariant(const QVariant& value) { return texts.ofVariant(value); }
    QJsonValue ofBytes(const QByteArray& bytes) { return texts.ofBytes(bytes); }

    /// A service of the host is at work: what it does is not the plug-in's doing.
    class InService
    {
    public:
        explicit InService(Recorder& recorder);
        ~InService();
        InService(const InService&) = delete;
        InService& operator=(const InService&) = delete;

    private:
        Recorder* recorder;
    };

    /// What is recorded of an exception.
    static QJsonObject describe(const std::exception* error);

private:
    void guarded(const std::function<void()>& step);
    void beginRecord(const QSharedPointer<AbstractDocument>& document);
    int keepDocument();
    void finish(const QString& outcome, const QJsonValue& value);
    void writeNewConfig();

    RecordTarget& target;
    const QJsonObject header;
    const std::thread::id owner;
    QJsonObject config;
    QJsonObject newConfig;

    QWeakPointer<AbstractDocument> document;
    /// Whether the present record can be gone on with.
    bool sound = false;
    RecordedTexts texts;
    RecordedDocument lastDocument;
    int documents = 0;

    bool inCall = false;
    int inServices = 0;
    QJsonObject call;
    RecordedEvents events;
    QSharedPointer<DocumentCardRecord> card;
    QElapsedTimer clock;
};

} // namespace till
