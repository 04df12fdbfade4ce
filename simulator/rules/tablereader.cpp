// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/rules/tablereader.h"

#include "input/nearestname.h"
#include "input/readfile.h"
#include "input/tomlguard.h"
#include "simulator/text.h"

#include <QLocale>

#include <algorithm>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

QString keyText(const toml::key& key)
{
    return QString::fromUtf8(key.str().data(), static_cast<qsizetype>(key.str().size()));
}

/// Apart, because lupdate does not know the context within a function that returns a foreign type.
[[noreturn]] void failToParse(const toml::parse_error& error, const QString& name)
{
    throw ConfigError(Text::tr("%1:%2: this is not TOML: %3")
                          .arg(name)
                          .arg(error.source().begin.line)
                          .arg(QString::fromUtf8(error.description())));
}

[[noreturn]] void failAsTooLarge(const QString& name)
{
    throw ConfigError(Text::tr("%1 is larger than %2 bytes, the most that rules may have; put long "
                               "answers into files of their own")
                          .arg(name)
                          .arg(input::maximumTomlBytes));
}

[[noreturn]] void refuseToParse(const input::TomlRefused& error, const QString& name)
{
    if (error.limit() == input::TomlRefused::Limit::Bytes) {
        failAsTooLarge(name);
    }
    throw ConfigError(Text::tr("%1:%2: tables and lists are nested deeper than %3 levels; look at "
                               "the dots and brackets")
                          .arg(name)
                          .arg(error.line())
                          .arg(input::maximumTomlLevels));
}

[[noreturn]] void failToRead(const QString& path, const input::FileError& error)
{
    switch (error.kind()) {
    case input::FileError::Kind::NotRegular:
        throw ConfigError(Text::tr("%1 is no regular file; name a file of rules").arg(path));
    case input::FileError::Kind::TooLarge:
        failAsTooLarge(path);
    case input::FileError::Kind::Unreadable:
        break;
    }
    throw ConfigError(
        Text::tr("%1: the file of rules cannot be read: %2").arg(path, error.reason()));
}

} // namespace

QByteArray readTomlFile(const QString& path)
{
    try {
        return input::readFile(path, input::maximumTomlBytes);
    } catch (const input::FileError& error) {
        failToRead(path, error);
    }
}

toml::table parseToml(const QByteArray& text, const QString& name)
{
    try {
        return input::parseToml(text);
    } catch (const input::TomlRefused& error) {
        refuseToParse(error, name);
    } catch (const toml::parse_error& error) {
        failToParse(error, name);
    }
}

TableReader::TableReader(const toml::table& table, const QString& file, const QString& path)
    : values(table), fileName(file), prefix(path)
{}

void TableReader::allowOnly(const QStringList& known) const
{
    for (const auto& [key, value] : values) {
        const QString name = keyText(key);
        if (known.contains(name)) {
            continue;
        }
        const QString nearest = input::nearestName(name, known);
        throw error(key.source(), name,
                    nearest.isEmpty()
                        ? Text::tr("is unknown: known here are %1").arg(known.join(u", "_s))
                        : Text::tr("is unknown: did you mean \"%1\"?").arg(prefix + nearest));
    }
}

QString TableReader::text(const char* key, const QString& fallback) const
{
    const toml::node* node = values.get(key);
    if (node == nullptr) {
        return fallback;
    }
    const auto* string = node->as_string();
    if (string == nullptr) {
        refuse(key, Text::tr("must be a text in quotes"));
    }
    // cppcheck-suppress nullPointerRedundantCheck ; refuse does not return
    const QString result = QString::fromStdString(string->get());
    const bool hasControl = std::any_of(result.begin(), result.end(), [](QChar character) {
        return character.unicode() < 0x20 && character != u'\n' && character != u'\t';
    });
    if (hasControl) {
        refuse(key, Text::tr("must not hold control characters"));
    }
    return result;
}

QString TableReader::requiredText(const char* key) const
{
    if (values.get(key) == nullptr) {
        throw error(values.source(), QString::fromUtf8(key), Text::tr("is missing"));
    }
    QString result = text(key);
    if (result.isEmpty()) {
        refuse(key, Text::tr("must not be empty"));
    }
    return result;
}

/// The value as decimal text. A floating-point value is taken as the shortest text that stands for
/// it, which is what was typed.
QString TableReader::decimal(const char* key) const
{
    const toml::node* node = values.get(key);
    if (const auto* whole = node->as_integer()) {
        return QString::number(whole->get());
    }
    if (const auto* number = node->as_floating_point()) {
        return QString::number(number->get(), 'f', QLocale::FloatingPointShortest);
    }
    if (const auto* string = node->as_string()) {
        return QString::fromStdString(string->get());
    }
    refuse(key, Text::tr("must be a number"));
}

Kopecks TableReader::kopecks(const char* key, Kopecks fallback) const
{
    if (values.get(key) == nullptr) {
        return fallback;
    }
    const std::optional<Kopecks> amount = readKopecks(decimal(key));
    if (!amount) {
        refuse(key, Text::tr("must be an amount with at most two decimals, such as 12.50"));
    }
    return *amount;
}

int TableReader::percent(const char* key, int fallback) const
{
    if (values.get(key) == nullptr) {
        return fallback;
    }
    const std::optional<qint64> hundredths = readKopecks(decimal(key));
    if (!hundredths || *hundredths < 0 || *hundredths > 100 * 100) {
        refuse(key, Text::tr("must be a percentage from 0 to 100 with at most two decimals"));
    }
    return static_cast<int>(*hundredths);
}

QString TableReader::choice(const char* key, const QStringList& known) const
{
    QString value = requiredText(key);
    if (known.contains(value)) {
        return value;
    }
    const QString nearest = input::nearestName(value, known);
    if (!nearest.isEmpty()) {
        refuse(key, Text::tr("is \"%1\": did you mean \"%2\"?").arg(value, nearest));
    }
    const QString allButLast = known.first(known.size() - 1).join(u"\", \""_s);
    refuse(key,
           Text::tr("is \"%1\": it must be \"%2\" or \"%3\"").arg(value, allButLast, known.last()));
}

qint64 TableReader::integer(const char* key, qint64 fallback, qint64 least, qint64 most) const
{
    const toml::node* node = values.get(key);
    if (node == nullptr) {
        return fallback;
    }
    const auto* whole = node->as_integer();
    if (whole == nullptr || whole->get() < least || whole->get() > most) {
        refuse(key, Text::tr("must be a whole number from %1 to %2").arg(least).arg(most));
    }
    // cppcheck-suppress nullPointerRedundantCheck ; refuse does not return
    return whole->get();
}

double TableReader::number(const char* key, double fallback, double least, double most) const
{
    const toml::node* node = values.get(key);
    if (node == nullptr) {
        return fallback;
    }
    const std::optional<double> value =
        node->is_number() ? node->value<double>() : std::optional<double>();
    if (!value || !(*value >= least && *value <= most)) {
        refuse(key, Text::tr("must be a number from %1 to %2").arg(least).arg(most));
    }
    // cppcheck-suppress nullPointerRedundantCheck ; refuse does not return
    return *value;
}

bool TableReader::flag(const char* key, bool fallback) const
{
    const toml::node* node = values.get(key);
    if (node == nullptr) {
        return fallback;
    }
    const auto* value = node->as_boolean();
    if (value == nullptr) {
        refuse(key, Text::tr("must be true or false"));
    }
    // cppcheck-suppress nullPointerRedundantCheck ; refuse does not return
    return value->get();
}

quint64 TableReader::seed(const char* key, quint64 fallback) const
{
    constexpr qint64 most = std::numeric_limits<qint64>::max();
    return static_cast<quint64>(integer(key, static_cast<qint64>(fallback), 0, most));
}

TableReader TableReader::table(const char* key) const
{
    const QString path = prefix + QString::fromUtf8(key) + u'.';
    const toml::node* node = values.get(key);
    if (node == nullptr) {
        static const toml::table emptyTable;
        return {emptyTable, fileName, path};
    }
    if (node->as_table() == nullptr) {
        refuse(key, Text::tr("must be a table"));
    }
    return {*node->as_table(), fileName, path};
}

std::vector<TableReader> TableReader::tables(const char* key) const
{
    std::vector<TableReader> result;
    const toml::node* node = values.get(key);
    if (node == nullptr) {
        return result;
    }
    const toml::array* array = node->as_array();
    if (array == nullptr || !array->is_homogeneous<toml::table>()) {
        refuse(key,
               Text::tr("must be an array of tables, written [[%1]]").arg(QString::fromUtf8(key)));
    }
    for (const toml::node& element : *array) {
        result.emplace_back(*element.as_table(), fileName, prefix + QString::fromUtf8(key) + u'.');
    }
    return result;
}

QStringList TableReader::keys() const
{
    QStringList result;
    for (const auto& [key, value] : values) {
        result.append(keyText(key));
    }
    return result;
}

void TableReader::refuse(const char* key, const QString& complaint) const
{
    const toml::node* node = values.get(key);
    throw error(node == nullptr ? values.source() : node->source(), QString::fromUtf8(key),
                complaint);
}

ConfigError TableReader::error(const toml::source_region& where, const QString& key,
                               const QString& complaint) const
{
    // the complaint goes on behind the key: 'the key "seed" is missing'
    if (where.begin.line == 0) { // the table was not read from lines
        return ConfigError(
            Text::tr("%1: the key \"%2\" %3").arg(fileName, prefix + key, complaint));
    }
    return ConfigError(
        Text::tr("%1:%2: the key \"%3\" %4")
            .arg(fileName, QString::number(where.begin.line), prefix + key, complaint));
}

} // namespace simulator
