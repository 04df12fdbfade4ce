// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

namespace console {

/// The language that a program speaks to somebody who reads these, best first ("ru-RU", "en"):
/// "ru" or "en".
QString languageFor(const QStringList& uiLanguages);

/// Translates all that the programs say from now on into the language of the environment's locale.
/// To be called once, after the application object was made.
void speakUsersLanguage();

} // namespace console
