// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/shownaddress.h"

using namespace Qt::StringLiterals;

namespace till::doctor {

QString shownAddress(const QString& address)
{
    QString text = address;
    if (const qsizetype at = text.lastIndexOf(u'@'); at >= 0) {
        const qsizetype scheme = text.indexOf("://"_L1);
        const qsizetype start = scheme >= 0 && scheme < at ? scheme + 3 : 0;
        text.replace(start, at - start, u"***"_s);
    }
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == u'?' || text.at(i) == u'#') {
            return text.first(i + 1) + u"***"_s;
        }
    }
    return text;
}

} // namespace till::doctor
