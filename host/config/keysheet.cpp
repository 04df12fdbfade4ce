// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/config/keysheet.h"

#include "host/config/knownkeys.h"
#include "host/core/basicexception.h"
#include "input/readfile.h"
#include "input/tomlguard.h"

#include <QFileInfo>
#include <QHash>
#include <toml++/toml.h>

namespace poshost {

using namespace Qt::StringLiterals;

namespace keysheet {

namespace {

/// Far above any sheet.
constexpr qint64 largestSheet = 64LL * 1024;

using Kind = ConfigKey::Kind;
using Use = ConfigKey::Use;

/// To be thrown.
BasicException wrong(const QString& fileName, const Message& what)
{
    return BasicException(tr::Tr(u"configError"_s, Message::of("sheet", fileName, what)));
}

const QHash<QString, Kind>& kinds()
{
    static const QHash<QString, Kind> all{
        {u"text"_s, Kind::Text},   {u"path"_s, Kind::Path},     {u"address"_s, Kind::Address},
        {u"proxy"_s, Kind::Proxy}, {u"secret"_s, Kind::Secret}, {u"number"_s, Kind::Number}};
    return all;
}

/// Of a plug-in no more is asked: what another one's sheet names beyond these is for other hosts.
Use useNamed(const QString& name)
{
    return name == "server"_L1       ? Use::ServerAddress
           : name == "timeout"_L1    ? Use::Timeout
           : name == "credential"_L1 ? Use::Credential
                                     : Use::None;
}

/// One key of a sheet.
class KeyReader
{
public:
    KeyReader(const QString& file, const toml::table& content, const QString& ofTable)
        : fileName(file), source(content), table(ofTable)
    {}

    ConfigKey read() const
    {
        ConfigKey key;
        key.table = table;
        key.key = needed("name");
        key.about = needed("about");
        key.sample = needed("sample");
        const QString type = needed("type");
        if (!kinds().contains(type)) {
            throw wrong(fileName, Message::of("sheet.type", line(), type));
        }
        key.kind = kinds().value(type);
        key.without = text("without");
        key.unit = text("unit");
        key.minimum = source["minimum"].value_or(key.minimum);
        key.isRequired = source["required"].value_or(false);
        key.mayBeEmpty = source["mayBeEmpty"].value_or(false);
        key.use = useNamed(text("use"));
        if (const auto number = source["default"].value_exact<int64_t>()) {
            key.defaultValue = static_cast<int>(*number);
        } else if (source["default"].is_string()) {
            key.defaultValue = text("default");
        }
        return key;
    }

private:
    qint64 line() const { return source.source().begin.line; }

    QString text(const char* field) const
    {
        return QString::fromStdString(source[field].value_or(std::string()));
    }

    QString needed(const char* field) const
    {
        const QString value = text(field);
        if (value.isEmpty()) {
            throw wrong(fileName, Message::of("sheet.missing", line(), QString::fromLatin1(field)));
        }
        return value;
    }

    const QString fileName;
    const toml::table& source;
    const QString table;
};

toml::table parse(const QString& fileName)
{
    try {
        return input::parseToml(input::readFile(fileName, largestSheet));
    } catch (const input::FileError& error) {
        throw wrong(fileName, error.kind() == input::FileError::Kind::Unreadable
                                  ? Message::of("sheet.unreadable", error.reason())
                                  : Message::of("sheet.notRegular", largestSheet));
    } catch (const input::TomlRefused& error) {
        throw wrong(fileName, Message::of("sheet.tooDeep", error.line(), input::maximumTomlLevels));
    } catch (const toml::parse_error& error) {
        throw wrong(fileName, Message::of("sheet.syntax", error.source().begin.line));
    }
}

} // namespace

QString owner()
{
    return u"plug-in"_s;
}

QString fileOf(const QString& pluginFile)
{
    if (pluginFile.isEmpty()) {
        return {};
    }
    for (const QString& file : {pluginFile, QFileInfo(pluginFile).canonicalFilePath()}) {
        const QFileInfo plugin(file);
        const QString sheet =
            plugin.absolutePath() + u'/' + plugin.completeBaseName() + u".keys.toml"_s;
        if (!file.isEmpty() && QFileInfo::exists(sheet)) {
            return sheet;
        }
    }
    return {};
}

QList<ConfigKey> read(const QString& fileName)
{
    const toml::table root = parse(fileName);
    const QString table = QString::fromStdString(root["table"].value_or(std::string()));
    const toml::array* const entries = root["key"].as_array();
    if (table.isEmpty() || entries == nullptr) {
        throw wrong(fileName, Message::of("sheet.tables"));
    }
    QList<ConfigKey> keys;
    for (const toml::node& entry : *entries) {
        const toml::table* const content = entry.as_table();
        if (content == nullptr) {
            throw wrong(fileName, Message::of("sheet.tables"));
        }
        keys.append(KeyReader(fileName, *content, table).read());
    }
    return keys;
}

void registerPlugin(const QString& pluginFile)
{
    knownkeys::registerKeys(owner(), {});
    const QString sheet = fileOf(pluginFile);
    if (sheet.isEmpty()) {
        return;
    }
    const QList<ConfigKey> keys = read(sheet);
    if (!keys.isEmpty() && knownkeys::tables().contains(keys.first().table)) {
        throw wrong(sheet, Message::of("sheet.taken", keys.first().table));
    }
    knownkeys::registerKeys(owner(), keys);
}

} // namespace keysheet

} // namespace poshost
