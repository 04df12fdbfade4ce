// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// What the measurements of the store share.
namespace filledstore {

constexpr int messageBytes = 8192;

/// A connection string for a database of the shared server, as its owner.
QString connectionTo(const QString& database);

/// Makes a database with so many waiting messages of 8 KB.
/// @param lanes among which they are divided evenly
/// @param address where they go
/// @return its name
QString filled(int messages, int lanes, const QByteArray& address = "http://127.0.0.1:9/");

/// The value in the middle; of none there is none.
double middle(QList<double> values);

/// With two digits.
QString rounded(double value);

} // namespace filledstore
