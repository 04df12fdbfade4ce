// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "till/doctor/mend.h"

namespace poshost {
struct ConfigKey;
} // namespace poshost

namespace till::doctor {

class SettingsFile;
struct Subject;

/// What puts a key of the configuration right. What only the shop or its loyalty server can know
/// (an address, a code, a password) is left to a person.
namespace keymends {

/// Of one that is missing, or empty where it may not be.
Mend ofMissing(const poshost::ConfigKey& key, const Subject& subject, const SettingsFile& file);
/// Of one that holds what it cannot hold.
Mend ofWrongValue(const poshost::ConfigKey& key, const Subject& subject, const SettingsFile& file);
/// Whoever runs the loyalty server knows the value.
Mend askOperator(const poshost::ConfigKey& key, const SettingsFile& file);
/// Of a plug-in that cannot be used: the installed one in its place, if it is another one.
/// @param otherwise what somebody has to do where there is none
Mend ofPlugin(const Subject& subject, const QString& otherwise);

} // namespace keymends

} // namespace till::doctor
