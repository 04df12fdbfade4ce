// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/core/tr.h"

namespace tr {

Tr::Tr(const QString& id, const QString& text) : identifier(id), russian(text) {}

Tr::Tr(const QString& id, const poshost::Message& message)
    : identifier(id), russian(message.ru()), said(message)
{}

Tr::~Tr() = default;

} // namespace tr
