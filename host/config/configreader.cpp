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

QString typeName(const toml::node& node)
{
    switch (node.type()) {
    case toml::node_type::string:
        return u"строка"_s;
    case toml::node_type::integer:
        return u"целое число"_s;
    case toml::node_type::floating_point:
        return u"дробное число"_s;
    case toml::node_type::boolean:
        return u"true или false"_s;
    case toml::node_type::array:
        return u"список"_s;
    case toml::node_type::table:
        return u"таблица"_s;
    default:
        return u"дата или время"_s;
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
                     u"ожидается таблица [%1], а здесь %2"_s.arg(table, typeName(node)));
            } else {
                warn(key, {}, table, u"ключ %1 стоит вне таблицы"_s.arg(table), {});
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
                warn(tomlKey, table, key, u"ключ %1.%2 неизвестен"_s.arg(table, key),
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
            return fail(
                node.source(), known.table, known.key,
                u"ожидается строка, а здесь %1; возьмите значение в кавычки"_s.arg(typeName(node)));
        }
        if (known.kind == ConfigKey::Kind::Address) {
            const QString complaint = serveraddress::complaintAbout(value.toString());
            return complaint.isEmpty() ? value
                                       : fail(node.source(), known.table, known.key, complaint);
        }
        return known.kind == ConfigKey::Kind::Path ? absolutePath(value.toString()) : value;
    }

    QVariant number(const ConfigKey& known, const toml::node& node)
    {
        if (!node.is_integer()) {
            return fail(node.source(), known.table, known.key,
                        u"ожидается целое число, а здесь %1"_s.arg(typeName(node)));
        }
        const QVariant value = valueOf(node);
        if (value.toLongLong() < known.minimum ||
            value.toLongLong() > std::numeric_limits<int>::max()) {
            return fail(node.source(), known.table, known.key,
                        u"ожидается целое число от %1 до %2"_s.arg(known.minimum)
                            .arg(std::numeric_limits<int>::max()));
        }
        return value;
    }

    QVariant secretIn(const toml::table& table, const ConfigKey& known)
    {
        const std::optional<std::string> file = table["file"].value_exact<std::string>();
        if (!file || table.size() != 1) {
            return fail(table.source(), known.table, known.key,
                        u"ожидается строка или { file = \"путь\" }"_s);
        }
        const QString path = absolutePath(toQString(*file));
        try {
            const QString secret = secretfile::read(path);
            reportRights(path);
            return secret;
        } catch (const secretfile::Error& error) {
            return fail(
                table.source(), known.table, known.key,
                u"%1; проверьте путь, права и содержимое"_s.arg(QString::fromUtf8(error.what())));
        }
    }

    void reportRights(const QString& file)
    {
        const QString complaint = secretfile::complaintAboutRights(file);
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
            warn(where, table, {}, u"таблица %1 неизвестна"_s.arg(table), nearest);
        }
    }

    void warn(const toml::key& where, const QString& table, const QString& key, const QString& what,
              const QString& nearest)
    {
        const QString hint =
            nearest.isEmpty() ? QString() : u"; возможно, имелось в виду %1"_s.arg(nearest);
        target.findings.append({Kind::UnknownName, table, key, fileName,
                                u"%1, строка %2: %3 и не используется%4"_s.arg(fileName)
                                    .arg(where.source().begin.line)
                                    .arg(what, hint)});
    }

    /// @return no value
    QVariant fail(const toml::source_region& where, const QString& table, const QString& key,
                  const QString& what)
    {
        const QString name = key.isEmpty() ? table : table + u'.' + key;
        target.findings.append(
            {Kind::WrongValue, table, key, fileName,
             u"%1, строка %2, ключ %3: %4"_s.arg(fileName).arg(where.begin.line).arg(name, what)});
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
QString syntaxError(const QString& fileName, const QByteArray& content,
                    const toml::source_position& where)
{
    const QString key = keyInLine(content, where.line);
    return u"%1, строка %2, столбец %3%4: не по правилам TOML; проверьте кавычки и знак равенства"_s
        .arg(fileName)
        .arg(where.line)
        .arg(where.column)
        .arg(key.isEmpty() ? QString() : u", ключ %1"_s.arg(key));
}

/// Why there is no content.
QString unreadable(const QString& fileName, const input::FileError& error)
{
    switch (error.kind()) {
    case input::FileError::Kind::NotRegular:
        return u"%1: это не обычный файл; укажите файл настроек"_s.arg(fileName);
    case input::FileError::Kind::TooLarge:
        return u"%1: файл больше %2 байт, настройки столько не занимают; проверьте путь"_s
            .arg(fileName)
            .arg(input::maximumTomlBytes);
    case input::FileError::Kind::Unreadable:
        break;
    }
    return u"%1: файл настроек не читается (%2); проверьте путь и права"_s.arg(fileName,
                                                                               error.reason());
}

/// The file was read, so that only its levels can be refused.
QString tooDeep(const QString& fileName, const input::TomlRefused& error)
{
    return u"%1, строка %2: таблицы и списки вложены глубже %3 уровней; уберите лишние точки и "
           "скобки"_s.arg(fileName)
               .arg(error.line())
               .arg(input::maximumTomlLevels);
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
