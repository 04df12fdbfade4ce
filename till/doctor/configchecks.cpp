// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/configchecks.h"

#include "host/config/knownkeys.h"
#include "host/http/serveraddress.h"
#include "input/nearestname.h"
#include "till/doctor/keylines.h"
#include "till/doctor/keymends.h"
#include "till/doctor/report.h"
#include "till/doctor/settingsfile.h"
#include "till/doctor/settingsyntax.h"
#include "till/doctor/shell.h"
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

Finding absent(const Subject& subject)
{
    return Finding::fails(Text::tr("%1 is not there").arg(subject.configFile),
                          Mend::command(subject.command({u"init"_s})));
}

Finding unreadable(const ConfigFinding& finding, const Subject& subject)
{
    const QFileInfo information(finding.file);
    const QString path = information.absoluteFilePath();
    if (!information.isFile()) {
        return Finding::fails(said(finding.text),
                              Mend::words(Text::tr("name the file of the settings with --config")));
    }
    if (!information.isReadable() && shell::isOwn(path)) {
        return Finding::fails(said(finding.text),
                              Mend::command(shell::chmod(u"u+r"_s, {path})).safe());
    }
    if (!information.isReadable()) {
        return Finding::fails(said(finding.text),
                              Mend::words(Text::tr("%1 belongs to %2, and %3 may not read it: make "
                                                   "that account a member of the file's group")
                                              .arg(path, shell::ownerOf(path), shell::account())));
    }
    return Finding::fails(
        said(finding.text),
        finding.file == subject.configFile
            ? Mend::words(Text::tr("name the file of the settings with --config"))
            : Mend::words(Text::tr("install the plug-in anew, %1 belongs to it").arg(path)));
}

Finding lookAtFile(const Subject& subject)
{
    const QString& file = subject.configFile;
    if (!QFileInfo::exists(file)) {
        return absent(subject);
    }
    if (!subject.wasRead) {
        return Finding::fails(
            Text::tr("%1, or a file that it names, is not read in time").arg(file),
            Mend::words(Text::tr("name regular files on a disk of this machine")));
    }
    const ConfigFinding* const wrong = findingOf(subject, concernsFile);
    if (wrong == nullptr) {
        return Finding::ok(file);
    }
    if (wrong->kind == Kind::Unreadable) {
        return unreadable(*wrong, subject);
    }
    if (wrong->kind == Kind::WrongValue) {
        return Finding::fails(said(wrong->text),
                              SettingsFile(subject.configFile).leaveOut(QString(), wrong->table));
    }
    return lookAtSyntax(wrong->file)
        .value_or(Finding::fails(said(wrong->text),
                                 Mend::words(Text::tr("take out what is nested so deeply"))));
}

Finding lookAtRights(const Subject& subject)
{
    QStringList open;
    for (const ConfigFinding& finding : subject.findings) {
        if (finding.kind == Kind::OpenRights) {
            open.append(QFileInfo(finding.file).absoluteFilePath());
        }
    }
    if (open.isEmpty()) {
        return Finding::ok(Text::tr("no secret can be read by others"));
    }
    // the group may have to read: that of the service
    return Finding::fails(Text::tr("others may read what is secret: %1").arg(open.join(u", "_s)),
                          Mend::command(shell::chmod(u"g-w,o="_s, open)).safe());
}

/// Remarks in the place of what nobody reads; where a known name is near, that name.
Mend mendOfNames(const QList<ConfigFinding>& unknown, const SettingsFile& file)
{
    using poshost::knownkeys::keysOf;
    using poshost::knownkeys::tables;
    QStringList scripts;
    bool isSafe = true;
    for (const ConfigFinding& finding : unknown) {
        const QString near = finding.key.isEmpty()
                                 ? input::nearestName(finding.table, tables())
                                 : input::nearestName(finding.key, keysOf(finding.table));
        const auto renaming =
            near.isEmpty() ? std::nullopt : file.renaming(finding.table, finding.key, near);
        const auto leaving = file.leavingOut(finding.table, finding.key);
        if (!renaming && !leaving) {
            return Mend::words(Text::tr("take the lines out, or write the names that are known"));
        }
        scripts += renaming ? QStringList{*renaming} : *leaving;
        isSafe = isSafe && !renaming;
    }
    const Mend mend = Mend::command(shell::sed(scripts, file.name()), file.name());
    return isSafe ? mend.safe() : mend;
}

Finding lookAtNames(const Subject& subject, const SettingsFile& file)
{
    QStringList texts;
    QList<ConfigFinding> unknown;
    for (const ConfigFinding& finding : subject.findings) {
        if (finding.kind == Kind::UnknownName) {
            texts.append(said(finding.text));
            unknown.append(finding);
        }
    }
    return texts.isEmpty() ? Finding::ok(Text::tr("all tables and keys are known"))
                           : Finding::warning(texts.join(u"; "_s), mendOfNames(unknown, file));
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
Finding lookAtCertificates(const QString& fileName)
{
    const Mend mend = Mend::words(
        Text::tr("name the file with the certificates to trust as caFile under [http]; without one "
                 "the system's are trusted"));
    QFile file(fileName);
    if (!QFileInfo(fileName).isFile() || !file.open(QIODevice::ReadOnly)) {
        return Finding::fails(Text::tr("%1 cannot be read").arg(fileName), mend);
    }
    if (!file.readAll().contains("-----BEGIN ")) {
        return Finding::fails(Text::tr("%1 holds no certificate in PEM").arg(fileName), mend);
    }
    return Finding::ok(fileName);
}

/// The till's own choice where the configuration says nothing.
Finding lookAtAbsent(const poshost::ConfigKey& key, const Subject& subject,
                     const SettingsFile& file)
{
    const bool isPlugin = key.table == "till"_L1 && key.key == "plugin"_L1;
    if (isPlugin && !subject.installed.isEmpty()) {
        return Finding::ok(Text::tr("not set: %1, which is installed").arg(subject.installed));
    }
    return key.isRequired
               ? Finding::fails(Text::tr("not set"), keymends::ofMissing(key, subject, file))
               : Finding::ok(keylines::notSet(key));
}

Finding lookAtValue(const poshost::ConfigKey& key, const Subject& subject, const SettingsFile& file)
{
    const Config& config = *subject.config;
    const QString name = key.name();
    if (!config.contains(name)) {
        return lookAtAbsent(key, subject, file);
    }
    const bool isEmpty =
        key.kind != poshost::ConfigKey::Kind::Number && config.getString(name, QString()).isEmpty();
    if (isEmpty) {
        return key.mayBeEmpty
                   ? Finding::ok(Text::tr("empty"))
                   : Finding::fails(Text::tr("empty"), keymends::ofMissing(key, subject, file));
    }
    if (name == "http:caFile"_L1) {
        return lookAtCertificates(config.getString(name, QString()));
    }
    return Finding::ok(shownValue(key, config));
}

Finding lookAtKey(const poshost::ConfigKey& key, const Subject& subject, const SettingsFile& file)
{
    for (const ConfigFinding& finding : subject.findings) {
        if (finding.kind == Kind::WrongValue && finding.table == key.table &&
            finding.key == key.key) {
            return Finding::fails(said(finding.text), keymends::ofWrongValue(key, subject, file));
        }
    }
    const QString given = key.table != "till"_L1     ? QString()
                          : key.key == "plugin"_L1   ? subject.plugin
                          : key.key == "database"_L1 ? subject.database
                                                     : QString();
    return given.isEmpty() ? lookAtValue(key, subject, file)
                           : Finding::ok(Text::tr("%1, from the command line").arg(given));
}

} // namespace

void checkConfig(Report& report, const Subject& subject)
{
    const QString file = u"config.file"_s;
    const SettingsFile settings(subject.configFile);
    report.check(file, Text::tr("Configuration file"), {}, [&] { return lookAtFile(subject); });
    report.check(u"config.rights"_s, Text::tr("Rights on secrets"), {file},
                 [&] { return lookAtRights(subject); });
    report.check(u"config.names"_s, Text::tr("Names in the configuration"), {file},
                 [&] { return lookAtNames(subject, settings); });
    for (const poshost::ConfigKey& key : poshost::knownkeys::all()) {
        report.check(keylines::idOf(key), Text::tr("Key %1.%2").arg(key.table, key.key), {file},
                     [&] { return lookAtKey(key, subject, settings); });
    }
}

} // namespace till::doctor
