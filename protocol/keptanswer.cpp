// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "protocol/keptanswer.h"

using namespace Qt::StringLiterals;

namespace protocol {

QByteArray keptAnswer(const AbstractDocument& document)
{
    const QString text =
        document.getPluginValue(u"Orva"_s, u"lastResponse"_s, QVariant()).toString();
    // a text has no encoding any more, whatever its first line still says
    const qsizetype declared = text.startsWith("<?xml"_L1) ? text.indexOf("?>"_L1) + 2 : 0;
    return text.mid(declared).toUtf8();
}

} // namespace protocol
