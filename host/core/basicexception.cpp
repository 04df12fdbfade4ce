// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/core/basicexception.h"

using namespace Qt::StringLiterals;

BasicException::BasicException(const tr::Tr& message)
    : std::runtime_error((message.id() + u": "_s + message.ru()).toStdString()), text(message)
{}

BasicException::~BasicException() = default;
