// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/configchecks.h"

#include "host/config/knownkeys.h"
#include "host/http/serveraddress.h"
#include "till/doctor/keylines.h"
#include "till/doctor/report.h"
#include "till/doctor/subject.h"
#include "till/reason.h"
#include "till/text.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

using Kind = ConfigFinding::Kind;

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

/// For whoever has to see how a line is written.
QString lineAsItShouldBe()
{
    const auto own = poshost::knownkeys::find(poshost::ConfigKey::Use::Credential);
    const auto key = own ? own : poshost::knownkeys::find(poshost::ConfigKey::Use::Database);
    return key ? keylines::sampleLine(*key) : QString();
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
    return Finding::fails(said(wrong->text), wrong->kind == Kind::Unreadable
                                                 ? u"ls -lL %1"_s.arg(wrong->file)
                                                 : lineAsItShouldBe());
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
            texts.append(said(finding.text));
        }
    }
    if (texts.isEmpty()) {
        return Finding::ok(Text::tr("all tables and keys are known"));
    }
    return Finding::warning(texts.join(u"; "_s),
                            Text::tr("remove the line, or write the name that is known"));
}

QString shownValue(const poshost::ConfigKey& key, const Config& config)
{
    const QString name = key.name();
    if (key.kind == poshost::ConfigKey::Kind::Secret) {
        return Text::tr("set, not shown");
    }
    if (key.kind == poshost::ConfigKey::Kind::Number) {
        return QString::number(config.getInt(name, 0));
    }
    const QString value = config.getString(name, QString());
    switch (key.kind) {
    case poshost::ConfigKey::Kind::Address:
        return poshost::serveraddress::shown(value);
    case poshost::ConfigKey::Kind::Proxy:
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

Finding lookAtValue(const poshost::ConfigKey& key, const Subject& subject, const QString& mend)
{
    const Config& config = *subject.config;
    const QString name = key.name();
    if (!config.contains(name)) {
        return key.isRequired ? Finding::fails(Text::tr("not set"), mend)
                              : Finding::ok(keylines::notSet(key));
    }
    const bool isEmpty =
        key.kind != poshost::ConfigKey::Kind::Number && config.getString(name, QString()).isEmpty();
    if (isEmpty) {
        return key.mayBeEmpty ? Finding::ok(Text::tr("empty"))
                              : Finding::fails(Text::tr("empty"), mend);
    }
    if (name == "http:caFile"_L1) {
        return lookAtCertificates(config.getString(name, QString()), mend);
    }
    return Finding::ok(shownValue(key, config));
}

Finding lookAtKey(const poshost::ConfigKey& key, const Subject& subject)
{
    const QString mend = keylines::sampleLine(key);
    for (const ConfigFinding& finding : subject.findings) {
        if (finding.kind == Kind::WrongValue && finding.table == key.table &&
            finding.key == key.key) {
            return Finding::fails(said(finding.text), mend);
        }
    }
    const QString given = key.table != "till"_L1     ? QString()
                          : key.key == "plugin"_L1   ? subject.plugin
                          : key.key == "database"_L1 ? subject.database
                                                     : QString();
    return given.isEmpty() ? lookAtValue(key, subject, mend)
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
    for (const poshost::ConfigKey& key : poshost::knownkeys::all()) {
        report.check(keylines::idOf(key), Text::tr("Key %1.%2").arg(key.table, key.key), {file},
                     [&] { return lookAtKey(key, subject); });
    }
}

} // namespace till::doctor
