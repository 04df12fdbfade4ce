// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "simulator/exchange.h"

#include <optional>

namespace simulator {

/// What stands before the body of a request.
struct RequestHead
{
    Request request;               ///< without its body
    std::optional<quint64> length; ///< of the body, as it is announced; nothing where it is not
    bool isChunked = false;        ///< the body comes in pieces, each with its length
    bool isForm = false;           ///< a form of several parts
    bool asksFirst = false;        ///< the client waits to be told before it sends the body
    bool closes = false;           ///< the client wants the connection to end after the answer

    [[nodiscard]] bool hasBody() const { return isChunked || length.value_or(0) > 0; }
};

/// Reads the head of a request of HTTP/1.0 or 1.1. text: without the blank line behind it.
///
/// Strict, because what two readers may understand in two ways is how requests are smuggled: a name
/// and its ":" stand together, lines are not folded, nothing that decides where the body ends comes
/// twice. A length that no number of 64 bits holds counts as the largest one.
/// Throws Rejection with 400, 431 (more than 100 headers), 501 or 505.
RequestHead readRequestHead(const QByteArray& text);

} // namespace simulator
