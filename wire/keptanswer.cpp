// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "wire/keptanswer.h"

using namespace Qt::StringLiterals;

namespace wire {

QByteArray keptAnswer(const AbstractDocument& document)
{
    return document.getPluginValue(u"Orva"_s, u"lastResponse"_s, QVariant()).toString().toUtf8();
}

} // namespace wire
