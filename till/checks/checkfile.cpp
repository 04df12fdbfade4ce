// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/checkfile.h"

#include "input/readfile.h"
#include "input/tomlguard.h"
#include "till/checks/checkfields.h"
#include "till/checks/linefields.h"
#include "till/failure.h"
#include "till/text.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace till {
namespace {

[[noreturn]] void unusable(const QString& sentence)
{
    throw Failure(sentence, ExitCode::Usage);
}

[[noreturn]] void notRead(const QString& fileName, const input::FileError& error)
{
    switch (error.kind()) {
    case input::FileError::Kind::NotRegular:
        unusable(Text::tr("%1 is no regular file; name a check file.").arg(fileName));
    case input::FileError::Kind::TooLarge:
        unusable(Text::tr("%1 is larger than %2 bytes, the most that a check file may have; split "
                          "the check.")
                     .arg(fileName)
                     .arg(input::maximumTomlBytes));
    case input::FileError::Kind::Unreadable:
        break;
    }
    unusable(Text::tr("%1: the check file cannot be read (%2); look at its path and rights.")
                 .arg(fileName, error.reason()));
}

QByteArray contentOf(const QString& fileName)
{
    try {
        return input::readFile(fileName, input::maximumTomlBytes);
    } catch (const input::FileError& error) {
        notRead(fileName, error);
    }
}

[[noreturn]] void tooDeep(const QString& fileName, const input::TomlRefused& error)
{
    unusable(Text::tr("%1, line %2: tables and lists are nested deeper than %3 levels; look at the "
                      "dots and brackets.")
                 .arg(fileName)
                 .arg(error.line())
                 .arg(input::maximumTomlLevels));
}

[[noreturn]] void notToml(const QString& fileName, const toml::parse_error& error)
{
    unusable(Text::tr("%1, line %2: this is not TOML (%3); look at the quotes and brackets.")
                 .arg(fileName)
                 .arg(error.source().begin.line)
                 .arg(QString::fromUtf8(error.what())));
}

toml::table parse(const QString& fileName)
{
    const QByteArray content = contentOf(fileName);
    try {
        return input::parseToml(content);
    } catch (const input::TomlRefused& error) {
        tooDeep(fileName, error);
    } catch (const toml::parse_error& error) {
        notToml(fileName, error);
    }
}

/// The [[line]] tables in the order of the file.
QList<const toml::table*> lineTables(const CheckFields& root, const toml::table& table)
{
    const toml::node* node = table.get("line");
    const toml::array* array = node == nullptr ? nullptr : node->as_array();
    if (array == nullptr || array->empty()) {
        root.fail(u"line"_s, Text::tr("there is no goods line; write a [[line]] for each"));
    }
    QList<const toml::table*> tables;
    // cppcheck-suppress nullPointer ; fail does not return
    for (const toml::node& element : *array) {
        if (!element.is_table()) {
            root.fail(u"line"_s, Text::tr("a goods line is a table; write [[line]] above it"));
        }
        tables.append(element.as_table());
    }
    return tables;
}

qint64 readQuantity(const CheckFields& fields, const QString& name, bool fractional)
{
    const qint64 thousandths = fields.quantity(name);
    if (thousandths == 0) {
        fields.fail(name, Text::tr("nothing is 0 of something; write a quantity above 0"));
    }
    if (!fractional && thousandths % 1000 != 0) {
        fields.fail(name, Text::tr("pieces are counted in whole numbers; for a weight write unit = "
                                   "\"kg\""));
    }
    return thousandths;
}

/// Whether the line is weighed, which decides how its quantity may look.
bool readUnit(const CheckFields& fields)
{
    const QString name = u"unit"_s;
    const QString unit = fields.has(name) ? fields.text(name) : linefields::unitName(false);
    if (unit != linefields::unitName(false) && unit != linefields::unitName(true)) {
        fields.fail(name,
                    Text::tr("the unit \"%1\" is not known; write \"pcs\" or \"kg\"").arg(unit));
    }
    return unit == linefields::unitName(true);
}

void readField(const CheckFields& fields, const LineField& field, Line& line)
{
    switch (field.kind) {
    case LineField::Kind::Number:
        field.valueIn<int>(line) = fields.number(field.name);
        break;
    case LineField::Kind::Text:
        field.valueIn<QString>(line) = fields.text(field.name);
        break;
    case LineField::Kind::Unit:
        break;
    case LineField::Kind::Money:
    case LineField::Kind::Share:
        field.valueIn<qint64>(line) = fields.money(field.name);
        break;
    case LineField::Kind::Quantity:
        field.valueIn<qint64>(line) = readQuantity(fields, field.name, line.fractional);
        break;
    }
}

/// What a line of a sale may have in a file: first what it must have.
QList<LineField> fileFields()
{
    QList<LineField> fields;
    for (const LineField::InFile use : {LineField::InFile::Required, LineField::InFile::Optional}) {
        for (const LineField& field : linefields::all()) {
            if (field.fileUse == use) {
                fields.append(field);
            }
        }
    }
    return fields;
}

Line readSaleLine(const CheckFields& fields, const QList<LineField>& known, int position)
{
    QStringList names;
    for (const LineField& field : known) {
        names.append(field.name);
    }
    fields.allowOnly(names);
    Line line;
    line.position = position;
    line.fractional = readUnit(fields);
    for (const LineField& field : known) {
        if (field.fileUse == LineField::InFile::Required || fields.has(field.name)) {
            readField(fields, field, line);
        }
    }
    if (!fields.has(u"sum"_s)) {
        line.sumKopecks = amount::lineSum(line.priceKopecks, line.thousandths);
    }
    if (line.sumKopecks > amount::maximumKopecks) {
        fields.fail(u"price"_s, Text::tr("price times quantity is more than a check can hold"));
    }
    return line;
}

void readSale(CheckFile& check, const CheckFields& root, const toml::table& table)
{
    root.allowOnly({u"type"_s, u"number"_s, u"card"_s, u"line"_s});
    const QList<LineField> known = fileFields();
    check.card = root.has(u"card"_s) ? root.text(u"card"_s) : QString();
    qint64 sum = 0;
    for (const toml::table* lineTable : lineTables(root, table)) {
        const CheckFields fields(root.fileName(), *lineTable);
        check.lines.append(readSaleLine(fields, known, int(check.lines.size()) + 1));
        sum += check.lines.last().sumKopecks;
        if (sum > amount::maximumKopecks) {
            fields.fail(u"sum"_s, Text::tr("up to this line the sum is more than a check can "
                                           "hold; split the check"));
        }
    }
}

void readReturn(CheckFile& check, const CheckFields& root, const toml::table& table)
{
    root.allowOnly({u"type"_s, u"number"_s, u"sale"_s, u"line"_s});
    check.sale = root.identifier(u"sale"_s);
    QSet<int> seen;
    for (const toml::table* lineTable : lineTables(root, table)) {
        const CheckFields fields(root.fileName(), *lineTable);
        fields.allowOnly({u"position"_s, u"quantity"_s});
        Line line;
        line.position = fields.number(u"position"_s);
        // whether the line is counted in pieces is known only once the sale has been found
        line.returnedThousandths = readQuantity(fields, u"quantity"_s, true);
        if (seen.contains(line.position)) {
            fields.fail(u"position"_s,
                        Text::tr("position %1 stands here twice; write it once with the whole "
                                 "quantity")
                            .arg(line.position));
        }
        seen.insert(line.position);
        check.lines.append(line);
    }
}

} // namespace

CheckFile CheckFile::read(const QString& fileName)
{
    const toml::table table = parse(fileName);
    const CheckFields root(fileName, table);
    CheckFile check;
    const QString type = root.text(u"type"_s);
    if (root.has(u"number"_s)) {
        check.number = root.number(u"number"_s);
    }
    if (type == u"sale"_s) {
        readSale(check, root, table);
    } else if (type == u"return"_s) {
        check.type = Type::Return;
        readReturn(check, root, table);
    } else {
        root.fail(u"type"_s,
                  Text::tr("the type \"%1\" is not known; write \"sale\" or \"return\"").arg(type));
    }
    return check;
}

} // namespace till
