// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/exchange.h"

namespace simulator {

Answer refusal(int status, const QString& reason)
{
    Answer answer;
    answer.status = status;
    answer.contentType = "text/plain; charset=utf-8";
    answer.body = reason.toUtf8() + '\n';
    answer.reason = reason;
    return answer;
}

} // namespace simulator
