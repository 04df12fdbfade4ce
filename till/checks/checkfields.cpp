// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/checkfields.h"

#include "till/failure.h"
#include "till/text.h"

#include <QLocale>

#include <cmath>
#include <limits>

namespace till {
namespace {

QString fromToml(std::string_view text)
{
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

} // namespace

const toml::node* CheckFields::find(const QString& field) const
{
    return table.get(field.toStdString());
}

bool CheckFields::has(const QString& field) const
{
    return find(field) != nullptr;
}

void CheckFields::fail(const QString& field, const QString& what) const
{
    const toml::node* node = find(field);
    const auto where = node == nullptr ? table.source() : node->source();
    // the top table of a file has no place of its own
    const auto line = where.begin.line == 0 ? 1 : where.begin.line;
    throw Failure(Text::tr("%1, line %2, %3: %4.").arg(file).arg(line).arg(field, what),
                  ExitCode::Usage);
}

const toml::node& CheckFields::require(const QString& field) const
{
    const toml::node* node = find(field);
    if (node == nullptr) {
        fail(field, Text::tr("the field is missing; add it here"));
    }
    return *node;
}

void CheckFields::allowOnly(const QStringList& known) const
{
    for (const auto& [key, node] : table) {
        const QString field = fromToml(key.str());
        if (!known.contains(field)) {
            fail(field, Text::tr("there is no such field; the fields here are %1")
                            .arg(known.join(QStringLiteral(", "))));
        }
    }
}

QString CheckFields::text(const QString& field) const
{
    const auto value = require(field).value_exact<std::string>();
    if (!value) {
        fail(field, Text::tr("a text is expected; put it in quotes"));
    }
    const QString text = fromToml(*value).trimmed();
    if (text.isEmpty()) {
        fail(field, Text::tr("the text is empty; write something or leave the field out"));
    }
    return text;
}

QString CheckFields::identifier(const QString& field) const
{
    return require(field).is_integer() ? QString::number(number(field)) : text(field);
}

int CheckFields::number(const QString& field) const
{
    const auto value = require(field).value_exact<int64_t>();
    if (!value || *value < 1 || *value > std::numeric_limits<int>::max()) {
        fail(field, Text::tr("a whole number from 1 to %1 is expected")
                        .arg(std::numeric_limits<int>::max()));
    }
    return int(*value);
}

QString CheckFields::decimalText(const QString& field) const
{
    const toml::node& node = require(field);
    if (const auto text = node.value_exact<std::string>()) {
        return fromToml(*text).trimmed();
    }
    if (const auto number = node.value_exact<int64_t>()) {
        return QString::number(*number);
    }
    const auto number = node.value_exact<double>();
    if (!number || !std::isfinite(*number)) {
        fail(field, Text::tr("a number is expected, such as 49.90"));
    }
    // the shortest text that gives this double is what stands in the file
    return QString::number(*number, 'f', QLocale::FloatingPointShortest);
}

qint64 CheckFields::decimal(const QString& field, int decimals, qint64 maximum) const
{
    const QString text = decimalText(field);
    const auto value = amount::readDecimal(text, decimals);
    if (!value) {
        fail(field, Text::tr("\"%1\" is not a number from 0 with at most %2 decimals after a point")
                        .arg(text)
                        .arg(decimals));
    }
    if (*value > maximum) {
        fail(field, Text::tr("%1 is more than a till can count").arg(text));
    }
    return *value;
}

qint64 CheckFields::money(const QString& field) const
{
    return decimal(field, 2, amount::maximumKopecks);
}

qint64 CheckFields::quantity(const QString& field) const
{
    return decimal(field, 3, amount::maximumThousandths);
}

} // namespace till
