// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/config/configreader_p.h"

#include "host/config/keysheet.h"
#include "host/config/knownkeys.h"
#include "host/config/secretfile_p.h"
#include "host/http/serveraddress.h"
#include "input/nearestname.h"
#include "input/readfile.h"
#include "input/tomlguard.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>
#include <limits>
#include <optional>
#include <toml++/toml.h>

namespace poshost {

using namespace Qt::StringLiterals;

namespace {

using Kind = ConfigFinding::Kind;

QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

Message typeName(const toml::node& node)
{
    switch (node.type()) {
    case toml::node_type::string:
        return Message::of("toml.text");
    case toml::node_type::integer:
        return Message::of("toml.integer");
    case toml::node_type::floating_point:
        return Message::of("toml.fraction");
    case toml::node_type::boolean:
        return Message::of("toml.boolean");
    case toml::node_type::array:
        return Message::of("toml.list");
    case toml::node_type::table:
        return Message::of("toml.table");
    default:
        return Message::of("toml.time");
    }
}

/// Null for what no key can hold: lists, tables, dates.
QVariant valueOf(const toml::node& node)
{
    if (const auto text = node.value_exact<std::string>()) {
        return toQString(*text);
    }
    if (const auto number = node.value_exact<int64_t>()) {
        return QVariant::fromValue(static_cast<qlonglong>(*number));
    }
    if (const auto number = node.value_exact<double>()) {
        return *number;
    }
    if (const auto truth = node.value_exact<bool>()) {
        return *truth;
    }
    return {};
}

/// Turns the parsed file into values and findings.
class TableReader
{
public:
    TableReader(ConfigReader& owner, const QString& file) : target(owner), fileName(file) {}

    void read(const toml::table& root)
    {
        for (const auto& [key, node] : root) {
            const QString table = toQString(key.str());
            const bool known = knownkeys::tables().contains(table);
            if (const toml::table* content = node.as_table()) {
                if (!known) {
                    warnOfTable(key, table);
                }
                readTable(table, known, *content);
            } else if (known) {
                fail(node.source(), table, {},
                     Message::of("config.noTable", table, typeName(node)));
            } else {
                warn(key, {}, table, Message::of("config.outside", table), {});
            }
        }
        if (namesSecret) {
            reportRights(fileName);
        }
    }

private:
    void readTable(const QString& table, bool tableIsKnown, const toml::table& content)
    {
        for (const auto& [tomlKey, node] : content) {
            const QString key = toQString(tomlKey.str());
            const std::optional<ConfigKey> known = knownkeys::find(table, key);
            if (!known && tableIsKnown) {
                warn(tomlKey, table, key, Message::of("config.unknownKey", table, key),
                     input::nearestName(key, knownkeys::keysOf(table)));
            }
            const QVariant value = known ? checked(*known, node) : valueOf(node);
            if (value.isValid()) {
                target.values.insert(table + u':' + key, value);
            }
        }
    }

    /// The value of a known key; invalid, and a finding, when it is not one that it may hold.
    QVariant checked(const ConfigKey& known, const toml::node& node)
    {
        if (known.kind == ConfigKey::Kind::Number) {
            return number(known, node);
        }
        const QVariant value = valueOf(node);
        if (known.kind == ConfigKey::Kind::Secret) {
            if (const toml::table* table = node.as_table()) {
                return secretIn(*table, known);
            }
            namesSecret = namesSecret || !value.toString().isEmpty();
        }
        if (!node.is_string()) {
            return fail(node.source(), known.table, known.key,
                        Message::of("config.noText", typeName(node)));
        }
        if (known.kind == ConfigKey::Kind::Address) {
            const Message complaint = serveraddress::complaintAbout(value.toString());
            return complaint.isEmpty() ? value
                                       : fail(node.source(), known.table, known.key, complaint);
        }
        return known.kind == ConfigKey::Kind::Path ? absolutePath(value.toString()) : value;
    }

    QVariant number(const ConfigKey& known, const toml::node& node)
    {
        if (!node.is_integer()) {
            return fail(node.source(), known.table, known.key,
                        Message::of("config.noNumber", typeName(node)));
        }
        const QVariant value = valueOf(node);
        if (value.toLongLong() < known.minimum ||
            value.toLongLong() > std::numeric_limits<int>::max()) {
            return fail(
                node.source(), known.table, known.key,
                Message::of("config.range", known.minimum, std::numeric_limits<int>::max()));
        }
        return value;
    }

    QVariant secretIn(const toml::table& table, const ConfigKey& known)
    {
        const std::optional<std::string> file = table["file"].value_exact<std::string>();
        if (!file || table.size() != 1) {
            return fail(table.source(), known.table, known.key, Message::of("config.noSecret"));
        }
        const QString path = absolutePath(toQString(*file));
        try {
            const QString secret = secretfile::read(path);
            reportRights(path);
            return secret;
        } catch (const secretfile::Error& error) {
            return fail(table.source(), known.table, known.key,
                        Message::of("config.secret", error.message()));
        }
    }

    void reportRights(const QString& file)
    {
        const Message complaint = secretfile::complaintAboutRights(file);
        const bool told = std::any_of(
            target.findings.cbegin(), target.findings.cend(), [&](const ConfigFinding& finding) {
                return finding.kind == Kind::OpenRights && finding.file == file;
            });
        if (!complaint.isEmpty() && !told) {
            target.findings.append({Kind::OpenRights, {}, {}, file, complaint});
        }
    }

    QString absolutePath(const QString& path) const
    {
        return path.isEmpty() ? path : QFileInfo(fileName).absoluteDir().absoluteFilePath(path);
    }

    /// A table that nobody has registered may be that of a plug-in without a key sheet, unless it
    /// looks like another one.
    void warnOfTable(const toml::key& where, const QString& table)
    {
        const QString nearest = input::nearestName(table, knownkeys::tables());
        if (!nearest.isEmpty() || !knownkeys::of(keysheet::owner()).isEmpty()) {
            warn(where, table, {}, Message::of("config.unknownTable", table), nearest);
        }
    }

    void warn(const toml::key& where, const QString& table, const QString& key, const Message& what,
              const QString& nearest)
    {
        const qint64 line = where.source().begin.line;
        target.findings.append(
            {Kind::UnknownName, table, key, fileName,
             nearest.isEmpty()
                 ? Message::of("config.unused", fileName, line, what)
                 : Message::of("config.unusedNearest", fileName, line, what, nearest)});
    }

    /// @return no value
    QVariant fail(const toml::source_region& where, const QString& table, const QString& key,
                  const Message& what)
    {
        const QString name = key.isEmpty() ? table : table + u'.' + key;
        target.findings.append(
            {Kind::WrongValue, table, key, fileName,
             Message::of("config.value", fileName, where.begin.line, name, what)});
        return {};
    }

    ConfigReader& target;
    const QString fileName;
    bool namesSecret = false; ///< in itself, not in a file of its own
};

/// The key that an unreadable line is about, empty when it names none. What is no bare key may be
/// a part of a value.
QString keyInLine(const QByteArray& content, qsizetype line)
{
    static const QRegularExpression key(u"^\\s*([A-Za-z0-9_.-]+)\\s*="_s);
    return key.match(QString::fromUtf8(content.split('\n').value(line - 1))).captured(1);
}

/// Where the text stops being TOML. The parser's words stay out: they may quote the value, which
/// may be a password.
Message syntaxError(const QString& fileName, const QByteArray& content,
                    const toml::source_position& where)
{
    const QString key = keyInLine(content, where.line);
    return key.isEmpty()
               ? Message::of("config.syntax", fileName, where.line, where.column)
               : Message::of("config.syntaxOfKey", fileName, where.line, where.column, key);
}

/// Why there is no content.
Message unreadable(const QString& fileName, const input::FileError& error)
{
    switch (error.kind()) {
    case input::FileError::Kind::NotRegular:
        return Message::of("config.notRegular", fileName);
    case input::FileError::Kind::TooLarge:
        return Message::of("config.tooLarge", fileName, input::maximumTomlBytes);
    case input::FileError::Kind::Unreadable:
        break;
    }
    return Message::of("config.unreadable", fileName, error.reason());
}

/// The file was read, so that only its levels can be refused.
Message tooDeep(const QString& fileName, const input::TomlRefused& error)
{
    return Message::of("config.tooDeep", fileName, error.line(), input::maximumTomlLevels);
}

} // namespace

ConfigReader::ConfigReader(const QString& fileName)
{
    QByteArray content;
    try {
        content = input::readFile(fileName, input::maximumTomlBytes);
        TableReader(*this, fileName).read(input::parseToml(content));
    } catch (const input::FileError& error) {
        findings.append({Kind::Unreadable, {}, {}, fileName, unreadable(fileName, error)});
    } catch (const input::TomlRefused& error) {
        findings.append({Kind::Syntax, {}, {}, fileName, tooDeep(fileName, error)});
    } catch (const toml::parse_error& error) {
        findings.append(
            {Kind::Syntax, {}, {}, fileName, syntaxError(fileName, content, error.source().begin)});
    }
}

} // namespace poshost
