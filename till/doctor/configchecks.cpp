// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/configchecks.h"

#include "host/config/knownkeys.h"
#include "host/http/serveraddress.h"
#include "till/doctor/report.h"
#include "till/doctor/subject.h"
#include "till/text.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

using Kind = ConfigFinding::Kind;

/// What the list of known keys does not say about a key.
struct KeySheet
{
    QString sample;               ///< a value as it may stand in the file
    bool isRequired = false;      ///< the till or the plug-in cannot work without it
    bool mayBeEmpty = false;      ///< if it is written out
    const char* absent = nullptr; ///< what holds without it
};

KeySheet sheetOf(const QString& name)
{
    static const QHash<QString, KeySheet> sheets{
        {u"Orva.serverUrl"_s, {u"\"https://loyalty.example.com/\""_s, true, false, nullptr}},
        {u"Orva.merchantId"_s, {u"\"1042\""_s, true, false, nullptr}},
        {u"Orva.pos"_s, {u"\"3\""_s, true, false, nullptr}},
        {u"Orva.timeout"_s,
         {u"10"_s, false, false, QT_TRANSLATE_NOOP("Till", "not set: 10 seconds")}},
        {u"Orva.user"_s, {u"\"till\""_s, true, false, nullptr}},
        {u"Orva.password"_s, {u"{ file = \"password\" }"_s, true, false, nullptr}},
        // a server without keys is told so in writing
        {u"Orva.apikey"_s, {u"{ file = \"apikey\" }"_s, true, true, nullptr}},
        {u"http.proxy"_s,
         {u"\"http://proxy.example.com:3128\""_s, false, true,
          QT_TRANSLATE_NOOP("Till", "not set: no proxy")}},
        {u"http.caFile"_s,
         {u"\"/etc/ssl/certs/ca-certificates.crt\""_s, false, true,
          QT_TRANSLATE_NOOP("Till", "not set: the system's certificates")}},
        {u"http.maxAnswerBytes"_s,
         {u"8388608"_s, false, false, QT_TRANSLATE_NOOP("Till", "not set: 8388608 bytes")}},
        {u"till.database"_s, {u"\"till.sqlite\""_s, true, false, nullptr}},
        {u"till.plugin"_s, {u"\"/usr/lib/orva/liborva.so\""_s, true, false, nullptr}},
        {u"till.name"_s, {u"\"3\""_s, false, true, QT_TRANSLATE_NOOP("Till", "not set: till")}},
        {u"queue.keepDeliveredDays"_s,
         {u"30"_s, false, false, QT_TRANSLATE_NOOP("Till", "not set: 30 days")}},
        {u"recording.folder"_s,
         {u"\"records\""_s, false, true,
          QT_TRANSLATE_NOOP("Till", "not set: nothing is recorded")}},
        {u"recording.maxMegabytes"_s,
         {u"50"_s, false, false, QT_TRANSLATE_NOOP("Till", "not set: 50 megabytes")}},
        {u"recording.maxDays"_s,
         {u"30"_s, false, false, QT_TRANSLATE_NOOP("Till", "not set: 30 days")}},
    };
    return sheets.value(name);
}

const ConfigFinding* findingOf(const Subject& subject,
                               const std::function<bool(const ConfigFinding&)>& matches)
{
    const auto found = std::find_if(subject.findings.cbegin(), subject.findings.cend(), matches);
    return found == subject.findings.cend() ? nullptr : &*found;
}

/// Whether nothing, or not a whole table, can be read.
bool concernsFile(const ConfigFinding& finding)
{
    return finding.kind == Kind::Unreadable || finding.kind == Kind::Syntax ||
           (finding.kind == Kind::WrongValue && finding.key.isEmpty());
}

Finding lookAtFile(const Subject& subject)
{
    const QString& file = subject.configFile;
    if (!QFileInfo::exists(file)) {
        return Finding::fails(Text::tr("%1 is not there").arg(file),
                              u"orva-till doctor --config /etc/orva/orva.toml"_s);
    }
    if (!subject.wasRead) {
        return Finding::fails(
            Text::tr("%1, or a file that it names, is not read in time").arg(file),
            u"ls -lL %1"_s.arg(file));
    }
    const ConfigFinding* const wrong = findingOf(subject, concernsFile);
    if (wrong == nullptr) {
        return Finding::ok(file);
    }
    return Finding::fails(wrong->text, wrong->kind == Kind::Unreadable
                                           ? u"ls -lL %1"_s.arg(file)
                                           : u"[Orva] user = \"till\""_s);
}

Finding lookAtRights(const Subject& subject)
{
    const ConfigFinding* const open = findingOf(
        subject, [](const ConfigFinding& finding) { return finding.kind == Kind::OpenRights; });
    if (open == nullptr) {
        return Finding::ok(Text::tr("no secret can be read by others"));
    }
    return Finding::fails(Text::tr("%1 holds a secret and others may read it").arg(open->file),
                          u"chmod 600 %1"_s.arg(open->file));
}

Finding lookAtNames(const Subject& subject)
{
    QStringList texts;
    for (const ConfigFinding& finding : subject.findings) {
        if (finding.kind == Kind::UnknownName) {
            texts.append(finding.text);
        }
    }
    if (texts.isEmpty()) {
        return Finding::ok(Text::tr("all tables and keys are known"));
    }
    return Finding::warning(texts.join(u"; "_s),
                            Text::tr("remove the line, or write the name that is known"));
}

QString shownValue(const poshost::KnownKey& key, const Config& config)
{
    const QString name = key.table + u':' + key.key;
    if (key.kind == poshost::KnownKey::Kind::Secret) {
        return Text::tr("set, not shown");
    }
    if (key.kind == poshost::KnownKey::Kind::Number) {
        return QString::number(config.getInt(name, 0));
    }
    const QString value = config.getString(name, QString());
    switch (key.kind) {
    case poshost::KnownKey::Kind::Address:
        return poshost::serveraddress::shown(value);
    case poshost::KnownKey::Kind::Proxy:
        return poshost::serveraddress::shownProxy(value);
    default:
        return value;
    }
}

/// The file of certificates must be one: the first secure connection would fail otherwise.
Finding lookAtCertificates(const QString& fileName, const QString& mend)
{
    QFile file(fileName);
    if (!QFileInfo(fileName).isFile() || !file.open(QIODevice::ReadOnly)) {
        return Finding::fails(Text::tr("%1 cannot be read").arg(fileName), mend);
    }
    if (!file.readAll().contains("-----BEGIN ")) {
        return Finding::fails(Text::tr("%1 holds no certificate in PEM").arg(fileName), mend);
    }
    return Finding::ok(fileName);
}

Finding lookAtValue(const poshost::KnownKey& key, const KeySheet& sheet, const Subject& subject,
                    const QString& mend)
{
    const Config& config = *subject.config;
    const QString name = key.table + u':' + key.key;
    if (!config.contains(name)) {
        return sheet.isRequired ? Finding::fails(Text::tr("not set"), mend)
                                : Finding::ok(Text::tr(sheet.absent));
    }
    const bool isEmpty =
        key.kind != poshost::KnownKey::Kind::Number && config.getString(name, QString()).isEmpty();
    if (isEmpty) {
        return sheet.mayBeEmpty ? Finding::ok(Text::tr("empty"))
                                : Finding::fails(Text::tr("empty"), mend);
    }
    if (name == "http:caFile"_L1) {
        return lookAtCertificates(config.getString(name, QString()), mend);
    }
    return Finding::ok(shownValue(key, config));
}

Finding lookAtKey(const poshost::KnownKey& key, const Subject& subject)
{
    const KeySheet sheet = sheetOf(key.table + u'.' + key.key);
    const QString mend = u"[%1] %2 = %3"_s.arg(key.table, key.key, sheet.sample);
    for (const ConfigFinding& finding : subject.findings) {
        if (finding.kind == Kind::WrongValue && finding.table == key.table &&
            finding.key == key.key) {
            return Finding::fails(finding.text, mend);
        }
    }
    const QString given = key.table != "till"_L1     ? QString()
                          : key.key == "plugin"_L1   ? subject.plugin
                          : key.key == "database"_L1 ? subject.database
                                                     : QString();
    return given.isEmpty() ? lookAtValue(key, sheet, subject, mend)
                           : Finding::ok(Text::tr("%1, from the command line").arg(given));
}

} // namespace

void checkConfig(Report& report, const Subject& subject)
{
    const QString file = u"config.file"_s;
    report.check(file, Text::tr("Configuration file"), {}, [&] { return lookAtFile(subject); });
    report.check(u"config.rights"_s, Text::tr("Rights on secrets"), {file},
                 [&] { return lookAtRights(subject); });
    report.check(u"config.names"_s, Text::tr("Names in the configuration"), {file},
                 [&] { return lookAtNames(subject); });
    for (const QString& table : poshost::knownkeys::tables()) {
        for (const QString& key : poshost::knownkeys::keysOf(table)) {
            report.check(u"config.%1.%2"_s.arg(table, key), Text::tr("Key %1.%2").arg(table, key),
                         {file},
                         [&] { return lookAtKey(*poshost::knownkeys::find(table, key), subject); });
        }
    }
}

} // namespace till::doctor
