// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/checks/cardnumber.h"

using namespace Qt::StringLiterals;

namespace till {
namespace {

const QString stars = u"****"_s;

} // namespace

QString cardnumber::shortened(const QString& number)
{
    return stars + number.right(shownDigits);
}

bool cardnumber::isShortened(const QString& number)
{
    return number.startsWith(stars);
}

} // namespace till
