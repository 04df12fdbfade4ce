// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/support/supportcontent.h"

#include "till/checks/cardnumber.h"
#include "till/checks/checkcodec.h"
#include "till/person/cardspelling.h"
#include "till/person/personincheck.h"
#include "till/person/personinrecord.h"
#include "till/person/personmask.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QSysInfo>

using namespace Qt::StringLiterals;

namespace till {
namespace {

/// Digits that could be a card's number, in whichever groups: in a log nobody can say of whom.
QString withoutLongNumbers(const QString& text)
{
    static const QRegularExpression number(
        u"(?:(?<=%B)|(?<![0-9A-Za-z-]))"
        "(?:[0-9]{10,}|[0-9]{4}(?:[ -][0-9]{4}){2,4}(?:[ -]?[0-9]{1,4})?)(?![0-9A-Za-z-])"_s);
    QString result;
    qsizetype from = 0;
    for (auto it = number.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        result.append(QStringView(text).sliced(from, match.capturedStart() - from));
        result.append(cardnumber::shortened(cardspelling::plain(match.captured())));
        from = match.capturedEnd();
    }
    return result.append(QStringView(text).sliced(from));
}

QJsonValue withoutLongNumbers(const QJsonValue& value)
{
    if (value.isString()) {
        return withoutLongNumbers(value.toString());
    }
    if (value.isArray()) {
        QJsonArray array = value.toArray();
        for (auto it = array.begin(); it != array.end(); ++it) {
            *it = withoutLongNumbers(QJsonValue(*it));
        }
        return array;
    }
    QJsonObject object = value.toObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        it.value() = withoutLongNumbers(QJsonValue(it.value()));
    }
    return value.isObject() ? QJsonValue(object) : value;
}

/// Lists and reports: a name could be that of a member, which stays.
QByteArray maskedJson(const QByteArray& json, const PersonMask& mask)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (document.isArray()) {
        return QJsonDocument(
                   withoutLongNumbers(mask.masked(QJsonValue(document.array()))).toArray())
            .toJson();
    }
    return QJsonDocument(withoutLongNumbers(mask.masked(QJsonValue(document.object()))).toObject())
        .toJson();
}

QJsonObject aboutArchive(bool masked)
{
    return {{u"program"_s, QStringLiteral(ORVA_VERSION)},
            {u"qt"_s, QString::fromLatin1(qVersion())},
            {u"system"_s, QSysInfo::prettyProductName()},
            {u"kernel"_s, QSysInfo::kernelVersion()},
            {u"processor"_s, QSysInfo::currentCpuArchitecture()},
            {u"made"_s, QDateTime::currentDateTime().toString(Qt::ISODate)},
            {u"masked"_s, masked}};
}

} // namespace

void SupportContent::addText(const QString& name, const QByteArray& content)
{
    texts.append({name, content});
}

void SupportContent::addLog(const QByteArray& content)
{
    logs.append(content);
}

void SupportContent::addRecord(const QByteArray& lines)
{
    records += lines;
    inRecords.add(personinrecord::of(lines));
}

void SupportContent::addPage(int record, const QByteArray& content)
{
    pages.append({u"%1/%2.html"_s.arg(supportfiles::caseFolder).arg(record), content});
}

void SupportContent::addCheck(const Check& check, const QString& confirmation)
{
    checks.insert(check.id(), {check, confirmation});
    inRecords.add(personincheck::of(check));
}

QList<TarMember> SupportContent::maskedParts() const
{
    People names = people;
    names.add(inRecords);
    constexpr qsizetype mostSought = 1000; // all long numbers go anyway
    if (names.cards.size() > mostSought) {
        names.cards = inRecords.cards;
    }
    const PersonMask mask(names);
    const auto shown = [&](const QByteArray& content) {
        return showsPeople ? content
                           : withoutLongNumbers(mask.masked(QString::fromUtf8(content))).toUtf8();
    };
    QList<TarMember> parts;
    for (const TarMember& text : texts) {
        const bool isJson = !showsPeople && text.name.endsWith(".json"_L1);
        parts.append({text.name, isJson ? maskedJson(text.content, mask) : shown(text.content)});
    }
    for (qsizetype i = 0; i < logs.size(); ++i) {
        parts.append({u"%1/%2.log"_s.arg(supportfiles::logFolder).arg(i + 1), shown(logs.at(i))});
    }
    return parts;
}

SupportArchive SupportContent::archive() const
{
    SupportArchive archive;
    archive.about = aboutArchive(!showsPeople);
    archive.members = maskedParts();
    const PersonMask mask(inRecords);
    if (!records.isEmpty()) {
        archive.members.append(
            {supportfiles::records, showsPeople ? records : personinrecord::masked(records, mask)});
    }
    archive.members += pages;
    int number = 0;
    for (const KeptCheck& kept : checks) {
        ++number;
        const Check check = showsPeople ? kept.check : personincheck::masked(kept.check, mask);
        archive.members.append({u"%1/%2.check"_s.arg(supportfiles::checkFolder).arg(number),
                                checkcodec::encode(check)});
        if (!kept.confirmation.isEmpty()) {
            const QString payload =
                showsPeople ? kept.confirmation : mask.masked(kept.confirmation);
            archive.members.append(
                {u"%1/%2.xml"_s.arg(supportfiles::messageFolder).arg(number), payload.toUtf8()});
        }
    }
    return archive;
}

} // namespace till
