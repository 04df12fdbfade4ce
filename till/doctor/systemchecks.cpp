// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/systemchecks.h"

#include "till/doctor/report.h"
#include "till/text.h"

#include <clocale>
#include <langinfo.h>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

/// Of the environment: the process itself may have been switched to UTF-8 by Qt.
QString encodingOfEnvironment()
{
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
    if (locale == nullptr) {
        return {};
    }
    const QString encoding = QString::fromLatin1(nl_langinfo_l(CODESET, locale));
    freelocale(locale);
    return encoding;
}

Finding lookAtEncoding()
{
    const QString encoding = encodingOfEnvironment();
    const Mend mend = Mend::command(u"export LC_ALL=C.UTF-8"_s);
    if (encoding.isEmpty()) {
        return Finding::fails(Text::tr("the locale of the environment is not installed"), mend);
    }
    return encoding == "UTF-8"_L1
               ? Finding::ok(encoding)
               : Finding::fails(Text::tr("%1; texts and file names need UTF-8").arg(encoding),
                                mend);
}

} // namespace

void checkSystem(Report& report)
{
    report.check(u"encoding"_s, Text::tr("Encoding"), {}, [] { return lookAtEncoding(); });
}

} // namespace till::doctor
