// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace tests {

/// One check of protocol/vectors, in kopecks.
struct SaleVector
{
    struct Line
    {
        qint64 total = 0;
        qint64 award = 0;
        qint64 discountGranted = 0;
        qint64 pointsAllowed = 0;
        qint64 discount = 0;
        qint64 points = 0;
    };

    QString name;
    std::vector<Line> lines;
    qint64 paid = 0;
    QString refused; ///< the requirement for which it is refused; empty where it is booked
    std::vector<qint64> earned;
    qint64 spent = 0;
    qint64 change = 0;
};

/// The returns of one line of a sale, in kopecks and thousandths.
struct ReturnVector
{
    struct Part
    {
        qint64 quantity = 0;
        qint64 total = 0;
        qint64 givenBack = 0;
        qint64 takenBack = 0;
        QString refused;
    };

    QString name;
    qint64 quantity = 0;
    qint64 total = 0;
    qint64 points = 0;
    qint64 earned = 0;
    std::vector<Part> returns;
};

/// What a file of vectors holds. A key that is missing or unknown fails the test.
std::vector<SaleVector> saleVectors(const QString& file);
std::vector<ReturnVector> returnVectors(const QString& file);

/// Whether it is amount x part / whole, rounded half up, by the definition of that: no division.
bool isShare(qint64 share, qint64 amount, qint64 part, qint64 whole);

} // namespace tests
