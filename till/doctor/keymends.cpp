// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/keymends.h"

#include "host/config/knownkeys.h"
#include "host/http/serveraddress.h"
#include "till/doctor/keylines.h"
#include "till/doctor/settingsfile.h"
#include "till/doctor/shell.h"
#include "till/doctor/subject.h"
#include "till/text.h"

#include <QFileInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

using Use = poshost::ConfigKey::Use;

/// The number that was meant where it stands in quotes, otherwise the one that holds without it.
Mend ofNumber(const poshost::ConfigKey& key, const SettingsFile& file)
{
    bool isNumber = false;
    const int meant = file.textValue(key).toInt(&isNumber);
    if (isNumber && meant >= key.minimum) {
        return file.set(key, QString::number(meant)).safe();
    }
    return file.set(key, key.defaultValue.isValid() ? key.defaultValue.toString() : key.sample)
        .safe();
}

/// An address without its beginning gets one: on this machine http, elsewhere https.
Mend ofAddress(const poshost::ConfigKey& key, const SettingsFile& file)
{
    const QString text = file.textValue(key);
    if (!text.isEmpty() && !text.contains("://"_L1)) {
        for (const QString& scheme : {u"https://"_s, u"http://"_s}) {
            const QString address = scheme + text;
            const bool fits = keylines::isHere(QUrl(address).host()) == (scheme == "http://"_L1);
            if (fits && poshost::serveraddress::complaintAbout(address).isEmpty()) {
                return file.set(key, SettingsFile::quoted(address));
            }
        }
    }
    return keymends::askOperator(key, file);
}

Mend ofSecret(const poshost::ConfigKey& key, const SettingsFile& file)
{
    const QString path = file.secretFile(key);
    const QFileInfo information(path);
    if (path.isEmpty()) {
        return file.quote(key).safe();
    }
    if (information.isFile() && !information.isReadable() && shell::isOwn(path)) {
        return Mend::command(shell::chmod(u"u+r"_s, {path})).safe();
    }
    return Mend::words(Text::tr("put the secret into %1, on a line of its own").arg(path));
}

Mend ofPath(const poshost::ConfigKey& key, const Subject& subject, const SettingsFile& file)
{
    return key.isRequired ? keymends::ofMissing(key, subject, file)
                          : file.leaveOut(key.table, key.key);
}

} // namespace

Mend keymends::askOperator(const poshost::ConfigKey& key, const SettingsFile& file)
{
    return Mend::words(
        Text::tr("ask whoever runs the loyalty server for the right value of %1 under [%2] in %3")
            .arg(key.key, key.table, file.name()));
}

Mend keymends::ofPlugin(const Subject& subject, const QString& otherwise)
{
    const auto key = poshost::knownkeys::find(u"till"_s, u"plugin"_s);
    const bool isOther = !subject.installed.isEmpty() &&
                         QFileInfo(subject.installed) != QFileInfo(subject.pluginFile());
    return key && isOther && subject.plugin.isEmpty()
               ? SettingsFile(subject.configFile).set(*key, SettingsFile::quoted(subject.installed))
               : Mend::words(otherwise);
}

Mend keymends::ofMissing(const poshost::ConfigKey& key, const Subject& subject,
                         const SettingsFile& file)
{
    if (key.use == Use::Database) {
        return file.set(key, key.sample);
    }
    if (key.table == "till"_L1 && key.key == "plugin"_L1) {
        return ofPlugin(subject, Text::tr("install a loyalty plug-in, or write its file as plugin "
                                          "under [till] in %1")
                                     .arg(file.name()));
    }
    return askOperator(key, file);
}

Mend keymends::ofWrongValue(const poshost::ConfigKey& key, const Subject& subject,
                            const SettingsFile& file)
{
    switch (key.kind) {
    case poshost::ConfigKey::Kind::Number:
        return ofNumber(key, file);
    case poshost::ConfigKey::Kind::Address:
        return ofAddress(key, file);
    case poshost::ConfigKey::Kind::Secret:
        return ofSecret(key, file);
    case poshost::ConfigKey::Kind::Path:
        return ofPath(key, subject, file);
    case poshost::ConfigKey::Kind::Proxy:
        return file.leaveOut(key.table, key.key);
    case poshost::ConfigKey::Kind::Text:
        break;
    }
    return file.quote(key).safe();
}

} // namespace till::doctor
