// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QString>

/// The addresses in records, as they are shown everywhere (host/http/serveraddress.h). They are
/// written so, and read and handed on so as well: a record may be of an older till, or of another.
namespace till::recordedaddresses {

/// A line of a record with its addresses fit to be shown; the rest stays.
QJsonObject cleaned(const QJsonObject& line);

/// A value of the configuration, fit to be shown where its key stands for an address.
QString cleanValue(const QString& key, const QString& value);

} // namespace till::recordedaddresses
