// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/recording/recorder.h"

#include "host/core/basicexception.h"
#include "host/document/document.h"
#include "till/reason.h"
#include "till/recording/documentjson.h"
#include "till/recording/record.h"
#include "till/recording/valuejson.h"
#include "till/text.h"

#include <QDateTime>
#include <QLoggingCategory>

using namespace Qt::StringLiterals;

namespace till {
namespace {

Q_LOGGING_CATEGORY(logRecording, "poshost.recording", QtInfoMsg)

QString presentTime()
{
    const QDateTime now = QDateTime::currentDateTime();
    return now.toOffsetFromUtc(now.offsetFromUtc()).toString(Qt::ISODateWithMs);
}

void warnOnce(const std::exception& error)
{
    static bool warned = false;
    if (!warned) {
        warned = true;
        qCWarning(logRecording).noquote()
            << Text::tr("The recording has a gap (%1); the sale is not concerned.")
                   .arg(reasonOf(error));
    }
}

} // namespace

Recorder::Recorder(RecordTarget& recordTarget, const QJsonObject& recordHeader)
    : target(recordTarget), header(recordHeader), owner(std::this_thread::get_id()),
      texts(recordTarget)
{}

void Recorder::guarded(const std::function<void()>& step)
{
    try {
        step();
    } catch (const std::exception& error) {
        sound = false;
        warnOnce(error);
    }
}

void Recorder::noteConfig(const QString& key, const QJsonValue& value)
{
    if (isOwnThread() && inServices == 0 && config.value(key) != value) {
        config.insert(key, value);
        newConfig.insert(key, value);
    }
}

void Recorder::begin(const QString& name, const Given& given)
{
    if (given.document.isNull() || inCall) {
        return;
    }
    guarded([&] {
        if (document.toStrongRef() != given.document) {
            beginRecord(given.document);
        }
        if (!sound) {
            return;
        }
        events.take();
        card = given.card;
        call = {{u"call"_s, name}, {u"at"_s, presentTime()}};
        if (!given.arguments.isEmpty()) {
            call.insert(u"arguments"_s, given.arguments);
        }
        if (!card.isNull()) {
            call.insert(u"card"_s, documentjson::ofCard(*card));
        }
        call.insert(u"before"_s, keepDocument());
    });
    inCall = true;
    clock.start();
}

void Recorder::beginRecord(const QSharedPointer<AbstractDocument>& begun)
{
    document = begun;
    documents = 0;
    lastDocument = {};
    texts.forget();
    newConfig = {};
    sound = true;
    QJsonObject first = header;
    first.insert(u"format"_s, u"orva-till recording"_s);
    first.insert(u"version"_s, Record::version);
    first.insert(u"started"_s, presentTime());
    first.insert(u"config"_s, config);
    target.begin(first);
}

/// Writes the document down, unless the last one written is the same. @return its index
int Recorder::keepDocument()
{
    const auto present = document.toStrongRef().dynamicCast<Document>();
    const QJsonObject changed = present.isNull()
                                    ? QJsonObject()
                                    : lastDocument.changes(*present, [this](const auto& value) {
                                          return texts.ofVariant(value);
                                      });
    if (documents > 0 && changed.isEmpty()) {
        return documents - 1;
    }
    QJsonObject line{{u"document"_s, documents}};
    if (documents == 0) {
        line.insert(u"content"_s, changed);
    } else {
        line.insert(u"from"_s, documents - 1);
        line.insert(u"changed"_s, changed);
    }
    target.add(line);
    return documents++;
}

void Recorder::end(const std::function<QJsonValue()>& result)
{
    guarded([&] {
        if (inCall && sound) {
            finish(u"result"_s, result());
        }
    });
    inCall = false;
}

void Recorder::fail(const std::exception* error)
{
    guarded([&] {
        if (inCall && sound) {
            finish(u"thrown"_s, describe(error));
        }
    });
    inCall = false;
}

void Recorder::finish(const QString& outcome, const QJsonValue& value)
{
    call.insert(u"milliseconds"_s, valuejson::ofElapsed(clock));
    writeNewConfig();
    call.insert(u"events"_s, events.take());
    call.insert(outcome, value);
    if (!card.isNull()) {
        call.insert(u"cardAfter"_s, documentjson::ofCard(*card));
    }
    call.insert(u"after"_s, keepDocument());
    target.add(call);
}

void Recorder::writeNewConfig()
{
    if (!newConfig.isEmpty()) {
        target.add({{u"config"_s, newConfig}});
        newConfig = {};
    }
}

bool Recorder::isNoting() const
{
    return isOwnThread() && inCall && sound && inServices == 0;
}

void Recorder::note(const std::function<QJsonObject()>& event)
{
    if (isNoting()) {
        guarded([&] { events.add(event()); });
    }
}

void Recorder::noteReading(const QDateTime& time)
{
    if (isNoting()) {
        guarded([&] { events.addReading(time); });
    }
}

QJsonObject Recorder::describe(const std::exception* error)
{
    if (const auto* known = dynamic_cast<const BasicException*>(error)) {
        return {{u"id"_s, known->tr().id()}, {u"text"_s, known->tr().ru()}};
    }
    return {{u"what"_s, error == nullptr ? QString() : QString::fromUtf8(error->what())}};
}

Recorder::InService::InService(Recorder& owner) : recorder(owner.isOwnThread() ? &owner : nullptr)
{
    if (recorder != nullptr) {
        ++recorder->inServices;
    }
}

Recorder::InService::~InService()
{
    if (recorder != nullptr) {
        --recorder->inServices;
    }
}

} // namespace till
