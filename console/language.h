// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

namespace console {

/// The language that the environment asks a program to speak, by gettext's rules: the first that is
/// not empty of LC_ALL, LC_MESSAGES and LANG names the locale; unless that is "C", the list in
/// LANGUAGE goes before it. @return "ru" or "en"
QString languageOfEnvironment();

/// The language that this program speaks: "ru" or "en", and "en" until speakUsersLanguage.
QString spokenLanguage();

/// Translates all that the programs say from now on into the language of the environment.
/// To be called once, after the application object was made.
void speakUsersLanguage();

} // namespace console
