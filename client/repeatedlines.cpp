// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "client/repeatedlines.h"

#include "client/response/line.h"
#include "client/xmllimits.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace orva {

QString harmInLines(const QSharedPointer<XmlWrapper>& xml, const QDomElement& root)
{
    QHash<int, qint64> linesOf;
    qint64 sum = 0;
    const QList<QDomElement> lines = answerLines(xml, root);
    for (const QDomElement& line : lines) {
        const int position = linePosition(xml, line);
        const qint64 count = ++linesOf[position];
        sum += 2 * count - 1; // the difference of the squares of count and count - 1
        if (sum > xmllimit::sameLines) {
            return u"слишком много строк товара с одним и тем же id (квадраты их чисел в сумме "
                   "больше %1), id %2"_s.arg(xmllimit::sameLines)
                       .arg(position);
        }
    }
    return {};
}

} // namespace orva
