// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "console/language.h"
#include "host/core/message.h"

#include <QString>

#include <stdexcept>

namespace orvastore {

/// What the person at the terminal has to put right, said in their language.
class Failure : public std::runtime_error
{
public:
    explicit Failure(const QString& sentence) : std::runtime_error(sentence.toStdString()) {}
};

namespace spoken {

/// A message in the language of this program.
inline QString said(const poshost::Message& message)
{
    return message.in(console::spokenLanguage() == QLatin1StringView("ru")
                          ? poshost::Language::Russian
                          : poshost::Language::English);
}

} // namespace spoken

} // namespace orvastore
