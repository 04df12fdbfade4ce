// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace protocol {

/// The first place where two documents differ.
struct XmlDifference
{
    /// The element's path in the first document, or in the second where only that has it. Empty
    /// when the documents differ in nothing but how they are written.
    QString path;
    /// Line of the first document, or of the second where only that has the element.
    qint64 line = 0;
    /// What stands there in the first and in the second document.
    QString first;
    QString second;

    /// Nothing when the bytes are the same.
    static std::optional<XmlDifference> between(const QByteArray& first, const QByteArray& second);
};

} // namespace protocol
