// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/page/serverswitch.h"

namespace simulator {

void ServerSwitch::setUrl(const QString& url)
{
    const std::scoped_lock lock(mutex);
    address = url;
}

QString ServerSwitch::url() const
{
    const std::scoped_lock lock(mutex);
    return address;
}

Answer ServerSwitch::silence()
{
    Answer answer = refusal(503, QStringLiteral("The server is switched off"));
    Fault& closing = answer.fault.emplace();
    closing.kind = FaultKind::RequestLost;
    return answer;
}

} // namespace simulator
