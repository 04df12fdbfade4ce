// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"
#include "simulator/rules/rules.h"

#include <QHash>
#include <QString>

#include <vector>

namespace simulator::test {

/// A goods line as a till would write it; the texts go into the document as they stand.
struct TextLine
{
    QString id;
    QString sku;
    QString quantity;
    QString total;
    QString minTotal = QStringLiteral("0.00");
    QString givenBack = {}; ///< on a return
};

/// A check as a till would write it.
struct TextCheck
{
    QString id;
    QString card;
    QString total;
    std::vector<TextLine> lines;
    QString originalId = {}; ///< makes it a return
};

/// The request document of a check.
QByteArray document(const TextCheck& check);

/// A sale's confirmation: its pre-check answer with what each line used (by line id: discount and
/// points; an empty text leaves the element out) and the amount paid.
QByteArray confirmation(const QByteArray& answer, const QHash<QString, QStringList>& used,
                        const QString& amount);

/// The text at a path below the root, for example "items/RawItem[1]/id" (counted from 0); "(none)"
/// when there is no such element.
QString valueAt(const QByteArray& xml, const QString& path);

/// The built-in rules.
Rules builtIn();

/// A POST with the built-in credentials. endpoint: "precheck", "paymenttry" or "checkconfirm".
Request post(const char* endpoint, const QByteArray& body);

/// What a file beside the tests holds; fails the test when it is missing.
QByteArray goldenFile(const QString& name);

} // namespace simulator::test
