// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "host/document/goodsitem.h"
#include "till/checks/field.h"
#include "till/checks/line.h"

#include <QList>
#include <QSharedPointer>

namespace till {

using StoredLineField = FieldOf<Line, int, bool, qint64, QString>;

/// One field of a goods line: where it comes from, how it is counted, who is told about it.
struct LineField
{
    enum class Kind
    {
        Number,   ///< a whole number from 0
        Text,     ///< one that is not empty where it is written down
        Unit,     ///< true: weighed, counted in kilograms; false: pieces
        Money,    ///< kopecks, not negative
        Share,    ///< kopecks of the loyalty system, may be negative
        Quantity, ///< thousandths of the line's unit
    };
    enum class InFile
    {
        No,
        Required,
        Optional,
    };
    enum class Shown
    {
        Never,
        Always,
        OnSales,
        OnReturns,
    };
    using Member = std::variant<int Line::*, bool Line::*, qint64 Line::*, QString Line::*>;

    LineField& inFile(InFile how);
    LineField& shown(Shown where);
    /// The field goes into the document's goods line and into records under the same name.
    template <typename Value, typename Argument>
    LineField& item(Value (GoodsItem::*get)() const, void (GoodsItem::*set)(Argument))
    {
        itemField = field::of(name, get, set, since);
        return *this;
    }

    template <typename Value>
    const Value& valueIn(const Line& line) const
    {
        return line.*std::get<Value Line::*>(member);
    }
    template <typename Value>
    Value& valueIn(Line& line) const
    {
        return line.*std::get<Value Line::*>(member);
    }

    /// In check files, in the JSON of a check, and in records.
    QString name;
    Kind kind;
    Member member;
    int since = 1;                             ///< as in FieldOf
    std::function<void(Line&)> fromOlder = {}; ///< as in FieldOf
    InFile fileUse = InFile::No;
    Shown jsonUse = Shown::Never;
    std::optional<Field<GoodsItem>> itemField = std::nullopt;
};

/// The one description of a goods line. Check files, stored checks, the document, records and the
/// JSON of a check follow it: a new field is a member of Line and a row here.
namespace linefields {

/// In the order in which a check stores them.
const QList<LineField>& all();

/// The same as a stored check has them.
const QList<StoredLineField>& stored();

/// Every field of a document's goods line, also those that the till makes of several of its own.
const QList<Field<GoodsItem>>& ofItem();

/// The document's goods line for a line of the till.
QSharedPointer<GoodsItem> itemOf(const Line& line, bool isReturn);

/// "kg" or "pcs", in files, records and documents.
QString unitName(bool isFractional);

} // namespace linefields
} // namespace till
